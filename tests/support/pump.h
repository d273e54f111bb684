// Waiting in a thread that owns windows: messages are served until a condition holds.
#pragma once

#include <windows.h>

#include <chrono>
#include <functional>

// Serves what is in the queue now; dialog keys as the program's loop does when `dialog` is given. A quit
// message ends that and is put back: true then.
inline bool PumpPending(HWND dialog = nullptr) {
    MSG message;
    while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message == WM_QUIT) {
            ::PostQuitMessage(static_cast<int>(message.wParam));
            return true;
        }
        if (dialog && ::IsDialogMessageW(dialog, &message)) continue;
        ::TranslateMessage(&message);
        ::DispatchMessageW(&message);
    }
    return false;
}

// Serves messages until `condition` holds; false when it does not within the deadline, or when a quit message
// comes before.
inline bool PumpUntil(const std::function<bool()>& condition, std::chrono::milliseconds deadline,
                      HWND dialog = nullptr) {
    const ULONGLONG end = ::GetTickCount64() + static_cast<ULONGLONG>(deadline.count());
    while (!condition()) {
        if (::GetTickCount64() >= end) return false;
        if (PumpPending(dialog)) return condition();
        ::MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
    }
    return true;
}
