// What a reader of the results must know of the machine they come from. No name of a person or a computer is
// in it.
#pragma once
#include <windows.h>
#include <shlobj.h>

#include <cstdio>
#include <string>

#include "tests/equipment/no_shutdown.h"
#include "tests/equipment/text.h"

// A text or a number; empty when it is not there.
inline std::string RegistryValue(HKEY root, const wchar_t* key, const wchar_t* name) {
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

// Not from GetVersionEx, which reports to a program only versions that its manifest names.
inline std::string WindowsVersion() {
    std::string text;
    for (const wchar_t* const name : {L"ProductName", L"DisplayVersion", L"CurrentBuildNumber", L"UBR"}) {
        constexpr wchar_t kKey[] = L"SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion";
        const std::string value = RegistryValue(HKEY_LOCAL_MACHINE, kKey, name);
        if (!value.empty()) text += (text.empty() ? "" : ", ") + value;
    }
    using VersionFunction = const char*(CDECL*)();
    const auto wineVersion = reinterpret_cast<VersionFunction>(
        reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleW(L"ntdll.dll"), "wine_get_version")));
    if (wineVersion) text += std::string(", Wine ") + wineVersion();
    return text;
}

// A line for each fact, with its name.
inline std::string DescribeThisSystem() {
    // Or the system would report the dpi of a screen as old programs believe it to be.
    ::SetProcessDPIAware();
    SYSTEMTIME now = {};
    ::GetLocalTime(&now);
    wchar_t locale[LOCALE_NAME_MAX_LENGTH] = {};
    ::GetUserDefaultLocaleName(locale, LOCALE_NAME_MAX_LENGTH);
    wchar_t keyboard[KL_NAMELENGTH] = {};
    ::GetKeyboardLayoutNameW(keyboard);
    const HDC screen = ::GetDC(nullptr);
    const int dpi = ::GetDeviceCaps(screen, LOGPIXELSX);
    ::ReleaseDC(nullptr, screen);
    SYSTEM_INFO machine = {};
    ::GetNativeSystemInfo(&machine);
    // Which program shows the consoles: since Windows 11 that may be another than the console host.
    const std::string terminal =
        RegistryValue(HKEY_CURRENT_USER, L"Console\\%%Startup", L"DelegationTerminal");

    char text[512] = {};
    std::snprintf(
        text, sizeof text,
        "Begun: %04u-%02u-%02u %02u:%02u\n"
        "ANSI code page: %u\n"
        "OEM code page: %u\n"
        "Dpi: %d (%d %%)\n"
        "Screen: %d x %d, screens: %d%s\n"
        "Processors: %lu\n"
        "Administrator: %s\n"
        "May shut down: %s\n",
        now.wYear, now.wMonth, now.wDay, now.wHour, now.wMinute, ::GetACP(), ::GetOEMCP(), dpi,
        dpi * 100 / USER_DEFAULT_SCREEN_DPI, ::GetSystemMetrics(SM_CXSCREEN), ::GetSystemMetrics(SM_CYSCREEN),
        ::GetSystemMetrics(SM_CMONITORS), ::GetSystemMetrics(SM_REMOTESESSION) ? ", remote session" : "",
        machine.dwNumberOfProcessors, ::IsUserAnAdmin() ? "yes" : "no", driver::MayShutDown() ? "yes" : "no");
    return "Windows: " + WindowsVersion() + "\nLanguage of the user: " + driver::ToUtf8(locale) +
           "\nKeyboard: " + driver::ToUtf8(keyboard) +
           "\nDefault terminal: " + (terminal.empty() ? "not chosen" : terminal) + "\n" + text;
}
