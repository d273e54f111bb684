// A test program in a process of its own, with its output read line by line, a time limit, and an end for
// whatever it has started.
#pragma once
#include <windows.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "tests/equipment/handle.h"
#include "tests/equipment/wait_until.h"

struct ProcessEnd {
    std::optional<DWORD> code;  // none: it ran too long and was ended
    int leftRunning = 0;        // processes that it had started and left behind; they are ended too
};

class TestProcess {
public:
    // Throws driver::Failure when the program cannot be started.
    TestProcess(const std::wstring& program, const std::vector<std::string>& arguments);

    // Reads until the program ends. `take` gets each line of its output and its errors.
    ProcessEnd Run(driver::Milliseconds limit, const std::function<void(const std::string&)>& take);

private:
    // Gives what there is to read, whole lines; at the end also the last, unfinished one.
    void ReadLines(const std::function<void(const std::string&)>& take);
    [[nodiscard]] int RunningProcesses() const;

    driver::UniqueHandle m_job;  // ends its members when closed
    driver::UniqueHandle m_output;
    driver::UniqueHandle m_process;
    std::string m_unfinished;
};
