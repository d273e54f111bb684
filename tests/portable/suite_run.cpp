#include "tests/portable/suite_run.h"

#include <algorithm>
#include <chrono>
#include <cstdio>

#include "tests/equipment/failure.h"
#include "tests/equipment/text.h"
#include "tests/portable/interruption.h"
#include "tests/portable/test_process.h"

namespace {

constexpr driver::Milliseconds kListLimit{60'000};
// A command line has room for 32,767 characters, and there are other things in it.
constexpr std::size_t kLongestFilter = 30'000;
// How a test program ends after tests that failed; anything else, other than 0, is its own trouble.
constexpr DWORD kSomeFailed = 1;

// As many of the names as a command line takes, as a filter.
std::string FilterOf(const std::vector<std::string>& names) {
    std::string filter = "--gtest_filter=";
    for (const std::string& name : names) {
        if (filter.size() + name.size() > kLongestFilter) break;
        filter.append(name).append(1, ':');
    }
    filter.pop_back();
    return filter;
}

std::string Code(DWORD code) {
    char text[16] = {};
    std::snprintf(text, sizeof text, code > 0xFFFF ? "0x%08lX" : "%lu", static_cast<unsigned long>(code));
    return text;
}

class Runner {
public:
    Runner(const Suite& suite, const std::wstring& program, const std::vector<std::string>& names,
           const std::function<void(std::size_t)>& progress)
        : m_suite(suite), m_program(program), m_progress(progress), m_remaining(names) {
        m_result.name = suite.name;
    }

    SuiteResult Run() {
        while (!m_remaining.empty()) {
            const std::size_t before = m_remaining.size();
            RunRemaining();
            if (IsInterrupted()) {
                m_result.problems.push_back("interrupted");
                break;
            }
            if (m_remaining.size() == before) {
                m_result.problems.push_back(std::to_string(before) + " tests could not be run");
                for (const std::string& name : m_remaining)
                    m_result.tests.push_back({name, Outcome::NotRun, {}});
                break;
            }
        }
        return std::move(m_result);
    }

private:
    void RunRemaining() {
        std::vector<std::string> arguments = m_suite.arguments;
        arguments.push_back(FilterOf(m_remaining));
        GtestOutput output;
        std::vector<std::string> outside;
        const ProcessEnd end =
            TestProcess(m_program, arguments)
                .Run(driver::Milliseconds(m_suite.limitSeconds * 1000), [&](const auto& line) {
                    if (output.Running().empty()) outside.push_back(line);
                    output.Take(line);
                    m_progress(m_result.tests.size() + output.Results().size());
                });
        const bool inATest = !output.Running().empty();
        output.End(end.code ? Outcome::Crashed : Outcome::TooLong);
        Take(output.Results());
        Note(end, inATest, output, outside);
    }

    void Take(const std::vector<TestResult>& results) {
        for (const TestResult& test : results) {
            m_result.tests.push_back(test);
            std::erase(m_remaining, test.name);
        }
    }

    void Note(const ProcessEnd& end, bool inATest, const GtestOutput& output,
              const std::vector<std::string>& outside) {
        if (end.leftRunning != 0)
            m_result.problems.push_back(std::to_string(end.leftRunning) + " processes were left running");
        if (!end.code) {
            m_result.problems.push_back("not over after " + std::to_string(m_suite.limitSeconds) + " s");
        } else if (inATest) {
            m_result.tests.back().output += "the program ended with " + Code(*end.code) + "\n";
        } else if (*end.code != (AnyFailed(output) ? kSomeFailed : 0)) {
            m_result.problems.push_back("the program ended with " + Code(*end.code) + " outside any test");
            for (const std::string& line : outside) m_result.problems.push_back("  " + line);
        }
    }

    static bool AnyFailed(const GtestOutput& output) {
        return std::any_of(output.Results().begin(), output.Results().end(),
                           [](const TestResult& test) { return test.outcome == Outcome::Failed; });
    }

    const Suite& m_suite;
    const std::wstring& m_program;
    const std::function<void(std::size_t)>& m_progress;
    std::vector<std::string> m_remaining;
    SuiteResult m_result;
};

}  // namespace

std::vector<std::string> TestsOf(const std::wstring& program, const std::string& filter) {
    std::vector<std::string> arguments = {"--gtest_list_tests"};
    if (!filter.empty()) arguments.push_back("--gtest_filter=" + filter);
    std::vector<std::string> lines;
    const ProcessEnd end =
        TestProcess(program, arguments).Run(kListLimit, [&](const auto& line) { lines.push_back(line); });
    if (!end.code || *end.code != 0)
        throw driver::Failure(driver::ToUtf8(program) + " does not list its tests");
    return ListedTests(lines);
}

SuiteResult RunSuite(const Suite& suite, const std::wstring& program, const std::vector<std::string>& names,
                     const std::function<void(std::size_t)>& progress) {
    const auto begin = std::chrono::steady_clock::now();
    SuiteResult result = Runner(suite, program, names, progress).Run();
    result.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
    return result;
}
