// Message boxes by string id or text.
#include "ui/messages.h"

#include "tests/support/call_record.h"
#include "tests/support/replaced_imports.h"
#include "tests/support/utf8.h"

#include "framework/app_module.h"
#include "res/resource.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr UINT kLongString = 900;
constexpr UINT kMissingString = 901;

// Message boxes are written down as "owner text|caption|type" and answered by `answer`. String 900 is
// `longString`; loads are written down as "LoadStringW id size". Memory for a buffer of `refused` characters
// is refused once.
class ShowMessageTest : public testing::Test {
protected:
    ShowMessageTest() { CAppModule::Instance().Init(::GetModuleHandleW(nullptr)); }
    ~ShowMessageTest() override { CAppModule::Instance().Term(); }

    std::vector<std::string> shown;
    std::vector<std::string> loads;
    int answer = IDOK;
    std::wstring longString;
    std::size_t refused = 0;

private:
    static std::string Shown(LPCWSTR text) {
        if (!text) return "(null)";
        return IS_INTRESOURCE(text) ? "(id)" : Utf8(text);
    }

    Replaced m_messageBox =
        REPLACE_IMPORT(MessageBoxW, [this](HWND owner, LPCWSTR text, LPCWSTR caption, UINT type) {
            shown.push_back((owner ? std::to_string(reinterpret_cast<ULONG_PTR>(owner)) : "none") + ' ' +
                            Shown(text) + '|' + Shown(caption) + '|' + std::to_string(type));
            return answer;
        });
    Replaced m_load = REPLACE_IMPORT(
        LoadStringW, [this](auto original, HINSTANCE module, UINT id, LPWSTR buffer, int size) {
            loads.push_back("LoadStringW " + std::to_string(id) + ' ' + std::to_string(size));
            if (id != kLongString) return original(module, id, buffer, size);
            ::lstrcpynW(buffer, longString.c_str(), size);
            return ::lstrlenW(buffer);
        });
    Replaced m_malloc = REPLACE_IMPORT(malloc, [this](auto original, std::size_t bytes) -> void* {
        if (refused != 0 && bytes == refused * sizeof(wchar_t)) {
            refused = 0;
            return nullptr;
        }
        return original(bytes);
    });
};

TEST_F(ShowMessageTest, LoadsTextAndCaptionByTheirIdsAndReturnsTheButtonThatWasPressed) {
    const auto owner = reinterpret_cast<HWND>(77);
    for (const int button : {IDNO, IDYES}) {
        answer = button;
        EXPECT_EQ(ShowMessage(owner, MAKEINTRESOURCEW(IDS_BAD_OUTPUT_FOLDER),
                              MAKEINTRESOURCEW(IDS_PROGRAM_NAME), MB_OK | MB_ICONERROR),
                  button);
    }
    EXPECT_EQ(shown, std::vector<std::string>(2, "77 Le dossier de destination est incorrect !|Talvenor|16"));
    EXPECT_THAT(loads, ElementsAre("LoadStringW 142 256", "LoadStringW 128 256", "LoadStringW 142 256",
                                   "LoadStringW 128 256"));
}

TEST_F(ShowMessageTest, TakesTextsAsTheyAreAndNoCaptionAlsoBesideOneById) {
    ShowMessage(nullptr, L"un texte", L"un titre", MB_YESNO | MB_ICONQUESTION);
    ShowMessage(nullptr, L"un texte", nullptr, MB_OK);
    EXPECT_THAT(shown, ElementsAre("none un texte|un titre|36", "none un texte|(null)|0"));
    EXPECT_THAT(loads, IsEmpty());
    shown.clear();
    ShowMessage(nullptr, L"un texte", MAKEINTRESOURCEW(IDS_PROGRAM_NAME), MB_OK);
    ShowMessage(nullptr, MAKEINTRESOURCEW(IDS_CONVERSION_FINISHED), L"un titre", MB_OK);
    EXPECT_THAT(shown, ElementsAre("none un texte|Talvenor|0", "none Conversion terminée !|un titre|0"));
}

TEST_F(ShowMessageTest, TakesAnyNumberOfSixteenBitsForAnIdAndAMissingStringForAnEmptyText) {
    ShowMessage(nullptr, MAKEINTRESOURCEW(kMissingString), MAKEINTRESOURCEW(IDS_READY), MB_OK);
    ShowMessage(nullptr, MAKEINTRESOURCEW(IDS_READY), MAKEINTRESOURCEW(65535), MB_OK);
    EXPECT_THAT(shown, ElementsAre("none |Ready|0", "none Ready||0"));
    EXPECT_THAT(loads, ElementsAre("LoadStringW 901 256", "LoadStringW 57345 256", "LoadStringW 57345 256",
                                   "LoadStringW 65535 256"));
}

TEST_F(ShowMessageTest, DoublesTheBufferUntilTheTextOrCaptionFits) {
    static const struct {
        std::size_t length;
        std::vector<std::string> loads;
    } kCases[] = {
        {254, {"LoadStringW 900 256"}},
        {255, {"LoadStringW 900 256", "LoadStringW 900 512"}},  // might have been cut
        {256, {"LoadStringW 900 256", "LoadStringW 900 512"}},
        {510, {"LoadStringW 900 256", "LoadStringW 900 512"}},
        {2000,
         {"LoadStringW 900 256", "LoadStringW 900 512", "LoadStringW 900 1024", "LoadStringW 900 2048"}},
    };
    for (const auto& row : kCases) {
        SCOPED_TRACE(row.length);
        longString.resize(row.length);
        // No two neighbours alike, so that a shift shows.
        for (std::size_t i = 0; i < row.length; ++i) longString[i] = static_cast<wchar_t>(L'a' + i % 26);
        shown.clear();
        loads.clear();
        ShowMessage(nullptr, MAKEINTRESOURCEW(kLongString), nullptr, MB_OK);
        EXPECT_EQ(loads, row.loads);
        loads.clear();
        ShowMessage(nullptr, L"un texte", MAKEINTRESOURCEW(kLongString), MB_OK);
        EXPECT_EQ(loads, row.loads);
        EXPECT_THAT(shown, ElementsAre("none " + Utf8(longString) + "|(null)|0",
                                       "none un texte|" + Utf8(longString) + "|0"));
    }
}

TEST_F(ShowMessageTest, ShowsNothingWithoutMemoryForATextACaptionOrALargerBuffer) {
    longString = std::wstring(300, L'x');
    static const struct {
        LPCWSTR text;
        LPCWSTR caption;
        std::size_t refused;
    } kCases[] = {
        {MAKEINTRESOURCEW(IDS_CONVERSION_FINISHED), nullptr, 256},
        {L"un texte", MAKEINTRESOURCEW(IDS_PROGRAM_NAME), 256},
        {MAKEINTRESOURCEW(kLongString), nullptr, 512},
    };
    for (const auto& row : kCases) {
        refused = row.refused;
        EXPECT_EQ(ShowMessage(nullptr, row.text, row.caption, MB_OK), 0);
        EXPECT_EQ(refused, 0u) << "no buffer of " << row.refused << " characters was asked for";
    }
    EXPECT_THAT(shown, IsEmpty());
}

}  // namespace
