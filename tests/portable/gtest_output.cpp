#include "tests/portable/gtest_output.h"

#include <utility>

namespace {

constexpr std::string_view kBegins = "[ RUN      ] ";
constexpr std::string_view kPassed = "[       OK ] ";
constexpr std::string_view kFailed = "[  FAILED  ] ";
constexpr std::string_view kSkipped = "[  SKIPPED ] ";

std::string_view UpToBlank(std::string_view text) {
    return text.substr(0, text.find(' '));
}

}  // namespace

void GtestOutput::Take(std::string_view line) {
    if (line.starts_with(kBegins)) {
        End(Outcome::NotRun);
        m_running.name = line.substr(kBegins.size());
        return;
    }
    // The list of failures behind the last test is no news.
    if (m_running.name.empty()) return;
    if (Ends(line, kPassed)) return Finish(Outcome::Passed);
    if (Ends(line, kFailed)) return Finish(Outcome::Failed);
    if (Ends(line, kSkipped)) return Finish(Outcome::Skipped);
    m_running.output.append(line).append(1, '\n');
}

// A test may have printed something without ending its line.
bool GtestOutput::Ends(std::string_view line, std::string_view mark) const {
    const std::string text = std::string(mark) + m_running.name;
    const std::size_t at = line.find(text);
    if (at == std::string_view::npos) return false;
    // Then comes the time, or, after a failure, what the test was given.
    const std::string_view rest = line.substr(at + text.size());
    return rest.starts_with(" (") || rest.starts_with(", where ");
}

void GtestOutput::Finish(Outcome outcome) {
    m_running.outcome = outcome;
    m_results.push_back(std::exchange(m_running, TestResult{}));
}

void GtestOutput::End(Outcome ofTheRunningTest) {
    if (!m_running.name.empty()) Finish(ofTheRunningTest);
}

std::vector<std::string> ListedTests(const std::vector<std::string>& lines) {
    // "Suite." and below it, indented, "Name", either with a comment behind it.
    std::vector<std::string> names;
    std::string suite;
    for (const std::string& line : lines) {
        if (line.starts_with("  ")) {
            names.push_back(suite + std::string(UpToBlank(std::string_view(line).substr(2))));
        } else {
            const std::string_view word = UpToBlank(line);
            suite = word.ends_with('.') ? std::string(word) : std::string();
        }
    }
    return names;
}
