// What there is to run: the suites as the build wrote them down for ctest and for us. Throws driver::Failure
// when a file is not as it should be.
#pragma once
#include <algorithm>
#include <chrono>
#include <sstream>
#include <string>
#include <vector>

#include "tests/equipment/failure.h"
#include "tests/equipment/file_bytes.h"
#include "tests/equipment/text.h"
#include "tests/equipment/wait_until.h"

// One entry of ctest: a test program with its arguments.
struct Suite {
    std::string name;
    driver::Milliseconds limit{0};  // for each test
    std::wstring program;
    std::string filter = "*";  // which of the program's tests
    std::vector<std::string> arguments;
};

// But for those that begin with "#".
inline std::vector<std::string> LinesOf(const std::wstring& path) {
    std::istringstream text(driver::ReadFileBytes(path));
    std::vector<std::string> lines;
    for (std::string line; std::getline(text, line);) {
        if (line.ends_with('\r')) line.pop_back();
        if (!line.empty() && !line.starts_with('#')) lines.push_back(line);
    }
    return lines;
}

inline constexpr char kFilter[] = "--gtest_filter=";

// A line is name, seconds, program and arguments, with tabs between them. `folder` ends in a backslash.
inline Suite ReadSuite(const std::wstring& folder, const std::string& line) {
    std::istringstream text(line);
    Suite suite;
    std::string seconds;
    std::string program;
    if (!std::getline(text, suite.name, '\t') || !std::getline(text, seconds, '\t') ||
        !std::getline(text, program, '\t'))
        throw driver::Failure("no suite: " + line);
    suite.limit = std::chrono::seconds(std::stoul(seconds));
    std::ranges::replace(program, '/', '\\');
    suite.program = folder + driver::FromUtf8(program);
    for (std::string argument; std::getline(text, argument, '\t');) {
        if (argument.starts_with(kFilter)) {
            suite.filter = argument.substr(std::string(kFilter).size());
        } else {
            suite.arguments.push_back(argument);
        }
    }
    return suite;
}

inline std::vector<Suite> ReadSuites(const std::wstring& folder) {
    std::vector<Suite> suites;
    for (const std::string& line : LinesOf(folder + L"suites.txt")) suites.push_back(ReadSuite(folder, line));
    return suites;
}
