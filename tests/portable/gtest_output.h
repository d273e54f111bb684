// Takes the output of a GoogleTest program apart, line by line as it comes.
#pragma once
#include <string>
#include <string_view>
#include <vector>

enum class Outcome { Passed, Failed, Skipped, Crashed, TooLong, NotRun };

struct TestResult {
    std::string name;
    Outcome outcome = Outcome::NotRun;
    std::string output;  // all that the test printed
};

class GtestOutput {
public:
    // One line, without its end.
    void Take(std::string_view line);

    [[nodiscard]] const std::vector<TestResult>& Results() const noexcept { return m_results; }
    // The test that runs now; empty between two tests.
    [[nodiscard]] const std::string& Running() const noexcept { return m_running.name; }
    // The program has ended: a test that was still running did not come to its end.
    void End(Outcome ofTheRunningTest);

private:
    [[nodiscard]] bool Ends(std::string_view line, std::string_view mark) const;
    void Finish(Outcome outcome);

    std::vector<TestResult> m_results;
    TestResult m_running;
};

// The names in the answer to --gtest_list_tests.
std::vector<std::string> ListedTests(const std::vector<std::string>& lines);
