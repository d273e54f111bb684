#include "tests/portable/interruption.h"

#include <windows.h>

#include <atomic>

#include "tests/equipment/failure.h"

namespace {

// A little less than the system waits for a program whose console is closed.
constexpr DWORD kTidyingMs = 4500;

std::atomic<bool> g_interrupted{false};  // set by the system's thread, read by ours
HANDLE g_tidy = nullptr;                 // an event, for the life of the process

BOOL WINAPI TakeNotice(DWORD /*event*/) {
    g_interrupted = true;
    // The process ends with the return from here when its console is closed.
    ::WaitForSingleObject(g_tidy, kTidyingMs);
    return TRUE;
}

}  // namespace

void WatchForInterruption() {
    g_tidy = ::CreateEventW(nullptr, TRUE, FALSE, nullptr);
    if (!g_tidy) driver::FailCall("CreateEventW", ::GetLastError());
    if (!::SetConsoleCtrlHandler(&TakeNotice, TRUE))
        driver::FailCall("SetConsoleCtrlHandler", ::GetLastError());
}

bool IsInterrupted() {
    return g_interrupted;
}

void AllowEnd() {
    ::SetEvent(g_tidy);
}
