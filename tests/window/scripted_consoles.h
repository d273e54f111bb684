// The consoles that a stop meets, and the job that holds the interpreters, as a test has them.
#pragma once

#include "tests/support/call_record.h"
#include "tests/support/replaced_imports.h"
#include "tests/window/worker_calls.h"

#include <windows.h>

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
// and the worker's record "AssignProcessToJobObject process 1".
class ScriptedConsoles {
public:
    explicit ScriptedConsoles(WorkerCalls& worker);
    ScriptedConsoles(const ScriptedConsoles&) = delete;
    ScriptedConsoles& operator=(const ScriptedConsoles&) = delete;

    CallRecord requests;
    std::vector<Console> windows;      // from the top
    std::function<void()> whenOpened;  // runs before a process is opened
    bool canOpenProcesses = true;
    bool reportsClassNames = true;

private:
    std::vector<std::unique_ptr<ReplacedImport>> m_replaced;
};
