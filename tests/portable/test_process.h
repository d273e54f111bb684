// A program in a process of its own, with its output read, a time limit, and an end for whatever it has
// started.
#pragma once
#include <windows.h>

#include <optional>
#include <string>
#include <vector>

#include "tests/equipment/wait_until.h"

struct ProcessEnd {
    std::optional<DWORD> code;  // none: it ran too long, or a person has had enough, and was ended
    std::string output;         // with its errors
    int leftRunning = 0;        // processes that it had started and left behind; they are ended too
};

// Throws driver::Failure when the program cannot be started.
ProcessEnd RunProcess(const std::wstring& program, const std::vector<std::string>& arguments,
                      driver::Milliseconds limit);
