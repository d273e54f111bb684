// The calls that ask the system to shut down. While one lives none of them reaches the system: they are
// written down and answered as the test says.
#pragma once

#include "tests/support/call_record.h"
#include "tests/support/call_text.h"
#include "tests/support/replaced_imports.h"

#include <windows.h>

#include <atomic>

// Records, in `record`:
//   OpenProcessToken self 40
//   LookupPrivilegeValueW (null) "SeShutdownPrivilege"
//   AdjustTokenPrivileges token 0 (null) count=1 luid=5:19 attributes=2
//   InitiateSystemShutdownW (null) (null) 0 0 0
class ScriptedShutdown {
public:
    explicit ScriptedShutdown(CallRecord& record) : m_record(record) {}
    ScriptedShutdown(const ScriptedShutdown&) = delete;
    ScriptedShutdown& operator=(const ScriptedShutdown&) = delete;

    std::atomic<bool> opensToken{true};
    std::atomic<bool> knowsPrivilege{true};
    std::atomic<bool> adjustSucceeds{true};
    std::atomic<DWORD> adjustError{ERROR_SUCCESS};  // the last error that it leaves
    std::atomic<bool> accepts{true};

private:
    static inline const auto kToken = reinterpret_cast<HANDLE>(0x7001);

    static BOOL Answer(bool succeeds, DWORD error) {
        if (!succeeds) ::SetLastError(error);
        return succeeds;
    }

    CallRecord& m_record;
    Replaced m_openToken =
        REPLACE_IMPORT(OpenProcessToken, [this](HANDLE process, DWORD access, PHANDLE token) {
            const char* const whose = process == ::GetCurrentProcess() ? "self" : "other process";
            m_record.Add(CallText("OpenProcessToken", whose, access));
            if (opensToken) *token = kToken;
            return Answer(opensToken, ERROR_ACCESS_DENIED);
        });
    Replaced m_lookUp =
        REPLACE_IMPORT(LookupPrivilegeValueW, [this](LPCWSTR system, LPCWSTR name, PLUID luid) {
            m_record.Add(CallText("LookupPrivilegeValueW", system, name));
            if (knowsPrivilege) *luid = {19, 5};
            return Answer(knowsPrivilege, ERROR_NO_SUCH_PRIVILEGE);
        });
    Replaced m_adjust = REPLACE_IMPORT(
        AdjustTokenPrivileges,
        [this](HANDLE token, BOOL disableAll, PTOKEN_PRIVILEGES privileges, DWORD, PTOKEN_PRIVILEGES previous,
               PDWORD) -> BOOL {
            const auto& [luid, attributes] = privileges->Privileges[0];
            m_record.Add(CallText(
                "AdjustTokenPrivileges", token == kToken ? "token" : "other token", disableAll,
                previous ? "previous" : "(null)", "count=" + std::to_string(privileges->PrivilegeCount),
                "luid=" + std::to_string(luid.HighPart) + ':' + std::to_string(luid.LowPart),
                "attributes=" + std::to_string(attributes)));
            ::SetLastError(adjustError);
            return adjustSucceeds;
        });
    Replaced m_initiate = REPLACE_IMPORT(
        InitiateSystemShutdownW,
        [this](LPWSTR machine, LPWSTR message, DWORD seconds, BOOL force, BOOL reboot) {
            m_record.Add(CallText("InitiateSystemShutdownW", machine, message, seconds, force, reboot));
            return Answer(accepts, ERROR_SHUTDOWN_IN_PROGRESS);
        });
};
