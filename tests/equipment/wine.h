// Whether we run under Wine, where some things can be tried (the interpreter taken away) that no test does to
// a real Windows, and where a few of the system's own parts behave differently.
#pragma once
#include <windows.h>

inline bool UnderWine() {
    const HMODULE ntdll = ::GetModuleHandleW(L"ntdll.dll");
    return ntdll && ::GetProcAddress(ntdll, "wine_get_version");
}
