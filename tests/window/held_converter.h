// A converter that runs until the test ends it, in place of a process: what a batch looks like from inside.
#pragma once

#include "tests/support/replaced_imports.h"

#include <windows.h>

#include <atomic>

// While one lives, CreateProcessW starts nothing and succeeds, and the batch waits until End or EndAll.
class HeldConverter {
public:
    static constexpr DWORD kProcessId = 4242;

    HeldConverter();
    ~HeldConverter() { EndAll(1); }
    HeldConverter(const HeldConverter&) = delete;
    HeldConverter& operator=(const HeldConverter&) = delete;

    // How many have been started.
    [[nodiscard]] int Started() const { return s_started; }

    // Ends the one that runs.
    void End(DWORD exitCode);
    // Ends the one that runs and all that will be started, at once.
    void EndAll(DWORD exitCode);

private:
    static BOOL WINAPI Start(LPCWSTR program, LPWSTR commandLine, LPSECURITY_ATTRIBUTES,
                             LPSECURITY_ATTRIBUTES, BOOL inherit, DWORD flags, LPVOID environment,
                             LPCWSTR folder, LPSTARTUPINFOW startup, LPPROCESS_INFORMATION process);
    static BOOL WINAPI ExitCode(HANDLE process, LPDWORD code);

    static inline std::atomic<int> s_started{0};
    static inline std::atomic<HANDLE> s_running{nullptr};  // an event: set when the converter has ended
    static inline std::atomic<DWORD> s_exitCode{0};
    static inline std::atomic<bool> s_endAtOnce{false};
    ReplacedImport m_createProcess{"CreateProcessW", &Start};
    ReplacedImport m_exitCode{"GetExitCodeProcess", &ExitCode};
};
