// One life of the program inside the test process: loaded, run from its entry on a thread of its own,
// unloaded. Its calls to the system go through a CallWatch and, where a Platform answers in the system's
// place, to that.
#pragma once

#include "tests/faults/harness/call_watch.h"
#include "tests/faults/harness/platform.h"

#include <windows.h>

#include <atomic>
#include <string>

class ProgramHost {
public:
    // What becomes of the program's thread.
    enum class Life { Running, Ended, EndedByExitProcess };

    ProgramHost();  // one at a time
    // The program must have ended.
    ~ProgramHost();

    Platform platform;
    CallWatch watch;

    // Returns at once. The window stays hidden.
    void Start();

    [[nodiscard]] Life State() const { return m_life; }
    [[nodiscard]] bool HasEnded() const { return m_life != Life::Running; }
    // False when it does not end in time. After Life::Ended nothing of it is left, the library unloaded.
    [[nodiscard]] bool WaitForEnd() const;
    // Valid once it has ended.
    [[nodiscard]] int ExitCode() const { return m_exitCode; }
    [[nodiscard]] DWORD ThreadId() const { return m_threadId; }
    // Its main window; null before it is created and when it is gone.
    [[nodiscard]] HWND MainWindow() const;

    // What the program is to call in the place of an imported function, or of one that it finds at run time:
    // seen by the watch, and answered by the platform where that has an answer. Others stay as they are.
    [[nodiscard]] void* Wrap(const std::string& name, void* real);
    // For the doubles: keeps the calling thread for good, as the end of a process does.
    [[noreturn]] void ProcessEnds(UINT exitCode);

private:
    void Run();

    HANDLE m_thread = nullptr;
    DWORD m_threadId = 0;
    std::atomic<Life> m_life{Life::Running};
    std::atomic<int> m_exitCode{-1};
};

// Whether this address is in the program's code.
[[nodiscard]] bool IsInProgram(const void* address);

// The one that lives.
[[nodiscard]] ProgramHost& CurrentHost();
