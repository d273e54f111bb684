// No test may switch off the machine that it runs on, whatever goes wrong in it.
#pragma once
#include <windows.h>

#include "base/unique_resource.h"
#include "tests/equipment/failure.h"

namespace driver {

// True when the token had the right to be changed.
inline bool SetShutdownRight(DWORD attributes) {
    HANDLE opened = nullptr;
    if (!::OpenProcessToken(::GetCurrentProcess(), TOKEN_ADJUST_PRIVILEGES | TOKEN_QUERY, &opened))
        FailCall("OpenProcessToken", ::GetLastError());
    const UniqueHandle token(opened);
    TOKEN_PRIVILEGES rights = {};
    rights.PrivilegeCount = 1;
    rights.Privileges[0].Attributes = attributes;
    if (!::LookupPrivilegeValueW(nullptr, SE_SHUTDOWN_NAME, &rights.Privileges[0].Luid))
        FailCall("LookupPrivilegeValueW", ::GetLastError());
    // It succeeds also when the token does not have the right; the last error says so.
    if (!::AdjustTokenPrivileges(token.Get(), FALSE, &rights, 0, nullptr, nullptr))
        FailCall("AdjustTokenPrivileges", ::GetLastError());
    return ::GetLastError() == ERROR_SUCCESS;
}

// Whether the right can be used.
inline bool MayShutDown() {
    if (!SetShutdownRight(SE_PRIVILEGE_ENABLED)) return false;
    SetShutdownRight(0);  // as it usually is
    return true;
}

// Takes the right to shut the system down from this process and from all that it starts, for good: a request
// then fails before it is made. Throws Failure when the right is still there afterwards.
inline void GiveUpShutdown() {
    SetShutdownRight(SE_PRIVILEGE_REMOVED);
    if (MayShutDown()) throw Failure("the right to shut down cannot be given up");
}

}  // namespace driver
