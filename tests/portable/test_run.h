// One test in a process of its own: a test that crashes or hangs costs itself and no other.
#pragma once
#include <windows.h>

#include <cstdio>
#include <filesystem>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "tests/equipment/failure.h"
#include "tests/equipment/file_bytes.h"
#include "tests/equipment/program.h"
#include "tests/equipment/text.h"
#include "tests/portable/interruption.h"
#include "tests/portable/suite_list.h"

enum class Outcome { Passed, Failed, Skipped, Crashed, TooLong, NotRun };

struct TestResult {
    std::string name;
    Outcome outcome = Outcome::NotRun;
    std::string output;   // what it printed, with more for the reader where it crashed or hung
    int leftRunning = 0;  // processes

    [[nodiscard]] bool IsWrong() const { return outcome != Outcome::Passed && outcome != Outcome::Skipped; }
};

struct ProcessEnd {
    std::optional<DWORD> code;  // none: it ran too long, or a person has had enough, and was ended
    std::string output;         // with its errors
    int leftRunning = 0;        // processes that it had started and left behind; they are ended too
};

// Throws driver::Failure when the program cannot be started.
inline ProcessEnd RunProcess(const std::wstring& program, const std::vector<std::string>& arguments,
                             driver::Milliseconds limit) {
    // What has been ended takes a moment to be gone.
    constexpr driver::Milliseconds kGoneLimit{10'000};
    // Each has a name of its own: a scanner may hold the last one for a moment. Gone when it is closed.
    static int s_count = 0;
    const auto path = std::filesystem::temp_directory_path() / ("output-" + std::to_string(++s_count));
    const UniqueHandle output =
        driver::OpenShared(path, GENERIC_WRITE, CREATE_ALWAYS, FILE_FLAG_DELETE_ON_CLOSE);
    driver::StartOptions options{.output = output.Get()};
    // The arguments are names and options of ours: none has a quotation mark in it or ends in a backslash.
    for (const std::string& argument : arguments)
        options.arguments += L" \"" + driver::FromUtf8(argument) + L'"';
    const driver::Program running(program, options);
    const auto allGone = [&] { return running.Running() == 0; };
    ProcessEnd end;
    const auto isOver = [&] { return running.HasEnded() || Interruption::HasCome(); };
    if (driver::WaitUntil(isOver, limit)) end.code = running.WaitForExit(driver::Milliseconds(0));
    if (end.code && !driver::WaitUntil(allGone, kGoneLimit)) end.leftRunning = running.Running();
    running.EndTree();
    if (!driver::WaitUntil(allGone, kGoneLimit))
        throw driver::Failure("a process of the tests cannot be ended");
    end.output = driver::ReadFileBytes(path);
    return end;
}

inline Outcome OutcomeOf(const ProcessEnd& end) {
    // How a test program ends after a test that failed; anything else, other than 0, is its own trouble.
    constexpr DWORD kFailed = 1;
    if (!end.code) return Outcome::TooLong;
    if (*end.code == kFailed) return Outcome::Failed;
    if (*end.code != 0) return Outcome::Crashed;
    // What GoogleTest says in the end; the test may have printed something without ending its line.
    if (end.output.find("[  SKIPPED ] 1 test.") != std::string::npos) return Outcome::Skipped;
    return end.output.find("[  PASSED  ] 1 test.") != std::string::npos ? Outcome::Passed : Outcome::NotRun;
}

// The names of the suite's tests but for those that are left out. Throws driver::Failure when the program
// cannot be started or does not answer.
inline std::vector<std::string> TestsOf(const Suite& suite, const std::vector<std::string>& leftOut) {
    constexpr driver::Milliseconds kLimit{60'000};
    std::string filter = kFilter + suite.filter + "-";
    for (const std::string& line : leftOut) filter += line.substr(0, line.find(": ")) + ':';
    const ProcessEnd end = RunProcess(suite.program, {"--gtest_list_tests", filter}, kLimit);
    if (end.code != DWORD{0})
        throw driver::Failure(driver::ToUtf8(suite.program) + " does not list its tests: " + end.output);
    // "Suite." and below it, indented, "Name", either with a comment behind it.
    const auto upToBlank = [](const std::string& text) { return text.substr(0, text.find_first_of(" \r")); };
    std::vector<std::string> names;
    std::istringstream lines(end.output);
    std::string group;
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("  ")) {
            names.push_back(group + upToBlank(line.substr(2)));
        } else {
            group = upToBlank(line);
        }
    }
    return names;
}

// Throws driver::Failure when the program cannot be started.
inline TestResult RunTest(const Suite& suite, const std::string& name) {
    std::vector<std::string> arguments = suite.arguments;
    arguments.insert(arguments.end(), {"--gtest_brief=1", kFilter + name});
    const ProcessEnd end = RunProcess(suite.program, arguments, suite.limit);
    TestResult result{name, OutcomeOf(end), end.output.substr(0, end.output.find("[==========] ")),
                      end.leftRunning};
    char more[64] = {};
    if (result.outcome == Outcome::Crashed) {
        std::snprintf(more, sizeof more, "the program ended with 0x%08lX\n", *end.code);
    } else if (result.outcome == Outcome::TooLong) {
        std::snprintf(more, sizeof more, "not over after %lld s\n", suite.limit.count() / 1000);
    }
    result.output += more;
    return result;
}
