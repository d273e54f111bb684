// What there is to run: the suites as the build wrote them down for ctest and for us, and what is left out.
#pragma once
#include <string>
#include <vector>

#include "tests/equipment/wait_until.h"

// One entry of ctest: a test program with its arguments.
struct Suite {
    std::string name;
    driver::Milliseconds limit{0};  // for each test
    std::wstring program;
    std::string filter;  // which of the program's tests; empty: all
    std::vector<std::string> arguments;
};

struct LeftOut {
    // Of names of tests, as GoogleTest takes it, or "entry " and one of entries of ctest.
    std::string pattern;
    std::string reason;
};

// From the files in a folder, which ends in a backslash. Each throws driver::Failure when its file is not as
// it should be.
std::vector<Suite> ReadSuites(const std::wstring& folder);
std::vector<LeftOut> ReadLeftOut(const std::wstring& folder);
