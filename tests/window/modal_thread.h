// A modal dialog on a thread of its own, as a batch's worker runs one.
#pragma once

#include "tests/support/pump.h"

#include <windows.h>

#include <chrono>

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

// Runs `TDialog`, of `owner` or without a parent, until it ends. A test must end it before the ModalThread
// goes.
template <class TDialog>
class ModalThread {
public:
    explicit ModalThread(const wchar_t* title, HWND owner = nullptr)
        : m_title(title), m_owner(owner), m_thread(::CreateThread(nullptr, 0, &Run, this, 0, nullptr)) {}
    ModalThread(const ModalThread&) = delete;
    ModalThread& operator=(const ModalThread&) = delete;
    ~ModalThread() {
        if (!HasEnded()) ::PostMessageW(FindOwnDialog(m_title), WM_COMMAND, IDCANCEL, 0);
        // An owner of ours gets messages at the dialog's end.
        PumpUntil([&] { return HasEnded(); }, std::chrono::seconds(10));
        ::WaitForSingleObject(m_thread, INFINITE);
        ::CloseHandle(m_thread);
    }

    // The dialog's window, once it is shown; null when it never is.
    [[nodiscard]] HWND Window() const {
        HWND window = nullptr;
        PumpUntil(
            [&] {
                window = FindOwnDialog(m_title);
                return window && ::IsWindowVisible(window);
            },
            std::chrono::seconds(10));
        return window;
    }

    // The result of the dialog, which is to end now; -2 when it does not.
    [[nodiscard]] INT_PTR Result() const {
        const bool ended = PumpUntil([&] { return HasEnded(); }, std::chrono::seconds(10));
        return ended ? m_result : -2;
    }
    [[nodiscard]] bool HasEnded() const { return ::WaitForSingleObject(m_thread, 0) == WAIT_OBJECT_0; }
    // The control that has the focus in the dialog's thread.
    [[nodiscard]] HWND Focused() const {
        GUITHREADINFO info = {};
        info.cbSize = sizeof info;
        ::GetGUIThreadInfo(::GetThreadId(m_thread), &info);
        return info.hwndFocus;
    }

private:
    static DWORD WINAPI Run(void* self) {
        auto& thread = *static_cast<ModalThread*>(self);
        TDialog dialog;
        thread.m_result = dialog.DoModal(thread.m_owner);
        return 0;
    }

    const wchar_t* m_title;
    const HWND m_owner;     // borrowed
    INT_PTR m_result = -3;  // written by the thread, read after its end
    HANDLE m_thread;
};
