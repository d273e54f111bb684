#include "tests/portable/suite_list.h"

#include <algorithm>
#include <sstream>

#include "tests/equipment/failure.h"
#include "tests/equipment/file_bytes.h"
#include "tests/equipment/text.h"

namespace {

std::vector<std::string> Lines(const std::wstring& path) {
    std::istringstream text(driver::ReadFileBytes(path));
    std::vector<std::string> lines;
    for (std::string line; std::getline(text, line);) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        if (!line.empty() && line.front() != '#') lines.push_back(line);
    }
    return lines;
}

// A line is name, seconds, program and arguments, with tabs between them.
Suite ReadSuite(const std::wstring& folder, const std::string& line) {
    std::istringstream text(line);
    Suite suite;
    std::string seconds;
    std::string program;
    if (!std::getline(text, suite.name, '\t') || !std::getline(text, seconds, '\t') ||
        !std::getline(text, program, '\t'))
        throw driver::Failure("no suite: " + line);
    suite.limit = std::chrono::seconds(std::stoul(seconds));
    std::replace(program.begin(), program.end(), '/', '\\');
    suite.program = folder + driver::FromUtf8(program);
    constexpr std::string_view kFilter = "--gtest_filter=";
    for (std::string argument; std::getline(text, argument, '\t');) {
        if (argument.starts_with(kFilter)) {
            suite.filter = argument.substr(kFilter.size());
        } else {
            suite.arguments.push_back(argument);
        }
    }
    return suite;
}

}  // namespace

std::vector<Suite> ReadSuites(const std::wstring& folder) {
    std::vector<Suite> suites;
    for (const std::string& line : Lines(folder + L"suites.txt")) suites.push_back(ReadSuite(folder, line));
    return suites;
}

std::vector<LeftOut> ReadLeftOut(const std::wstring& folder) {
    std::vector<LeftOut> all;
    for (const std::string& line : Lines(folder + L"left_out.txt")) {
        const std::size_t colon = line.find(": ");
        if (colon == std::string::npos) throw driver::Failure("no name and reason: " + line);
        all.push_back({line.substr(0, colon), line.substr(colon + 2)});
    }
    return all;
}
