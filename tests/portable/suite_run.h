// One suite from its first test to its last. A test that crashes or hangs costs itself and no other: the
// program is started again for the tests behind it.
#pragma once
#include <functional>
#include <string>
#include <vector>

#include "tests/portable/gtest_output.h"
#include "tests/portable/suite_list.h"

struct SuiteResult {
    std::string name;
    std::vector<TestResult> tests;
    std::vector<std::string> problems;  // what is wrong beside the tests
    double seconds = 0;
};

// The names of a program's tests, all or those that the filter lets through.
std::vector<std::string> TestsOf(const std::wstring& program, const std::string& filter);

// Runs these tests of the suite. `progress` gets how many are done.
SuiteResult RunSuite(const Suite& suite, const std::wstring& program, const std::vector<std::string>& names,
                     const std::function<void(std::size_t done)>& progress);
