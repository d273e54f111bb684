// Ctrl+C, or the close box of the console: what runs ends, nothing more is begun, and what there is is
// written down.
#pragma once
#include <windows.h>

#include <atomic>

#include "tests/equipment/failure.h"

class Interruption {
public:
    // From now on the console's end is noticed and no longer ends the process at once.
    static void Watch() {
        s_tidy = ::CreateEventW(nullptr, TRUE, FALSE, nullptr);
        if (!s_tidy) driver::FailCall("CreateEventW", ::GetLastError());
        if (!::SetConsoleCtrlHandler(&TakeNotice, TRUE))
            driver::FailCall("SetConsoleCtrlHandler", ::GetLastError());
    }
    // Whether a person has had enough.
    [[nodiscard]] static bool HasCome() { return s_hasCome; }
    // Called when all is tidied up: the system waits for that, though not for long.
    static void AllowEnd() { ::SetEvent(s_tidy); }

private:
    static BOOL WINAPI TakeNotice(DWORD /*event*/) {
        constexpr DWORD kTidyingMs = 4500;  // a little less than the system waits
        s_hasCome = true;
        // The process ends with the return from here when its console is closed.
        ::WaitForSingleObject(s_tidy, kTidyingMs);
        return TRUE;
    }

    static inline std::atomic<bool> s_hasCome{false};  // set by the system's thread, read by ours
    static inline HANDLE s_tidy = nullptr;             // an event, for the life of the process
};
