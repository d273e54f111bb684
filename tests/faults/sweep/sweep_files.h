// What the process that sweeps and the one that started it exchange: files of lines in a folder.
#pragma once

#include "tests/faults/harness/call_watch.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

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
