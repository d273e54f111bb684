// The process in which the program runs, and in which calls of it fail, one run after another. A run may end
// it.
//
//   --record SCENARIO          writes the calls and what differs from the usual into the temporary folder
//   --sweep SCENARIO FIRST     fails that folder's calls from number FIRST on, with a verdict on each
//
// The temporary folder is this process's own, so that what a run leaves behind that its process does not
// survive goes with it. What it exchanges with the process that started it are files of lines there.
#pragma once

#include "tests/faults/harness/call_watch.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

// Works as such a process when the command line asks for one, and returns its exit code.
[[nodiscard]] std::optional<int> RunAsSweepProcess(int argc, char** argv);

inline constexpr char kRecordArgument[] = "--record ";
inline constexpr char kSweepArgument[] = "--sweep ";
inline constexpr int kDone = 0;
inline constexpr int kProcessSpent = 10;  // the last run left something behind: go on in a new process

inline constexpr char kCallsFile[] = "calls";              // that were recorded or are to fail, in order
inline constexpr char kDifferencesFile[] = "differences";  // of a recorded run from the usual
// One for each run that took place, as it ended, so that a run without is one that its process did not
// survive: nothing, or what is wrong, or that the call was not made.
inline constexpr char kVerdictsFile[] = "verdicts";
inline constexpr char kNotReached[] = "not reached";

// Adds a text, on a line of its own whatever it holds.
inline constexpr char kLineBreakInText = '\x1F';
inline void AppendLine(const std::filesystem::path& file, std::string text) {
    std::replace(text.begin(), text.end(), '\n', kLineBreakInText);
    // Opened and closed for each line: what comes next may be the end of this process.
    std::ofstream(file, std::ios::binary | std::ios::app) << text << '\n';
}

// No file has no lines.
[[nodiscard]] inline std::vector<std::string> ReadLines(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);) {
        std::replace(line.begin(), line.end(), kLineBreakInText, '\n');
        lines.push_back(line);
    }
    return lines;
}

inline void WriteCalls(const std::filesystem::path& file, const std::vector<CallKey>& calls) {
    std::ofstream out(file, std::ios::binary);
    for (const CallKey& call : calls) out << call.nth << ' ' << call.label << '\n';
}

[[nodiscard]] inline std::vector<CallKey> ReadCalls(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    std::vector<CallKey> calls;
    CallKey call;
    while (in >> call.nth && in.get() && std::getline(in, call.label)) calls.push_back(call);
    return calls;
}
