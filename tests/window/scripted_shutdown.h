// The calls that ask the system to shut down. While one lives none of them reaches the system: they are
// written down and answered as the test says.
#pragma once

#include "tests/support/call_record.h"
#include "tests/support/replaced_imports.h"
#include "tests/support/utf8.h"

#include <windows.h>

#include <atomic>
#include <memory>
#include <string>

// Records, in `record`:
//   OpenProcessToken self access=0x28
//   LookupPrivilegeValueW local SeShutdownPrivilege
//   AdjustTokenPrivileges token all=0 count=1 luid=5:19 attributes=2 previous=none
//   InitiateSystemShutdownW machine=none message=none seconds=0 force=0 reboot=0
// Each names what is not as expected, for example "other token".
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

    static std::string Name(const wchar_t* text, const char* none) { return text ? Utf8(text) : none; }
    static BOOL Answer(bool succeeds, DWORD error) {
        if (!succeeds) ::SetLastError(error);
        return succeeds;
    }

    CallRecord& m_record;
    Replaced m_openToken =
        REPLACE_IMPORT(OpenProcessToken, [this](HANDLE process, DWORD access, PHANDLE token) {
            const bool self = process == ::GetCurrentProcess();
            m_record.Add(std::string("OpenProcessToken ") + (self ? "self" : "other process") +
                         " access=" + (access == 0x28 ? "0x28" : std::to_string(access)));
            if (opensToken) *token = kToken;
            return Answer(opensToken, ERROR_ACCESS_DENIED);
        });
    Replaced m_lookUp =
        REPLACE_IMPORT(LookupPrivilegeValueW, [this](LPCWSTR system, LPCWSTR name, PLUID luid) {
            m_record.Add("LookupPrivilegeValueW " + Name(system, "local") + ' ' + Name(name, "(null)"));
            if (knowsPrivilege) {
                luid->HighPart = 5;
                luid->LowPart = 19;
            }
            return Answer(knowsPrivilege, ERROR_NO_SUCH_PRIVILEGE);
        });
    Replaced m_adjust = REPLACE_IMPORT(
        AdjustTokenPrivileges,
        [this](HANDLE token, BOOL disableAll, PTOKEN_PRIVILEGES privileges, DWORD, PTOKEN_PRIVILEGES previous,
               PDWORD) -> BOOL {
            const LUID_AND_ATTRIBUTES& entry = privileges->Privileges[0];
            m_record.Add(std::string("AdjustTokenPrivileges ") + (token == kToken ? "token" : "other token") +
                         " all=" + std::to_string(disableAll) +
                         " count=" + std::to_string(privileges->PrivilegeCount) + " luid=" +
                         std::to_string(entry.Luid.HighPart) + ':' + std::to_string(entry.Luid.LowPart) +
                         " attributes=" + std::to_string(entry.Attributes) +
                         " previous=" + (previous ? "asked" : "none"));
            ::SetLastError(adjustError);
            return adjustSucceeds;
        });
    Replaced m_initiate = REPLACE_IMPORT(
        InitiateSystemShutdownW,
        [this](LPWSTR machine, LPWSTR message, DWORD seconds, BOOL force, BOOL reboot) {
            m_record.Add("InitiateSystemShutdownW machine=" + Name(machine, "none") +
                         " message=" + Name(message, "none") + " seconds=" + std::to_string(seconds) +
                         " force=" + std::to_string(force) + " reboot=" + std::to_string(reboot));
            return Answer(accepts, ERROR_SHUTDOWN_IN_PROGRESS);
        });
};
