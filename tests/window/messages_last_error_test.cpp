// The system's text for a failed call, behind the name of the call. Brought about by a shell that opens
// nothing.
#include "tests/window/main_window_fixture.h"

#include <shellapi.h>

namespace {

using testing::ElementsAre;

// The shell fails with `s_error`. The system's text for any error is `s_description`; without one the call
// that asks for it fails.
class LastErrorTest : public MainWindowFixture {
protected:
    LastErrorTest() {
        s_this = this;
        s_error = ERROR_NO_ASSOCIATION;
        s_description = L"Rien ne va plus.\r\n";
        s_asked.Clear();
        Create();
    }
    void OpenLog() { Command(IDC_OPEN_LOG, BN_CLICKED); }

    static inline DWORD s_error = 0;
    static inline const wchar_t* s_description = nullptr;
    static inline CallRecord s_asked;

private:
    static BOOL WINAPI Fail(SHELLEXECUTEINFOW*) {
        ::SetLastError(s_error);
        return FALSE;
    }
    static DWORD WINAPI Describe(DWORD flags, LPCVOID source, DWORD error, DWORD language, LPWSTR text,
                                 DWORD size, va_list* arguments) {
        s_asked.Add("flags=" + std::to_string(flags) + " source=" + (source ? "some" : "none") +
                    " error=" + std::to_string(error) + " language=" + std::to_string(language) +
                    " size=" + std::to_string(size) + " arguments=" + (arguments ? "some" : "none"));
        if (!s_description) {
            ::lstrcpynW(text, L"left over", static_cast<int>(size));
            ::SetLastError(ERROR_MR_MID_NOT_FOUND);
            return 0;
        }
        ::lstrcpynW(text, s_description, static_cast<int>(size));
        return static_cast<DWORD>(::lstrlenW(text));
    }
    // Finds what is asked for, and leaves an error behind as any call may.
    static HRSRC WINAPI FindAndSpoilError(HMODULE module, LPCWSTR type, LPCWSTR name, WORD language) {
        const HRSRC found = s_findsStrings ? s_this->m_find.Original<decltype(::FindResourceExW)>()(
                                                 module, type, name, language)
                                           : nullptr;
        ::SetLastError(ERROR_RESOURCE_NAME_NOT_FOUND);
        return found;
    }

    static inline LastErrorTest* s_this = nullptr;
    ReplacedImport m_shell{"ShellExecuteExW", &Fail};
    ReplacedImport m_describe{"FormatMessageW", &Describe};
    ReplacedImport m_find{"FindResourceExW", &FindAndSpoilError};

protected:
    static inline bool s_findsStrings = true;
};

TEST_F(LastErrorTest, StandsBehindTheNameOfTheCallInABoxOfTheWindow) {
    OpenLog();
    EXPECT_THAT(calls.Calls(), ElementsAre("MessageBoxW owner=main text=Erreur ShellExecute : Rien ne va "
                                           "plus.\r\n caption=Talvenor type=0x10"));
}

TEST_F(LastErrorTest, IsAskedForByItsCodeInTheUsersLanguage) {
    OpenLog();
    EXPECT_THAT(s_asked.Calls(), ElementsAre("flags=4096 source=none error=1155 language=1024 size=260 "
                                             "arguments=none"));
}

TEST_F(LastErrorTest, IsThatOfTheFailedCallThoughLoadingTheTextLeavesAnother) {
    s_error = ERROR_ACCESS_DENIED;
    OpenLog();
    ASSERT_EQ(s_asked.Calls().size(), 1u);
    EXPECT_NE(s_asked.Calls()[0].find(" error=5 "), std::string::npos);
}

TEST_F(LastErrorTest, WithoutATextOfTheSystemOnlyTheNameIsShown) {
    s_description = nullptr;
    OpenLog();
    EXPECT_THAT(calls.Calls(), ElementsAre("MessageBoxW owner=main text=Erreur ShellExecute :  "
                                           "caption=Talvenor type=0x10"));
}

TEST_F(LastErrorTest, AMissingNameLeavesTheGeneralOne) {
    s_findsStrings = false;
    OpenLog();
    s_findsStrings = true;
    ASSERT_EQ(calls.Calls().size(), 1u);
    EXPECT_TRUE(
        calls.Calls()[0].starts_with("MessageBoxW owner=main text=Err : Rien ne va plus.\r\n caption="));
}

std::string BoxWith(const std::string& text) {
    return "MessageBoxW owner=main text=" + text + " caption=Talvenor type=0x10";
}

TEST_F(LastErrorTest, WithoutANameStandsBehindTheGeneralOne) {
    ::SetLastError(ERROR_DISK_FULL);
    dialog->ShowLastError(CMainDlg::kNoPrefix);
    EXPECT_THAT(calls.Calls(), ElementsAre(BoxWith("Err : Rien ne va plus.\r\n")));
    EXPECT_NE(s_asked.Calls().at(0).find(" error=112 "), std::string::npos);
}

TEST_F(LastErrorTest, ATextWinsOverAName) {
    dialog->ShowLastError(IDS_SHELL_EXECUTE_FAILED, L"Impression : ");
    dialog->ShowLastError(CMainDlg::kNoPrefix, L"");
    EXPECT_THAT(calls.Calls(),
                ElementsAre(BoxWith("Impression : Rien ne va plus.\r\n"), BoxWith("Rien ne va plus.\r\n")));
}

}  // namespace
