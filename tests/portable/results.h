// results.txt: what one person sends back and another reads. It grows with each suite, so that whoever ends
// the tests early has what there is, and its last line says what came of all.
#pragma once
#include <windows.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "tests/equipment/failure.h"
#include "tests/equipment/text.h"
#include "tests/portable/test_run.h"

struct SuiteResult {
    std::string name;
    std::vector<TestResult> tests;
    std::vector<std::string> problems;  // what is wrong beside the tests
    double seconds = 0;
};

// Of one suite or several.
struct Counts {
    std::size_t tests = 0;
    std::size_t passed = 0;
    std::size_t skipped = 0;
    std::size_t problems = 0;
    double seconds = 0;

    void Add(const SuiteResult& suite) {
        for (const TestResult& test : suite.tests) {
            ++tests;
            if (test.outcome == Outcome::Passed) ++passed;
            if (test.outcome == Outcome::Skipped) ++skipped;
        }
        problems += suite.problems.size();
        seconds += suite.seconds;
    }
    [[nodiscard]] bool AreGood() const { return passed + skipped == tests && problems == 0; }
    // "3 of 4 tests passed, 1 skipped", what they are of, and the time.
    [[nodiscard]] std::string Text(const std::string& of = {}) const {
        char time[32] = {};
        std::snprintf(time, sizeof time, ", %.1f s", seconds);
        return std::to_string(passed) + " of " + std::to_string(tests) + " tests passed, " +
               std::to_string(skipped) + " skipped" + of + time;
    }
};

class Results {
public:
    // Begins the file anew. Throws driver::Failure, as whatever writes to it, when it cannot be written.
    explicit Results(const std::wstring& path) : m_file(std::filesystem::path(path)) {
        Write("\xEF\xBB\xBF");  // every Notepad shows it well, with its mark and as a text file
    }

    void Write(std::string text) {
        std::erase(text, '\r');
        if (!(m_file << text << std::flush)) throw driver::Failure("results.txt cannot be written");
    }
    // Returns what came of the suite, in one line.
    std::string Add(const SuiteResult& suite) {
        Counts counts;
        counts.Add(suite);
        m_all.Add(suite);
        ++m_suites;
        const bool isLeftOut = counts.tests == 0 && counts.problems == 0;
        const std::string summary =
            isLeftOut ? "all of it left out" : counts.Text() + (counts.AreGood() ? "" : ", NOT GOOD");
        std::string text = "\n===== " + suite.name + ": " + summary + "\n";
        for (const std::string& problem : suite.problems)
            text += "PROBLEM in " + suite.name + ": " + problem + "\n";
        for (const TestResult& test : suite.tests) {
            text += kWords[static_cast<int>(test.outcome)] + (' ' + test.name) + "\n";
            if (test.outcome != Outcome::Passed) text += AsUtf8(test.output.substr(0, kLongestOutput)) + "\n";
        }
        Write(text);
        return summary;
    }
    // Whether all of so many suites have run, and nothing is wrong.
    [[nodiscard]] bool AreGood(std::size_t suites) const { return m_suites == suites && m_all.AreGood(); }
    [[nodiscard]] std::string Summary(std::size_t suites) const {
        const std::string of =
            ", in " + std::to_string(m_suites) + " of " + std::to_string(suites) + " suites";
        return (AreGood(suites) ? "GOOD: " : "NOT GOOD: ") + m_all.Text(of);
    }

private:
    // As the outcomes come, and of one width.
    static constexpr const char* kWords[] = {"passed  ", "FAILED  ", "skipped ",
                                             "CRASHED ", "TOO LONG", "NOT RUN "};
    // A test that prints without end must not hide the others.
    static constexpr std::size_t kLongestOutput = 20'000;

    // Most programs print UTF-8; the system's own messages come in its code page.
    static std::string AsUtf8(const std::string& bytes) {
        const int size = static_cast<int>(bytes.size());
        std::wstring text(bytes.size(), L'\0');  // no character has less than a byte
        const auto convert = [&](UINT codePage, DWORD flags) {
            return ::MultiByteToWideChar(codePage, flags, bytes.data(), size, text.data(), size);
        };
        int length = convert(CP_UTF8, MB_ERR_INVALID_CHARS);
        if (length == 0) length = convert(CP_ACP, 0);
        return driver::ToUtf8(text.substr(0, static_cast<std::size_t>(length)));
    }

    std::ofstream m_file;
    Counts m_all;
    std::size_t m_suites = 0;
};
