// results.txt: what one person sends back and another reads.
#pragma once
#include <string>
#include <utility>
#include <vector>

#include "tests/portable/suite_list.h"
#include "tests/portable/test_run.h"

struct SuiteResult {
    std::string name;
    std::vector<TestResult> tests;
    std::vector<std::string> problems;  // what is wrong beside the tests
    double seconds = 0;
};

struct Report {
    std::string version;  // of the program
    std::vector<std::pair<std::string, std::string>> system;
    std::vector<LeftOut> leftOut;
    std::vector<SuiteResult> suites;
    std::size_t suitesInAll = 0;
    std::vector<std::string> problems;  // of no suite
};

bool IsWrong(Outcome outcome);
// Whether everything has run and nothing is wrong.
bool IsGood(const Report& report);

// In one line.
std::string Summary(const Report& report);
std::string Summary(const SuiteResult& suite);

// Writes the file anew. Throws driver::Failure when it cannot.
void WriteReport(const Report& report, const std::wstring& path);
