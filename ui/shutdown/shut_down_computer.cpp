// The request to switch the machine off.

#include "ui/shutdown/shut_me_down_dlg.h"

#include <windows.h>

bool CShutMeDownDlg::ShutDownComputer() {
    // Deliberate: the token is not closed. A request that succeeds ends everything.
    HANDLE token = nullptr;
    if (!::OpenProcessToken(::GetCurrentProcess(), TOKEN_ADJUST_PRIVILEGES | TOKEN_QUERY, &token))
        return false;

    TOKEN_PRIVILEGES privileges = {};
    privileges.PrivilegeCount = 1;
    // Not looked at: without the identifier the next step fails.
    ::LookupPrivilegeValueW(nullptr, SE_SHUTDOWN_NAME, &privileges.Privileges[0].Luid);
    privileges.Privileges[0].Attributes = SE_PRIVILEGE_ENABLED;
    ::AdjustTokenPrivileges(token, FALSE, &privileges, 0, nullptr, nullptr);
    // The last error and not the result: an account without the privilege gets a success that adjusted
    // nothing.
    if (::GetLastError() != ERROR_SUCCESS) return false;

    if (!::InitiateSystemShutdownW(nullptr, nullptr, 0, FALSE, FALSE)) return false;
    privileges.Privileges[0].Attributes = 0;
    ::AdjustTokenPrivileges(token, FALSE, &privileges, 0, nullptr, nullptr);
    return true;
}
