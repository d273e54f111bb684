// The system's text for a failed call, behind the name of the call.
#include "tests/window/main_window_fixture.h"

namespace {

using testing::ElementsAre;

// The system's text for any error is `description`; without one the call that asks for it fails. Loading a
// string leaves an error behind, as any call may.
class LastErrorTest : public MainWindowFixture {
protected:
    LastErrorTest() { Create(); }

    void ShowError(DWORD error, UINT prefixId, const wchar_t* prefixText = nullptr) {
        ::SetLastError(error);
        dialog->ShowLastError(prefixId, prefixText);
    }
    static std::string MessageBoxWith(const std::string& text) { return MessageBoxCall(text, "0x10"); }

    const wchar_t* description = L"Rien ne va plus.\r\n";
    bool findsStrings = true;
    int searches = 0;  // for prefixes
    std::vector<std::string> asked;

private:
    Replaced m_describe =
        REPLACE_IMPORT(FormatMessageW, [this](DWORD flags, LPCVOID source, DWORD error, DWORD language,
                                              LPWSTR text, DWORD size, va_list* arguments) {
            asked.push_back("flags=" + std::to_string(flags) + " error=" + std::to_string(error) +
                            " language=" + std::to_string(language) + " size=" + std::to_string(size) +
                            (source || arguments ? " and more" : ""));
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
    EXPECT_THAT(calls.Calls(), ElementsAre(MessageBoxWith("Erreur ShellExecute : Rien ne va plus.\r\n")));
}

TEST_F(LastErrorTest, IsAskedForByTheCodeOfTheFailedCallInTheUsersLanguage) {
    ShowError(ERROR_NO_ASSOCIATION, IDS_SHELL_EXECUTE_FAILED);
    ShowError(ERROR_DISK_FULL, CMainDlg::kNoPrefix);
    EXPECT_THAT(asked, ElementsAre("flags=4096 error=1155 language=1024 size=260",
                                   "flags=4096 error=112 language=1024 size=260"));
}

TEST_F(LastErrorTest, ShowsOnlyTheNameWithoutATextOfTheSystem) {
    description = nullptr;
    ShowError(ERROR_NO_ASSOCIATION, IDS_SHELL_EXECUTE_FAILED);
    EXPECT_THAT(calls.Calls(), ElementsAre(MessageBoxWith("Erreur ShellExecute : ")));
}

TEST_F(LastErrorTest, UsesTheDefaultPrefixWhenNoneIsGivenOrFound) {
    EXPECT_EQ(CMainDlg::kNoPrefix, 0xFFFFFFFFu);
    searches = 0;
    ShowError(ERROR_DISK_FULL, CMainDlg::kNoPrefix);
    EXPECT_EQ(searches, 0);
    findsStrings = false;
    ShowError(ERROR_DISK_FULL, IDS_SHELL_EXECUTE_FAILED);
    EXPECT_THAT(calls.Calls(), ElementsAre(MessageBoxWith("Err : Rien ne va plus.\r\n"),
                                           MessageBoxWith("Err : Rien ne va plus.\r\n")));
}

TEST_F(LastErrorTest, UsesATextRatherThanAName) {
    ShowError(ERROR_DISK_FULL, IDS_SHELL_EXECUTE_FAILED, L"Impression : ");
    ShowError(ERROR_DISK_FULL, CMainDlg::kNoPrefix, L"");
    EXPECT_THAT(calls.Calls(), ElementsAre(MessageBoxWith("Impression : Rien ne va plus.\r\n"),
                                           MessageBoxWith("Rien ne va plus.\r\n")));
}

}  // namespace
