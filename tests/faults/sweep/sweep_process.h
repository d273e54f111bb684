// The process in which the program runs, and in which calls of it fail, one run after another. A run may end
// it.
//
//   --record SCENARIO          writes the calls and what differs from the usual into the temporary folder
//   --sweep SCENARIO FIRST     fails that folder's calls from number FIRST on, with a verdict on each
//
// The temporary folder is this process's own, so that what a run leaves behind that its process does not
// survive goes with it.
#pragma once

#include <optional>

// Works as such a process when the command line asks for one, and returns its exit code.
[[nodiscard]] std::optional<int> RunAsSweepProcess(int argc, char** argv);

inline constexpr char kRecordArgument[] = "--record ";
inline constexpr char kSweepArgument[] = "--sweep ";
inline constexpr int kDone = 0;
inline constexpr int kProcessSpent = 10;  // the last run left something behind: go on in a new process
