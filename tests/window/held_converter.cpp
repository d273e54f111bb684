#include "tests/window/held_converter.h"

HeldConverter::HeldConverter() {
    s_started = 0;
    s_exitCode = 0;
    s_endAtOnce = false;
}

void HeldConverter::End(DWORD exitCode) {
    s_exitCode = exitCode;
    if (const HANDLE running = s_running.exchange(nullptr)) {
        ::SetEvent(running);
        ::CloseHandle(running);
    }
}

void HeldConverter::EndAll(DWORD exitCode) {
    s_endAtOnce = true;
    End(exitCode);
}

BOOL WINAPI HeldConverter::Start(LPCWSTR /*program*/, LPWSTR /*commandLine*/, LPSECURITY_ATTRIBUTES,
                                 LPSECURITY_ATTRIBUTES, BOOL /*inherit*/, DWORD /*flags*/,
                                 LPVOID /*environment*/, LPCWSTR /*folder*/, LPSTARTUPINFOW /*startup*/,
                                 LPPROCESS_INFORMATION process) {
    const HANDLE ended = ::CreateEventW(nullptr, TRUE, s_endAtOnce, nullptr);
    const HANDLE self = ::GetCurrentProcess();
    HANDLE own = nullptr;
    ::DuplicateHandle(self, ended, self, &own, 0, FALSE, DUPLICATE_SAME_ACCESS);
    process->hProcess = ended;  // the batch closes both of its handles
    process->hThread = ::CreateEventW(nullptr, TRUE, FALSE, nullptr);
    process->dwProcessId = kProcessId;
    process->dwThreadId = 0;
    if (const HANDLE previous = s_running.exchange(own)) ::CloseHandle(previous);
    ++s_started;
    // EndAll may have come in between, and would not have found this one.
    if (s_endAtOnce) ::SetEvent(ended);
    return TRUE;
}

BOOL WINAPI HeldConverter::ExitCode(HANDLE /*process*/, LPDWORD code) {
    *code = s_exitCode;
    return TRUE;
}
