// Converters that run only on paper: what CreateProcessW is given is kept, and each converter takes the time
// and ends with the code that the test has planned for it.
#pragma once

#include "tests/support/replaced_imports.h"
#include "tests/window/system_lock.h"
#include "tests/window/worker_calls.h"

#include <windows.h>

#include <atomic>
#include <mutex>
#include <string>
#include <vector>

// How one converter behaves.
struct Conversion {
    DWORD exitCode = 0;
    DWORD durationMs = 0;  // added to the tick count while the batch waits for it
    DWORD startError = 0;  // not 0: it cannot be started, for this reason
    bool held = false;     // runs until it is released
    DWORD processId = 4242;
};

// What one converter was started with.
struct Start {
    std::wstring interpreter;
    std::wstring arguments;
    std::wstring folder;
    std::wstring title;
    STARTUPINFOW startup = {};
    bool ownSecurity = false;
    bool inheritsHandles = false;
    DWORD flags = 0;
    bool ownEnvironment = false;
    DWORD workerId = 0;
};

// While one lives, no process is started. Records "CreateProcessW", "WaitForSingleObject process 1 INFINITE",
// "GetExitCodeProcess process 1", "CloseHandle process 1", "CloseHandle thread 1", counted from 1 in the
// order of the starts, and "GetTickCount", which gives `tick`.
class ScriptedConverters {
public:
    explicit ScriptedConverters(WorkerCalls& calls);
    ScriptedConverters(const ScriptedConverters&) = delete;
    ScriptedConverters& operator=(const ScriptedConverters&) = delete;
    ~ScriptedConverters();

    // For the starts to come, in their order. Those without a plan succeed at once.
    void Plan(std::vector<Conversion> conversions);
    void Release(int number);
    void ReleaseAll();  // also those that are still to be started

    [[nodiscard]] std::vector<Start> Starts() const;

    std::atomic<DWORD> tick{1'000'000};

private:
    struct Converter {
        Conversion plan;
        HANDLE ended;  // the batch owns and closes it; ours is `released`
        HANDLE released;
    };

    static BOOL WINAPI Create(LPCWSTR interpreter, LPWSTR arguments, LPSECURITY_ATTRIBUTES processSecurity,
                              LPSECURITY_ATTRIBUTES threadSecurity, BOOL inheritsHandles, DWORD flags,
                              LPVOID environment, LPCWSTR folder, LPSTARTUPINFOW startup,
                              LPPROCESS_INFORMATION process);
    static DWORD WINAPI Wait(HANDLE handle, DWORD milliseconds);
    static BOOL WINAPI ExitCode(HANDLE process, LPDWORD code);
    static BOOL WINAPI Close(HANDLE handle);
    static DWORD WINAPI Tick();

    // The converter whose process handle, open, is `handle`.
    [[nodiscard]] bool Find(HANDLE handle, Converter& found) const;

    static inline ScriptedConverters* s_current = nullptr;

    WorkerCalls& m_calls;
    mutable SystemLock m_lock;
    std::vector<Conversion> m_plan;
    std::vector<Converter> m_converters;
    std::vector<Start> m_starts;
    bool m_nothingHeld = false;
    ReplacedImport m_create{"CreateProcessW", &Create};
    ReplacedImport m_wait{"WaitForSingleObject", &Wait};
    ReplacedImport m_exitCode{"GetExitCodeProcess", &ExitCode};
    ReplacedImport m_close{"CloseHandle", &Close};
    ReplacedImport m_tick{"GetTickCount", &Tick};
};
