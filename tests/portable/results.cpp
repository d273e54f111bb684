#include "tests/portable/results.h"

#include <windows.h>

#include <algorithm>
#include <cstdio>

#include "tests/equipment/file_bytes.h"
#include "tests/equipment/text.h"

namespace {

// The first failures say the most; one that prints without end must not hide the others.
constexpr int kFailuresInFull = 40;
constexpr std::size_t kLongestOutput = 20'000;

const char* Word(Outcome outcome) {
    switch (outcome) {
    case Outcome::Passed: return "passed  ";
    case Outcome::Failed: return "FAILED  ";
    case Outcome::Skipped: return "skipped ";
    case Outcome::Crashed: return "CRASHED ";
    case Outcome::TooLong: return "TOO LONG";
    case Outcome::NotRun: break;
    }
    return "NOT RUN ";
}

bool IsWrong(Outcome outcome) {
    return outcome != Outcome::Passed && outcome != Outcome::Skipped;
}

std::size_t Count(const SuiteResult& suite, Outcome outcome) {
    return static_cast<std::size_t>(
        std::count_if(suite.tests.begin(), suite.tests.end(),
                      [&](const TestResult& test) { return test.outcome == outcome; }));
}

bool IsGood(const SuiteResult& suite) {
    return suite.problems.empty() &&
           std::none_of(suite.tests.begin(), suite.tests.end(),
                        [](const TestResult& test) { return IsWrong(test.outcome); });
}

std::string Seconds(double seconds) {
    char text[32] = {};
    std::snprintf(text, sizeof text, "%.1f s", seconds);
    return text;
}

bool IsUtf8(const std::string& bytes) {
    return bytes.empty() || ::MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, bytes.data(),
                                                  static_cast<int>(bytes.size()), nullptr, 0) != 0;
}

// Most programs print UTF-8; the system's own messages come in its code page.
std::string AsUtf8(const std::string& bytes) {
    if (IsUtf8(bytes)) return bytes;
    const int size = static_cast<int>(bytes.size());
    std::wstring text(
        static_cast<std::size_t>(::MultiByteToWideChar(CP_ACP, 0, bytes.data(), size, nullptr, 0)), L'\0');
    ::MultiByteToWideChar(CP_ACP, 0, bytes.data(), size, text.data(), static_cast<int>(text.size()));
    return driver::ToUtf8(text);
}

void AddSystem(std::string& text, const Report& report) {
    text += "Talvenor " + report.version + ": results of the tests\n\n";
    for (const auto& [name, value] : report.system) text += name + ": " + value + "\n";
    text.append("\n").append(Summary(report)).append("\n");
    for (const std::string& problem : report.problems) text += "PROBLEM: " + problem + "\n";
}

void AddFailures(std::string& text, const Report& report) {
    int count = 0;
    for (const SuiteResult& suite : report.suites) {
        for (const std::string& problem : suite.problems)
            text += "\nPROBLEM in " + suite.name + ": " + problem + "\n";
        for (const TestResult& test : suite.tests) {
            if (!IsWrong(test.outcome) || ++count > kFailuresInFull) continue;
            text += "\n----- " + std::string(Word(test.outcome)) + " " + suite.name + " " + test.name + "\n";
            text += AsUtf8(test.output.substr(0, kLongestOutput));
            if (test.output.size() > kLongestOutput) text += "...\n";
        }
    }
    if (count > kFailuresInFull)
        text.append("\n")
            .append(std::to_string(count - kFailuresInFull))
            .append(" more, below by name only\n");
}

void AddLeftOut(std::string& text, const Report& report) {
    text += "\n===== Left out, and why\n";
    for (const LeftOut& one : report.leftOut) text += one.pattern + ": " + one.reason + "\n";
}

void AddTests(std::string& text, const Report& report) {
    for (const SuiteResult& suite : report.suites) {
        text += "\n===== " + suite.name + ": " + Summary(suite) + "\n";
        for (const TestResult& test : suite.tests)
            text += std::string(Word(test.outcome)) + " " + test.name + "\n";
    }
    text += "\n===== Why a test was skipped\n";
    for (const SuiteResult& suite : report.suites) {
        for (const TestResult& test : suite.tests)
            if (test.outcome == Outcome::Skipped) text += test.name + ": " + AsUtf8(test.output);
    }
}

// Every Notepad shows it well: with its mark and with line ends of Windows.
std::string ForWindows(const std::string& text) {
    std::string bytes = "\xEF\xBB\xBF";
    for (const char byte : text) {
        if (byte == '\n') bytes += '\r';
        if (byte != '\r') bytes += byte;
    }
    return bytes;
}

}  // namespace

bool IsGood(const Report& report) {
    return report.problems.empty() && report.suites.size() == report.suitesInAll &&
           std::all_of(report.suites.begin(), report.suites.end(),
                       [](const SuiteResult& suite) { return IsGood(suite); });
}

std::string Summary(const SuiteResult& suite) {
    if (suite.tests.empty() && suite.problems.empty()) return "all of it left out";
    std::string text = std::to_string(Count(suite, Outcome::Passed)) + " of " +
                       std::to_string(suite.tests.size()) + " passed";
    const std::size_t skipped = Count(suite, Outcome::Skipped);
    if (skipped != 0) text += ", " + std::to_string(skipped) + " skipped";
    if (!IsGood(suite)) text += ", NOT GOOD";
    return text + " (" + Seconds(suite.seconds) + ")";
}

std::string Summary(const Report& report) {
    std::size_t tests = 0;
    std::size_t passed = 0;
    std::size_t skipped = 0;
    double seconds = 0;
    for (const SuiteResult& suite : report.suites) {
        tests += suite.tests.size();
        passed += Count(suite, Outcome::Passed);
        skipped += Count(suite, Outcome::Skipped);
        seconds += suite.seconds;
    }
    return std::string(IsGood(report) ? "GOOD: " : "NOT GOOD: ") + std::to_string(passed) + " of " +
           std::to_string(tests) + " tests passed, " + std::to_string(skipped) + " skipped, in " +
           std::to_string(report.suites.size()) + " of " + std::to_string(report.suitesInAll) + " suites, " +
           Seconds(seconds);
}

void WriteReport(const Report& report, const std::wstring& path) {
    std::string text;
    AddSystem(text, report);
    AddFailures(text, report);
    AddLeftOut(text, report);
    AddTests(text, report);
    driver::WriteFileBytes(path, ForWindows(text));
}
