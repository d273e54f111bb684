// Converters that exist in the test only: what CreateProcessW is given is kept, and each converter takes the
// time and ends with the code that the test has planned for it. With them the consoles that a stop meets, and
// the job that holds the interpreters.
#pragma once

#include "tests/equipment/system_lock.h"
#include "tests/equipment/worker_calls.h"
#include "tests/support/call_record.h"
#include "tests/support/replaced_imports.h"

#include <windows.h>

#include <atomic>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

inline constexpr wchar_t kConsoleClass[] = L"ConsoleWindowClass";
inline constexpr wchar_t kTerminalClass[] = L"PseudoConsoleWindow";  // of a window that serves no request

// How one converter behaves.
struct Conversion {
    DWORD exitCode = 0;
    DWORD durationMs = 0;  // added to the tick count while the batch waits for it
    DWORD startError = 0;  // not 0: it cannot be started, for this reason
    bool held = false;     // runs until it is released
    DWORD processId = 4242;
    const wchar_t* console = nullptr;      // class of the window that it has while it runs; null: none
    const wchar_t* realCommand = nullptr;  // not null: a process of the system's, with this command line
};

// A top-level window of the desktop.
struct ConsoleWindow {
    DWORD processId = 0;
    std::wstring className = kConsoleClass;
};

// What a stop meets. `requests` has, in their order:
//   OpenProcess 777 access=0x100000
//   window 1                      (looked at; counted from 1, that of converter 1 from 1001)
//   WM_SYSCOMMAND SC_CLOSE to 1   (or "message ... to 1")
//   TerminateJobObject 0xC000013A
struct ScriptedConsoles {
    CallRecord requests;
    std::vector<ConsoleWindow> windows;  // from the top, before those of the converters
    bool canOpenProcesses = true;
    bool reportsClassNames = true;
    // What the test does at a request, before it has its effect.
    std::function<void()> whenOpened;
    std::function<void()> whenSearched;
    // `converter` is 0 for a window that belongs to none.
    std::function<void(int converter, const ConsoleWindow& window, bool toClose)> whenAsked;
    std::function<void(DWORD exitCode)> whenJobEnds;
};

// While one lives, no process is started, opened or ended but the real ones that are planned, and no window
// of the desktop is looked at or asked anything. Converters are counted from 1, in the order of their starts.
// Records:
//   CreateProcessW
//   AssignProcessToJobObject process 1
//   WaitForSingleObject process 1 INFINITE
//   GetExitCodeProcess process 1
//   CloseHandle process 1           (and of "thread 1")
//   GetTickCount                    (returns `tick`)
class ScriptedConverters {
public:
    explicit ScriptedConverters(WorkerCalls& calls);
    ScriptedConverters(const ScriptedConverters&) = delete;
    ScriptedConverters& operator=(const ScriptedConverters&) = delete;
    ~ScriptedConverters() { ReleaseAll(); }

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

    // For the starts to come, in their order. Those without a plan succeed at once.
    void Plan(std::vector<Conversion> conversions);
    // Those without a plan run until they are released.
    void HoldAll();
    // Asked for the plan of each start, with the number that the converter then has. Keeps what it needs of
    // the start: Starts does not.
    std::function<Conversion(const Start& start, int number)> planner;

    // Ends one that still runs, with the exit code of its plan or with another.
    void Release(int number, std::optional<DWORD> exitCode = {});
    // Also those that are still to be started.
    void ReleaseAll(std::optional<DWORD> exitCode = {});

    [[nodiscard]] std::vector<Start> Starts() const;
    [[nodiscard]] int Started() const { return static_cast<int>(Starts().size()); }
    // How many are waited for or were. Those that could not be started count as well.
    [[nodiscard]] int Awaited() const { return m_awaited; }

    struct Converter {
        Conversion plan;
        HANDLE end = nullptr;  // set when it ends; the batch has another handle to it. Null: it has ended
        bool isInJob = false;
        bool isHeld = false;  // somebody has a handle to the process
    };
    // As they are now: number 1 comes first.
    [[nodiscard]] std::vector<Converter> Converters() const;

    ScriptedConsoles consoles;
    std::atomic<DWORD> tick{1'000'000};

private:
    void ReplaceProcessCalls();
    void ReplaceConsoleCalls();
    // The plan of a start. The handles are in `process`, unless it is to fail or to be a real one.
    [[nodiscard]] Conversion Begin(Start start, PROCESS_INFORMATION& process);
    // The caller has the lock. Null for a handle to something else.
    [[nodiscard]] Converter* Find(HANDLE process);
    static void End(Converter& converter, std::optional<DWORD> exitCode);
    // Nothing for a number that no window has.
    [[nodiscard]] std::optional<ConsoleWindow> WindowOf(std::size_t number) const;

    WorkerCalls& m_calls;
    mutable SystemLock m_lock;
    std::vector<Conversion> m_plan;
    std::vector<Converter> m_converters;
    std::vector<Start> m_starts;
    Conversion m_unplanned;
    bool m_nothingHeld = false;
    std::atomic<int> m_awaited{0};
    std::vector<Replaced> m_replaced;
};
