// The calls that ask the system to shut down. While one lives none of them reaches the system: they are
// written down and answered as the test says.
#pragma once

#include "tests/support/call_record.h"
#include "tests/support/replaced_imports.h"

#include <windows.h>

#include <atomic>

// Records, in `record`:
//   OpenProcessToken self access=0x28
//   LookupPrivilegeValueW local SeShutdownPrivilege
//   AdjustTokenPrivileges token all=0 count=1 luid=5:19 attributes=2 previous=none
//   InitiateSystemShutdownW machine=none message=none seconds=0 force=0 reboot=0
// Each names what is not as expected, for example "other token".
class ScriptedShutdown {
public:
    explicit ScriptedShutdown(CallRecord& record) : m_record(record) { s_current = this; }
    ScriptedShutdown(const ScriptedShutdown&) = delete;
    ScriptedShutdown& operator=(const ScriptedShutdown&) = delete;

    std::atomic<bool> opensToken{true};
    std::atomic<bool> knowsPrivilege{true};
    std::atomic<bool> adjustSucceeds{true};
    std::atomic<DWORD> adjustError{ERROR_SUCCESS};  // the last error that it leaves
    std::atomic<bool> accepts{true};

private:
    static BOOL WINAPI OpenToken(HANDLE process, DWORD access, PHANDLE token);
    static BOOL WINAPI LookUp(LPCWSTR system, LPCWSTR name, PLUID luid);
    static BOOL WINAPI Adjust(HANDLE token, BOOL disableAll, PTOKEN_PRIVILEGES privileges, DWORD size,
                              PTOKEN_PRIVILEGES previous, PDWORD needed);
    static BOOL WINAPI Initiate(LPWSTR machine, LPWSTR message, DWORD seconds, BOOL force, BOOL reboot);

    static inline ScriptedShutdown* s_current = nullptr;

    CallRecord& m_record;
    ReplacedImport m_openToken{"OpenProcessToken", &OpenToken};
    ReplacedImport m_lookUp{"LookupPrivilegeValueW", &LookUp};
    ReplacedImport m_adjust{"AdjustTokenPrivileges", &Adjust};
    ReplacedImport m_initiate{"InitiateSystemShutdownW", &Initiate};
};
