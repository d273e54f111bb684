// The process in which the program runs, and in which calls of it fail, one run after another. A run may end
// it.
//
//   --record SCENARIO FOLDER          writes the calls and what differs from the usual into the folder
//   --sweep SCENARIO FOLDER FIRST     fails the folder's calls from number FIRST on, with a verdict on each
#pragma once

#include <optional>

// Works as such a process when the command line asks for one, and returns its exit code.
[[nodiscard]] std::optional<int> RunAsSweepProcess(int argc, char** argv);

inline constexpr char kRecordArgument[] = "--record";
inline constexpr char kSweepArgument[] = "--sweep";
inline constexpr int kDone = 0;
inline constexpr int kProcessSpent = 10;  // the last run left something behind: go on in a new process
