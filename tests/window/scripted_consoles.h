// The consoles that a stop meets, and the job that holds the interpreters, on paper.
#pragma once

#include "tests/support/call_record.h"
#include "tests/support/replaced_imports.h"
#include "tests/window/forwarding_import.h"
#include "tests/window/worker_calls.h"

#include <windows.h>

#include <atomic>
#include <functional>
#include <memory>
#include <string>
#include <vector>

// A top-level window of the desktop.
struct Console {
    DWORD processId = 0;
    std::wstring className = L"ConsoleWindowClass";
};

// While one lives, no window of the desktop is looked at or asked anything, and no process is opened or
// ended. `requests` has, in their order:
//   OpenProcess 777 access=0x100000
//   window 1                      (looked at; counted from 1)
//   WM_SYSCOMMAND SC_CLOSE to 1   (or "message ... to 1")
//   TerminateJobObject 0xC000013A
// and the worker's record "CreateJobObjectW" does not come into it; "AssignProcessToJobObject process 1"
// does.
class ScriptedConsoles {
public:
    explicit ScriptedConsoles(WorkerCalls& worker);
    ScriptedConsoles(const ScriptedConsoles&) = delete;
    ScriptedConsoles& operator=(const ScriptedConsoles&) = delete;
    ~ScriptedConsoles() { s_current = nullptr; }

    CallRecord requests;
    std::vector<Console> windows;      // from the top
    std::function<void()> whenOpened;  // runs before a process is opened
    bool canOpenProcesses = true;
    bool tellsClassNames = true;

private:
    static HWND Handle(std::size_t number) {
        return reinterpret_cast<HWND>(static_cast<ULONG_PTR>(0x990000 + number));
    }
    [[nodiscard]] static std::size_t NumberOf(HWND window);

    static BOOL WINAPI Assign(HANDLE job, HANDLE process);
    static BOOL WINAPI Terminate(HANDLE job, UINT exitCode);
    static HANDLE WINAPI Open(DWORD access, BOOL inherits, DWORD processId);
    static BOOL WINAPI Enumerate(WNDENUMPROC callback, LPARAM parameter);
    static DWORD WINAPI Owner(HWND window, LPDWORD processId);
    static int WINAPI ClassName(HWND window, LPWSTR name, int size);
    static BOOL WINAPI Notify(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    static inline ScriptedConsoles* s_current = nullptr;

    WorkerCalls& m_worker;
    ReplacedImport m_assign{"AssignProcessToJobObject", &Assign};
    ReplacedImport m_terminate{"TerminateJobObject", &Terminate};
    ReplacedImport m_open{"OpenProcess", &Open};
    ReplacedImport m_enumerate{"EnumWindows", &Enumerate};
    ReplacedImport m_owner{"GetWindowThreadProcessId", &Owner};
    ReplacedImport m_className{"GetClassNameW", &ClassName};
    ReplacedImport m_notify{"SendNotifyMessageW", &Notify};
};
