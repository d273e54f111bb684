// Converters that exist in the test only: what CreateProcessW is given is kept, and each converter takes the
// time and ends with the code that the test has planned for it.
#pragma once

#include "tests/support/replaced_imports.h"
#include "tests/window/system_lock.h"
#include "tests/window/worker_calls.h"

#include <windows.h>

#include <atomic>
#include <memory>
#include <mutex>
#include <optional>
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
// order of the starts, and "GetTickCount", which returns `tick`.
class ScriptedConverters {
public:
    explicit ScriptedConverters(WorkerCalls& calls);
    ScriptedConverters(const ScriptedConverters&) = delete;
    ScriptedConverters& operator=(const ScriptedConverters&) = delete;
    ~ScriptedConverters();

    // For the starts to come, in their order. Those without a plan succeed at once.
    void Plan(std::vector<Conversion> conversions);
    // Those without a plan run until they are released.
    void HoldAll();
    // Ends a held one, with the exit code of its plan or with another.
    void Release(int number, std::optional<DWORD> exitCode = {});
    // Also those that are still to be started.
    void ReleaseAll(std::optional<DWORD> exitCode = {});

    [[nodiscard]] std::vector<Start> Starts() const;
    [[nodiscard]] int Started() const { return static_cast<int>(Starts().size()); }

    std::atomic<DWORD> tick{1'000'000};

private:
    struct Converter {
        Conversion plan;
        HANDLE ended;  // the batch owns and closes it; ours is `released`
        HANDLE released;
    };

    // The error of a start that is planned to fail; 0 for one whose handles are in `process`.
    DWORD Begin(Start start, PROCESS_INFORMATION& process);
    // The converter whose process handle, open, is `handle`.
    [[nodiscard]] bool Find(HANDLE handle, Converter& found) const;

    WorkerCalls& m_calls;
    mutable SystemLock m_lock;
    std::vector<Conversion> m_plan;
    std::vector<Converter> m_converters;
    std::vector<Start> m_starts;
    Conversion m_unplanned;
    bool m_nothingHeld = false;
    std::vector<std::unique_ptr<ReplacedImport>> m_replaced;
};
