// Text in the system's ANSI code page.
#include "log/ansi_text.h"

#include "tests/support/replaced_imports.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <cwchar>
#include <string>
#include <vector>

namespace {

using testing::ElementsAre;

constexpr UINT kWesternEuropean = 1252;

std::string Converted(const std::wstring& text) {
    return AnsiText(text).Bytes();
}

TEST(AnsiText, KeepsTextsOfAnyLengthWhole) {
    for (const std::size_t length : {0u, 1u, 126u, 127u, 128u, 129u, 255u, 256u, 5000u}) {
        std::string bytes;  // no two neighbours alike, so that a shift shows
        for (std::size_t i = 0; i < length; ++i) bytes += static_cast<char>('a' + i % 26);
        EXPECT_EQ(Converted(std::wstring(bytes.begin(), bytes.end())), bytes) << length;
    }
}

TEST(AnsiText, KeepsInPlaceWhatFits128BytesWithItsTerminator) {
    const AnsiText fits(std::wstring(127, L'a'));
    const AnsiText exceeds(std::wstring(128, L'a'));
    const auto isInside = [](const AnsiText& text) {
        const auto* const object = reinterpret_cast<const char*>(&text);
        return text.Bytes() >= object && text.Bytes() < object + sizeof text;
    };
    EXPECT_TRUE(isInside(fits));
    EXPECT_FALSE(isInside(exceeds));
}

TEST(AnsiText, EndsAtTheFirstNull) {
    EXPECT_EQ(Converted(std::wstring(L"ab\0cd", 5)), "ab");
    EXPECT_EQ(Converted(std::wstring(L"\0cd", 3)), "");
}

TEST(AnsiText, KeepsLineBreaks) {
    EXPECT_EQ(Converted(L"\r\na\r\n\r\n"), "\r\na\r\n\r\n");
}

TEST(AnsiText, WritesAccentedLettersAsOneByteOfWindows1252) {
    if (::GetACP() != kWesternEuropean) GTEST_SKIP() << "the system's ANSI code page is " << ::GetACP();
    EXPECT_EQ(Converted(L"é"), "\xE9");
    EXPECT_EQ(Converted(L"Terminé le : "), "Termin\xE9 le : ");
    EXPECT_EQ(Converted(L"*** Durée de conversion (hh:mm:ss) : *** Annulé !"),
              "*** Dur\xE9"
              "e de conversion (hh:mm:ss) : *** Annul\xE9 !");
    EXPECT_EQ(Converted(L"€ß\u00FF"), "\x80\xDF\xFF");
    EXPECT_EQ(Converted(std::wstring(128, L'é')), std::string(128, '\xE9'));
}

TEST(AnsiText, WritesTheDefaultCharacterForWhatTheCodePageLacks) {
    if (::GetACP() != kWesternEuropean) GTEST_SKIP() << "the system's ANSI code page is " << ::GetACP();
    EXPECT_EQ(Converted(L"аЖ"), "??");        // Cyrillic
    EXPECT_EQ(Converted(L"a報告b"), "a??b");  // Chinese
    EXPECT_EQ(Converted(std::wstring(130, L'報')), std::string(130, '?'));
    EXPECT_EQ(Converted(L"a\xD83D\xDE00z"), "a??z");  // one for each of its two halves
}

// The conversion fails after half the work; what asks for the size is answered unless `knowsSize` is off.
class AnsiTextCallsTest : public testing::Test {
protected:
    bool knowsSize = true;
    std::vector<std::string> conversions;

private:
    Replaced m_convert = REPLACE_IMPORT(
        WideCharToMultiByte, [this](UINT codePage, DWORD flags, LPCWCH text, int length, LPSTR bytes,
                                    int size, LPCCH defaultCharacter, LPBOOL usedDefault) {
            const bool ordinary = codePage == CP_ACP && flags == 0 && length == -1 && text != nullptr &&
                                  defaultCharacter == nullptr && usedDefault == nullptr;
            conversions.push_back(std::string(ordinary ? "ordinary " : "odd ") + (bytes ? "into " : "size ") +
                                  std::to_string(size));
            if (bytes) std::memset(bytes, 'x', 3);
            return bytes || !knowsSize ? 0 : static_cast<int>(std::wcslen(text)) + 1;
        });
};

TEST_F(AnsiTextCallsTest, AsksForTheAnsiCodePageWithoutFlagsAndADefaultCharacterOfItsOwn) {
    { const AnsiText text(L"abcdef"); }
    { const AnsiText text(std::wstring(127, L'a')); }
    { const AnsiText text(std::wstring(128, L'a')); }
    EXPECT_THAT(conversions, ElementsAre("ordinary size 0", "ordinary into 128",  //
                                         "ordinary size 0", "ordinary into 128",  //
                                         "ordinary size 0", "ordinary into 129"));
}

TEST_F(AnsiTextCallsTest, IsEmptyWhenTheConversionFailsOrNotEvenTheSizeIsKnown) {
    for (const bool known : {true, false}) {
        knowsSize = known;
        EXPECT_STREQ(AnsiText(L"abcdef").Bytes(), "");
        EXPECT_STREQ(AnsiText(std::wstring(5000, L'a')).Bytes(), "");
    }
}

}  // namespace
