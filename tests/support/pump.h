// Waiting in a thread that owns windows: messages are served until a condition holds.
#pragma once

#include <windows.h>

#include <chrono>
#include <functional>

// Pumps the calling thread's messages until `condition` holds; false when it does not within the deadline.
// Dialog keys are handled as the program's loop does when `dialog` is given. A quit message ends the wait and
// is put back.
inline bool PumpUntil(const std::function<bool()>& condition, std::chrono::milliseconds deadline,
                      HWND dialog = nullptr) {
    const ULONGLONG end = ::GetTickCount64() + static_cast<ULONGLONG>(deadline.count());
    while (!condition()) {
        if (::GetTickCount64() >= end) return false;
        MSG message;
        while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            if (message.message == WM_QUIT) {
                ::PostQuitMessage(static_cast<int>(message.wParam));
                return condition();
            }
            if (dialog && ::IsDialogMessageW(dialog, &message)) continue;
            ::TranslateMessage(&message);
            ::DispatchMessageW(&message);
        }
        ::MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
    }
    return true;
}

// Serves what is in the queue now.
inline void PumpPending() {
    MSG message;
    while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message == WM_QUIT) {
            ::PostQuitMessage(static_cast<int>(message.wParam));
            return;
        }
        ::TranslateMessage(&message);
        ::DispatchMessageW(&message);
    }
}
