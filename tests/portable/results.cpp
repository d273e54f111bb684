#include "tests/portable/results.h"

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <span>

#include "tests/equipment/failure.h"
#include "tests/equipment/text.h"

namespace {

// The first failures say the most; one that prints without end must not hide the others.
constexpr int kFailuresInFull = 40;
constexpr std::size_t kLongestOutput = 20'000;

// As the outcomes come, and of one width.
constexpr const char* kWords[] = {"passed  ", "FAILED  ", "skipped ", "CRASHED ", "TOO LONG", "NOT RUN "};

// A test and what came of it.
std::string Line(const TestResult& test, const std::string& suite = {}) {
    return kWords[static_cast<int>(test.outcome)] + (' ' + suite) + test.name + "\n";
}

bool IsGood(const SuiteResult& suite) {
    return suite.problems.empty() &&
           std::none_of(suite.tests.begin(), suite.tests.end(),
                        [](const TestResult& test) { return IsWrong(test.outcome); });
}

// "3 of 4 tests passed, 1 skipped, " and the time, of one suite or several.
std::string Counts(std::span<const SuiteResult> suites, const std::string& of) {
    int tests = 0;
    int passed = 0;
    int skipped = 0;
    double seconds = 0;
    for (const SuiteResult& suite : suites) {
        seconds += suite.seconds;
        for (const TestResult& test : suite.tests) {
            ++tests;
            if (test.outcome == Outcome::Passed) ++passed;
            if (test.outcome == Outcome::Skipped) ++skipped;
        }
    }
    char text[128] = {};
    std::snprintf(text, sizeof text, "%d of %d tests passed, %d skipped%s, %.1f s", passed, tests, skipped,
                  of.c_str(), seconds);
    return text;
}

// Most programs print UTF-8; the system's own messages come in its code page.
std::string AsUtf8(const std::string& bytes) {
    const int size = static_cast<int>(bytes.size());
    const auto convert = [&](UINT codePage, DWORD flags, std::wstring& text) {
        return ::MultiByteToWideChar(codePage, flags, bytes.data(), size, text.data(),
                                     static_cast<int>(text.size()));
    };
    std::wstring text(bytes.size(), L'\0');  // no character has less than a byte
    int length = convert(CP_UTF8, MB_ERR_INVALID_CHARS, text);
    if (length == 0) length = convert(CP_ACP, 0, text);
    return driver::ToUtf8(text.substr(0, static_cast<std::size_t>(length)));
}

// The failures in full, as far as there is room.
std::string Failures(const SuiteResult& suite, int& count) {
    std::string text;
    for (const std::string& problem : suite.problems)
        text += "\nPROBLEM in " + suite.name + ": " + problem + "\n";
    for (const TestResult& test : suite.tests) {
        if (!IsWrong(test.outcome) || ++count > kFailuresInFull) continue;
        text += "\n----- " + Line(test, suite.name + ' ');
        text += AsUtf8(test.output.substr(0, kLongestOutput));
        if (test.output.size() > kLongestOutput) text += "...\n";
    }
    return text;
}

std::string Text(const Report& report) {
    std::string text = "Talvenor " + report.version + ": results of the tests\n\n";
    for (const auto& [name, value] : report.system) text += name + ": " + value + "\n";
    text.append("\n").append(Summary(report)).append("\n");
    for (const std::string& problem : report.problems) text += "PROBLEM: " + problem + "\n";
    int failures = 0;
    for (const SuiteResult& suite : report.suites) text += Failures(suite, failures);
    if (failures > kFailuresInFull)
        text.append("\n").append(std::to_string(failures - kFailuresInFull)).append(" more, by name only\n");
    text += "\n===== Left out, and why\n";
    for (const LeftOut& one : report.leftOut) text += one.pattern + ": " + one.reason + "\n";
    std::string skipped = "\n===== Why a test was skipped\n";
    for (const SuiteResult& suite : report.suites) {
        text += "\n===== " + suite.name + ": " + Summary(suite) + "\n";
        for (const TestResult& test : suite.tests) {
            text += Line(test);
            if (test.outcome == Outcome::Skipped) skipped += test.name + ": " + AsUtf8(test.output);
        }
    }
    return text + skipped;
}

}  // namespace

bool IsWrong(Outcome outcome) {
    return outcome != Outcome::Passed && outcome != Outcome::Skipped;
}

bool IsGood(const Report& report) {
    return report.problems.empty() && report.suites.size() == report.suitesInAll &&
           std::all_of(report.suites.begin(), report.suites.end(),
                       [](const SuiteResult& suite) { return IsGood(suite); });
}

std::string Summary(const SuiteResult& suite) {
    if (suite.tests.empty() && suite.problems.empty()) return "all of it left out";
    return Counts({&suite, 1}, "") + (IsGood(suite) ? "" : ", NOT GOOD");
}

std::string Summary(const Report& report) {
    const std::string suites = ", in " + std::to_string(report.suites.size()) + " of " +
                               std::to_string(report.suitesInAll) + " suites";
    return (IsGood(report) ? "GOOD: " : "NOT GOOD: ") + Counts(report.suites, suites);
}

void WriteReport(const Report& report, const std::wstring& path) {
    std::string text = Text(report);
    std::erase(text, '\r');
    // Every Notepad shows it well: with its mark and, as a text file, with line ends of Windows.
    std::ofstream file{std::filesystem::path(path)};
    if (!(file << "\xEF\xBB\xBF" << text << std::flush))
        throw driver::Failure("results.txt cannot be written");
}
