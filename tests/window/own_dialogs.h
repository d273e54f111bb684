// Finding the dialogs of the test process, whichever thread runs them.
#pragma once

#include <windows.h>

// A dialog of this process by its title; null while there is none.
inline HWND FindOwnDialog(const wchar_t* title) {
    HWND dialog = nullptr;
    while ((dialog = ::FindWindowExW(nullptr, dialog, L"#32770", title)) != nullptr) {
        DWORD process = 0;
        ::GetWindowThreadProcessId(dialog, &process);
        if (process == ::GetCurrentProcessId()) break;
    }
    return dialog;
}
