// One run of the system's command interpreter, which runs the converter.
#pragma once

#include "base/unique_resource.h"

#include <windows.h>

#include <string>

class InterpreterRun {
public:
    // Asks the system where the interpreter is.
    InterpreterRun();

    // Starts it with the command line `arguments` in `workingFolder`. Its console has the title
    // `windowTitle`, and is not shown when `isHidden`. The system may write into both texts. False when it
    // could not be started; the thread's last error is then that of the attempt.
    [[nodiscard]] bool Start(std::wstring& arguments, const std::wstring& workingFolder,
                             std::wstring& windowTitle, bool isHidden) noexcept;

    // Of an interpreter that was started. The handle is borrowed; as long as this object has it, the id
    // belongs to no other process.
    [[nodiscard]] HANDLE Process() const noexcept { return m_process.Get(); }
    [[nodiscard]] DWORD ProcessId() const noexcept { return m_processId; }

    // Waits, without a limit, for the end of an interpreter that was started. True when its exit code is 0.
    [[nodiscard]] bool WaitForSuccess() const noexcept;

private:
    const std::wstring m_path;
    // Each run has handles of its own: after a stop a second batch may run beside the first, and neither may
    // wait for or close what is the other's.
    UniqueHandle m_thread;
    UniqueHandle m_process;  // the first to be closed
    DWORD m_processId = 0;
};
