// What the multi-select open dialog left in its buffer.
#include "ui/open_file_selection.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// The characters of a literal without the null that the compiler adds.
template <std::size_t Size>
std::span<const wchar_t> Characters(const wchar_t (&literal)[Size]) {
    return {literal, Size - 1};
}

TEST(ParseOpenFileBuffer, ReadsOneFileAsItsFullPath) {
    const OpenFileSelection selection = ParseOpenFileBuffer(Characters(L"C:\\in\\a.pdf\0\0"));
    EXPECT_EQ(selection.folder, L"");
    EXPECT_THAT(selection.files, ElementsAre(L"C:\\in\\a.pdf"));
}

TEST(ParseOpenFileBuffer, ReadsAFolderAndTheNamesInItInTheirOrder) {
    const OpenFileSelection selection =
        ParseOpenFileBuffer(Characters(L"C:\\in\0z.pdf\0a b.PDF\0отчёт 報告.pdf\0\0"));
    EXPECT_EQ(selection.folder, L"C:\\in");
    EXPECT_THAT(selection.files, ElementsAre(L"z.pdf", L"a b.PDF", L"отчёт 報告.pdf"));
}

TEST(ParseOpenFileBuffer, TakesASingleNameBehindAFolderForANameInIt) {
    const OpenFileSelection selection = ParseOpenFileBuffer(Characters(L"C:\\in\0a.pdf\0\0"));
    EXPECT_EQ(selection.folder, L"C:\\in");
    EXPECT_THAT(selection.files, ElementsAre(L"a.pdf"));
}

TEST(ParseOpenFileBuffer, KeepsTheFolderAsItIs) {
    EXPECT_EQ(ParseOpenFileBuffer(Characters(L"C:\\\0a\0b\0\0")).folder, L"C:\\");
    EXPECT_EQ(ParseOpenFileBuffer(Characters(L"\\\\server\\share\0a\0b\0\0")).folder, L"\\\\server\\share");
}

TEST(ParseOpenFileBuffer, KeepsNamesThatCameTwice) {
    EXPECT_THAT(ParseOpenFileBuffer(Characters(L"C:\\in\0a\0a\0\0")).files, ElementsAre(L"a", L"a"));
}

TEST(ParseOpenFileBuffer, StopsAtTheFirstEmptyName) {
    const OpenFileSelection one = ParseOpenFileBuffer(Characters(L"C:\\a.pdf\0\0left from before\0\0"));
    EXPECT_EQ(one.folder, L"");
    EXPECT_THAT(one.files, ElementsAre(L"C:\\a.pdf"));

    const OpenFileSelection several =
        ParseOpenFileBuffer(Characters(L"C:\\in\0a\0b\0\0left from before\0\0"));
    EXPECT_EQ(several.folder, L"C:\\in");
    EXPECT_THAT(several.files, ElementsAre(L"a", L"b"));
}

TEST(ParseOpenFileBuffer, EndsWhereABufferWithoutFinalNullsEnds) {
    const OpenFileSelection one = ParseOpenFileBuffer(Characters(L"C:\\a.pdf"));
    EXPECT_EQ(one.folder, L"");
    EXPECT_THAT(one.files, ElementsAre(L"C:\\a.pdf"));

    const OpenFileSelection oneTerminated = ParseOpenFileBuffer(Characters(L"C:\\a.pdf\0"));
    EXPECT_EQ(oneTerminated.folder, L"");
    EXPECT_THAT(oneTerminated.files, ElementsAre(L"C:\\a.pdf"));

    const OpenFileSelection several = ParseOpenFileBuffer(Characters(L"C:\\in\0a\0b"));
    EXPECT_EQ(several.folder, L"C:\\in");
    EXPECT_THAT(several.files, ElementsAre(L"a", L"b"));

    const OpenFileSelection severalTerminated = ParseOpenFileBuffer(Characters(L"C:\\in\0a\0b\0"));
    EXPECT_EQ(severalTerminated.folder, L"C:\\in");
    EXPECT_THAT(severalTerminated.files, ElementsAre(L"a", L"b"));
}

TEST(ParseOpenFileBuffer, ReadsAnEmptyPathFromABufferWithoutText) {
    for (const std::span<const wchar_t> buffer :
         {std::span<const wchar_t>(), Characters(L"\0"), Characters(L"\0\0"), Characters(L"\0\0\0a\0")}) {
        const OpenFileSelection selection = ParseOpenFileBuffer(buffer);
        EXPECT_EQ(selection.folder, L"");
        EXPECT_THAT(selection.files, ElementsAre(L""));
    }
}

TEST(ParseOpenFileBuffer, CopiesNothing) {
    const std::wstring buffer(L"C:\\in\0a.pdf\0\0", 13);
    const OpenFileSelection selection = ParseOpenFileBuffer(buffer);
    EXPECT_EQ(selection.folder.data(), buffer.data());
    ASSERT_THAT(selection.files, testing::SizeIs(1));
    EXPECT_EQ(selection.files[0].data(), buffer.data() + 6);
}

TEST(ParseOpenFileBuffer, ReadsThousandsOfNames) {
    constexpr std::size_t kCount = 5000;
    std::wstring buffer = L"C:\\in";
    buffer += L'\0';
    for (std::size_t i = 0; i < kCount; ++i) buffer += std::to_wstring(i) + L".pdf" + L'\0';
    buffer += L'\0';
    const OpenFileSelection selection = ParseOpenFileBuffer(buffer);
    EXPECT_EQ(selection.folder, L"C:\\in");
    ASSERT_EQ(selection.files.size(), kCount);
    EXPECT_EQ(selection.files.front(), L"0.pdf");
    EXPECT_EQ(selection.files[1234], L"1234.pdf");
    EXPECT_EQ(selection.files.back(), L"4999.pdf");
}

}  // namespace
