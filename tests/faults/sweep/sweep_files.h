// What the process that sweeps and the one that started it exchange: files of lines in a folder.
#pragma once

#include "tests/faults/harness/call_watch.h"

#include <filesystem>
#include <string>
#include <vector>

inline constexpr char kCallsFile[] = "calls";              // that were recorded or are to fail, in order
inline constexpr char kDifferencesFile[] = "differences";  // of a recorded run from the usual
// One for each run that took place, as it ended, so that a run without is one that its process did not
// survive: nothing, or what is wrong, or that the call was not made.
inline constexpr char kVerdictsFile[] = "verdicts";
inline constexpr char kNotReached[] = "not reached";

// Texts, each on a line of its own whatever it holds. No file has no lines.
void AppendLine(const std::filesystem::path& file, std::string text);
[[nodiscard]] std::vector<std::string> ReadLines(const std::filesystem::path& file);

void WriteCalls(const std::filesystem::path& file, const std::vector<CallKey>& calls);
[[nodiscard]] std::vector<CallKey> ReadCalls(const std::filesystem::path& file);
