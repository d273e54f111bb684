// results.txt: what one person sends back and another reads.
#pragma once
#include <string>
#include <utility>
#include <vector>

#include "tests/portable/suite_list.h"
#include "tests/portable/suite_run.h"

struct Report {
    std::string version;  // of the program
    std::vector<std::pair<std::string, std::string>> system;
    std::vector<LeftOut> leftOut;
    std::vector<SuiteResult> suites;
    std::size_t suitesInAll = 0;
    std::vector<std::string> problems;  // of no suite
};

// Whether everything has run and nothing is wrong.
bool IsGood(const Report& report);

// In one line.
std::string Summary(const Report& report);
std::string Summary(const SuiteResult& suite);

// Writes the file anew. Throws driver::Failure when it cannot.
void WriteReport(const Report& report, const std::wstring& path);
