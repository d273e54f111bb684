#include "tests/portable/test_run.h"

#include <cstdio>
#include <sstream>

#include "tests/equipment/failure.h"
#include "tests/equipment/text.h"
#include "tests/portable/test_process.h"

namespace {

constexpr driver::Milliseconds kListLimit{60'000};
// How a test program ends after a test that failed; anything else, other than 0, is its own trouble.
constexpr DWORD kFailed = 1;
constexpr char kFilter[] = "--gtest_filter=";

std::string Code(DWORD code) {
    char text[16] = {};
    std::snprintf(text, sizeof text, code > 0xFFFF ? "0x%08lX" : "%lu", static_cast<unsigned long>(code));
    return text;
}

std::string UpToBlank(const std::string& text) {
    return text.substr(0, text.find_first_of(" \r"));
}

Outcome OutcomeOf(const ProcessEnd& end) {
    if (!end.code) return Outcome::TooLong;
    if (*end.code == kFailed) return Outcome::Failed;
    if (*end.code != 0) return Outcome::Crashed;
    // What GoogleTest says in the end; the test may have printed something without ending its line.
    if (end.output.find("[  SKIPPED ] 1 test.") != std::string::npos) return Outcome::Skipped;
    return end.output.find("[  PASSED  ] 1 test.") != std::string::npos ? Outcome::Passed : Outcome::NotRun;
}

}  // namespace

std::vector<std::string> TestsOf(const Suite& suite, const std::vector<LeftOut>& leftOut) {
    std::string filter = kFilter + (suite.filter.empty() ? "*" : suite.filter) + "-";
    for (const LeftOut& one : leftOut) filter += one.pattern + ':';
    const ProcessEnd end = RunProcess(suite.program, {"--gtest_list_tests", filter}, kListLimit);
    if (end.code != DWORD{0})
        throw driver::Failure(driver::ToUtf8(suite.program) + " does not list its tests: " + end.output);
    // "Suite." and below it, indented, "Name", either with a comment behind it.
    std::vector<std::string> names;
    std::istringstream lines(end.output);
    std::string group;
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("  ")) {
            names.push_back(group + UpToBlank(line.substr(2)));
        } else {
            group = UpToBlank(line);
        }
    }
    return names;
}

TestResult RunTest(const Suite& suite, const std::string& name) {
    std::vector<std::string> arguments = suite.arguments;
    arguments.push_back("--gtest_brief=1");
    arguments.push_back(kFilter + name);
    const ProcessEnd end = RunProcess(suite.program, arguments, suite.limit);
    TestResult result{name, OutcomeOf(end), end.output.substr(0, end.output.find("[==========] ")),
                      end.leftRunning};
    if (result.outcome == Outcome::Crashed)
        result.output += "the program ended with " + Code(*end.code) + "\n";
    if (result.outcome == Outcome::TooLong)
        result.output += "not over after " + std::to_string(suite.limit.count() / 1000) + " s\n";
    return result;
}
