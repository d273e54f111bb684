#include "tests/window/scripted_shutdown.h"

#include "tests/support/utf8.h"

#include <string>

namespace {

const auto kToken = reinterpret_cast<HANDLE>(0x7001);

std::string Hex(DWORD value) {
    char text[16];
    ::wsprintfA(text, "0x%X", value);
    return text;
}

std::string Name(const wchar_t* text, const char* none) {
    return text ? Utf8(text) : none;
}

}  // namespace

BOOL WINAPI ScriptedShutdown::OpenToken(HANDLE process, DWORD access, PHANDLE token) {
    const bool self = process == ::GetCurrentProcess();
    s_current->m_record.Add(std::string("OpenProcessToken ") + (self ? "self" : "other process") +
                            " access=" + Hex(access));
    if (!s_current->opensToken) {
        ::SetLastError(ERROR_ACCESS_DENIED);
        return FALSE;
    }
    *token = kToken;
    return TRUE;
}

BOOL WINAPI ScriptedShutdown::LookUp(LPCWSTR system, LPCWSTR name, PLUID luid) {
    s_current->m_record.Add("LookupPrivilegeValueW " + Name(system, "local") + ' ' + Name(name, "(null)"));
    if (!s_current->knowsPrivilege) {
        ::SetLastError(ERROR_NO_SUCH_PRIVILEGE);
        return FALSE;
    }
    luid->HighPart = 5;
    luid->LowPart = 19;
    return TRUE;
}

BOOL WINAPI ScriptedShutdown::Adjust(HANDLE token, BOOL disableAll, PTOKEN_PRIVILEGES privileges,
                                     DWORD /*size*/, PTOKEN_PRIVILEGES previous, PDWORD /*needed*/) {
    const LUID_AND_ATTRIBUTES& entry = privileges->Privileges[0];
    s_current->m_record.Add(
        std::string("AdjustTokenPrivileges ") + (token == kToken ? "token" : "other token") +
        " all=" + std::to_string(disableAll) + " count=" + std::to_string(privileges->PrivilegeCount) +
        " luid=" + std::to_string(entry.Luid.HighPart) + ':' + std::to_string(entry.Luid.LowPart) +
        " attributes=" + std::to_string(entry.Attributes) + " previous=" + (previous ? "asked" : "none"));
    ::SetLastError(s_current->adjustError);
    return s_current->adjustSucceeds;
}

BOOL WINAPI ScriptedShutdown::Initiate(LPWSTR machine, LPWSTR message, DWORD seconds, BOOL force,
                                       BOOL reboot) {
    s_current->m_record.Add("InitiateSystemShutdownW machine=" + Name(machine, "none") +
                            " message=" + Name(message, "none") + " seconds=" + std::to_string(seconds) +
                            " force=" + std::to_string(force) + " reboot=" + std::to_string(reboot));
    if (!s_current->accepts) {
        ::SetLastError(ERROR_SHUTDOWN_IN_PROGRESS);
        return FALSE;
    }
    return TRUE;
}
