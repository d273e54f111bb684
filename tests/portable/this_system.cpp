#include "tests/portable/this_system.h"

#include <windows.h>
#include <shlobj.h>

#include <cstdio>

#include "tests/equipment/no_shutdown.h"
#include "tests/equipment/text.h"

namespace {

template <class Function>
Function FromNtdll(const char* name) {
    return reinterpret_cast<Function>(
        reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleW(L"ntdll.dll"), name)));
}

// A text or a number; empty when it is not there.
std::string RegistryValue(HKEY root, const wchar_t* key, const wchar_t* name) {
    union {
        wchar_t text[256];
        DWORD number;
    } value = {};
    DWORD type = 0;
    DWORD bytes = sizeof value;
    constexpr DWORD kTypes = RRF_RT_REG_SZ | RRF_RT_REG_DWORD;
    if (::RegGetValueW(root, key, name, kTypes, &type, &value, &bytes) != ERROR_SUCCESS) return {};
    return type == REG_DWORD ? std::to_string(value.number) : driver::ToUtf8(value.text);
}

// GetVersionEx reports to a program only versions that its manifest names.
std::string Version() {
    OSVERSIONINFOEXW version = {};
    version.dwOSVersionInfoSize = sizeof version;
    using GetVersionFunction = LONG(WINAPI*)(OSVERSIONINFOEXW*);
    FromNtdll<GetVersionFunction>("RtlGetVersion")(&version);
    constexpr wchar_t kKey[] = L"SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion";
    std::string text = std::to_string(version.dwMajorVersion) + "." + std::to_string(version.dwMinorVersion) +
                       "." + std::to_string(version.dwBuildNumber);
    const std::string update = RegistryValue(HKEY_LOCAL_MACHINE, kKey, L"UBR");
    if (!update.empty()) text += "." + update;
    for (const wchar_t* const name : {L"ProductName", L"DisplayVersion"}) {
        const std::string value = RegistryValue(HKEY_LOCAL_MACHINE, kKey, name);
        if (!value.empty()) text += ", " + value;
    }
    const auto wineVersion = FromNtdll<const char*(CDECL*)()>("wine_get_version");
    if (wineVersion) text += std::string(", Wine ") + wineVersion();
    return text;
}

std::string Locale() {
    wchar_t name[LOCALE_NAME_MAX_LENGTH] = {};
    ::GetUserDefaultLocaleName(name, LOCALE_NAME_MAX_LENGTH);
    return driver::ToUtf8(name);
}

std::string KeyboardLayout() {
    wchar_t name[KL_NAMELENGTH] = {};
    ::GetKeyboardLayoutNameW(name);
    return driver::ToUtf8(name);
}

std::string Dpi() {
    const HDC screen = ::GetDC(nullptr);
    const int dpi = ::GetDeviceCaps(screen, LOGPIXELSX);
    ::ReleaseDC(nullptr, screen);
    constexpr int kUsualDpi = 96;
    return std::to_string(dpi) + " (" + std::to_string(dpi * 100 / kUsualDpi) + " %)";
}

std::string Screen() {
    return std::to_string(::GetSystemMetrics(SM_CXSCREEN)) + " x " +
           std::to_string(::GetSystemMetrics(SM_CYSCREEN)) +
           ", screens: " + std::to_string(::GetSystemMetrics(SM_CMONITORS)) +
           (::GetSystemMetrics(SM_REMOTESESSION) ? ", remote session" : "");
}

// Which program shows the consoles: since Windows 11 that may be another than the console host.
std::string DefaultTerminal() {
    const std::string terminal =
        RegistryValue(HKEY_CURRENT_USER, L"Console\\%%Startup", L"DelegationTerminal");
    return terminal.empty() ? "not chosen" : terminal;
}

std::string Now() {
    SYSTEMTIME now = {};
    ::GetLocalTime(&now);
    char text[32] = {};
    std::snprintf(text, sizeof text, "%04u-%02u-%02u %02u:%02u", now.wYear, now.wMonth, now.wDay, now.wHour,
                  now.wMinute);
    return text;
}

}  // namespace

std::vector<std::pair<std::string, std::string>> DescribeThisSystem() {
    // Or the system would report the dpi of a screen as old programs believe it to be.
    ::SetProcessDPIAware();
    SYSTEM_INFO machine = {};
    ::GetNativeSystemInfo(&machine);
    return {{"Begun", Now()},
            {"Windows", Version()},
            {"ANSI code page", std::to_string(::GetACP())},
            {"OEM code page", std::to_string(::GetOEMCP())},
            {"Language of the user", Locale()},
            {"Keyboard", KeyboardLayout()},
            {"Dpi", Dpi()},
            {"Screen", Screen()},
            {"Processors", std::to_string(machine.dwNumberOfProcessors)},
            {"Administrator", ::IsUserAnAdmin() ? "yes" : "no"},
            {"May shut down", driver::MayShutDown() ? "yes" : "no"},
            {"Default terminal", DefaultTerminal()}};
}
