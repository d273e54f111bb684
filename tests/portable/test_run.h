// One test in a process of its own: a test that crashes or hangs costs itself and no other.
#pragma once
#include <string>
#include <vector>

#include "tests/portable/suite_list.h"

enum class Outcome { Passed, Failed, Skipped, Crashed, TooLong, NotRun };

struct TestResult {
    std::string name;
    Outcome outcome = Outcome::NotRun;
    std::string output;   // what it printed, with more for the reader where it crashed or hung
    int leftRunning = 0;  // processes
};

// The names of the suite's tests but for those that are left out. Each throws driver::Failure when the
// program cannot be started, and this one when it does not answer.
std::vector<std::string> TestsOf(const Suite& suite, const std::vector<LeftOut>& leftOut);
TestResult RunTest(const Suite& suite, const std::string& name);
