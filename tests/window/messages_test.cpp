// Message boxes by string id or text, and the system's text for a failed call behind the name of the call.
#include "ui/messages.h"

#include "tests/window/main_window_fixture.h"

#include <utility>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr UINT kLongString = 900;
constexpr UINT kMissingString = 901;

// String 900 is `longString`; loads are written down as "LoadStringW id size". Memory for a buffer of
// `refused` characters is refused once.
class ShowMessageTest : public MainWindowFixture {
protected:
    static std::string BoxWith(const std::string& text, const std::string& caption = "Talvenor") {
        return MessageBoxCall(text, "0x0", "none", caption);
    }
    // What has been shown since the last time.
    static std::vector<std::string> Shown() {
        const std::vector<std::string> shown = calls.Calls();
        calls.Clear();
        return shown;
    }

    std::vector<std::string> loads;
    std::wstring longString;
    std::size_t refused = 0;

private:
    Replaced m_load = REPLACE_IMPORT(
        LoadStringW, [this](auto original, HINSTANCE module, UINT id, LPWSTR buffer, int size) {
            loads.push_back(CallText("LoadStringW", id, size));
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
    for (const int button : {IDNO, IDYES}) {
        messageAnswer = button;
        EXPECT_EQ(ShowMessage(::GetDesktopWindow(), MAKEINTRESOURCEW(IDS_BAD_OUTPUT_FOLDER),
                              MAKEINTRESOURCEW(IDS_PROGRAM_NAME), MB_OK | MB_ICONERROR),
                  button);
        EXPECT_THAT(Shown(), ElementsAre(MessageBoxCall("Le dossier de destination est incorrect !", "0x10",
                                                        "other")));
    }
    EXPECT_THAT(loads, ElementsAre("LoadStringW 142 256", "LoadStringW 128 256", "LoadStringW 142 256",
                                   "LoadStringW 128 256"));
}

TEST_F(ShowMessageTest, TakesTextsAsTheyAreAndNoCaptionAlsoBesideOneById) {
    ShowMessage(nullptr, L"un texte", L"un titre", MB_OK);
    ShowMessage(nullptr, L"un texte", nullptr, MB_OK);
    EXPECT_THAT(Shown(), ElementsAre(BoxWith("un texte", "un titre"), BoxWith("un texte", "(null)")));
    EXPECT_THAT(loads, IsEmpty());
    ShowMessage(nullptr, L"un texte", MAKEINTRESOURCEW(IDS_PROGRAM_NAME), MB_OK);
    ShowMessage(nullptr, MAKEINTRESOURCEW(IDS_CONVERSION_FINISHED), L"un titre", MB_OK);
    EXPECT_THAT(Shown(), ElementsAre(BoxWith("un texte"), BoxWith("Conversion terminée !", "un titre")));
}

TEST_F(ShowMessageTest, TakesAnyNumberOfSixteenBitsForAnIdAndAMissingStringForAnEmptyText) {
    ShowMessage(nullptr, MAKEINTRESOURCEW(kMissingString), MAKEINTRESOURCEW(IDS_READY), MB_OK);
    ShowMessage(nullptr, MAKEINTRESOURCEW(IDS_READY), MAKEINTRESOURCEW(65535), MB_OK);
    EXPECT_THAT(Shown(), ElementsAre(BoxWith("", "Ready"), BoxWith("Ready", "")));
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
        ShowMessage(nullptr, MAKEINTRESOURCEW(kLongString), nullptr, MB_OK);
        EXPECT_EQ(std::exchange(loads, {}), row.loads);
        ShowMessage(nullptr, L"un texte", MAKEINTRESOURCEW(kLongString), MB_OK);
        EXPECT_EQ(std::exchange(loads, {}), row.loads);
        EXPECT_THAT(Shown(),
                    ElementsAre(BoxWith(Utf8(longString), "(null)"), BoxWith("un texte", Utf8(longString))));
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
    EXPECT_THAT(Shown(), IsEmpty());
}

// The system's text for any error is `description`; without one the call that asks for it fails. Loading a
// string leaves an error behind, as any call may.
class LastErrorTest : public MainWindowFixture {
protected:
    LastErrorTest() { Create(); }

    void ShowError(DWORD error, UINT prefixId, const wchar_t* prefixText = nullptr) {
        ::SetLastError(error);
        dialog->ShowLastError(prefixId, prefixText);
    }
    static std::string BoxWith(const std::string& text) { return MessageBoxCall(text, "0x10"); }

    const wchar_t* description = L"Rien ne va plus.\r\n";
    bool findsStrings = true;
    int searches = 0;  // for prefixes
    std::vector<std::string> asked;

private:
    Replaced m_describe =
        REPLACE_IMPORT(FormatMessageW, [this](DWORD flags, LPCVOID source, DWORD error, DWORD language,
                                              LPWSTR text, DWORD size, va_list* arguments) {
            EXPECT_EQ(source, nullptr);
            EXPECT_EQ(arguments, nullptr);
            asked.push_back(CallText("FormatMessageW", flags, error, language, size));
            ::lstrcpynW(text, description ? description : L"left over", static_cast<int>(size));
            ::SetLastError(ERROR_MR_MID_NOT_FOUND);
            return description ? static_cast<DWORD>(::lstrlenW(text)) : 0;
        });
    Replaced m_find = REPLACE_IMPORT(
        FindResourceExW, [this](auto original, HMODULE module, LPCWSTR type, LPCWSTR name, WORD language) {
            ++searches;
            const HRSRC found = findsStrings ? original(module, type, name, language) : nullptr;
            ::SetLastError(ERROR_RESOURCE_NAME_NOT_FOUND);
            return found;
        });
};

TEST_F(LastErrorTest, IsShownBehindTheNameOfTheCallInAMessageBoxOfTheWindow) {
    ShowError(ERROR_NO_ASSOCIATION, IDS_SHELL_EXECUTE_FAILED);
    EXPECT_THAT(calls.Calls(), ElementsAre(BoxWith("Erreur ShellExecute : Rien ne va plus.\r\n")));
}

TEST_F(LastErrorTest, IsAskedForByTheCodeOfTheFailedCallInTheUsersLanguage) {
    ShowError(ERROR_NO_ASSOCIATION, IDS_SHELL_EXECUTE_FAILED);
    ShowError(ERROR_DISK_FULL, CMainDlg::kNoPrefix);
    EXPECT_THAT(asked, ElementsAre("FormatMessageW 4096 1155 1024 260", "FormatMessageW 4096 112 1024 260"));
}

TEST_F(LastErrorTest, ShowsOnlyTheNameWithoutATextOfTheSystem) {
    description = nullptr;
    ShowError(ERROR_NO_ASSOCIATION, IDS_SHELL_EXECUTE_FAILED);
    EXPECT_THAT(calls.Calls(), ElementsAre(BoxWith("Erreur ShellExecute : ")));
}

TEST_F(LastErrorTest, UsesTheDefaultPrefixWhenNoneIsGivenOrFound) {
    EXPECT_EQ(CMainDlg::kNoPrefix, 0xFFFFFFFFu);
    searches = 0;
    ShowError(ERROR_DISK_FULL, CMainDlg::kNoPrefix);
    EXPECT_EQ(searches, 0);
    findsStrings = false;
    ShowError(ERROR_DISK_FULL, IDS_SHELL_EXECUTE_FAILED);
    EXPECT_THAT(calls.Calls(),
                ElementsAre(BoxWith("Err : Rien ne va plus.\r\n"), BoxWith("Err : Rien ne va plus.\r\n")));
}

TEST_F(LastErrorTest, UsesATextRatherThanAName) {
    ShowError(ERROR_DISK_FULL, IDS_SHELL_EXECUTE_FAILED, L"Impression : ");
    ShowError(ERROR_DISK_FULL, CMainDlg::kNoPrefix, L"");
    EXPECT_THAT(calls.Calls(),
                ElementsAre(BoxWith("Impression : Rien ne va plus.\r\n"), BoxWith("Rien ne va plus.\r\n")));
}

}  // namespace
