// The process in which the calls of a scenario fail, one run after another. A run may end it.
#pragma once

#include <optional>

// Works as a sweeping process when the command line asks for one, and gives its exit code.
[[nodiscard]] std::optional<int> RunAsSweepProcess(int argc, char** argv);

inline constexpr char kSweepArgument[] = "--sweep-process";
inline constexpr int kSweptAll = 0;
inline constexpr int kProcessSpent = 10;  // the last run left something behind: go on in a new process
inline constexpr int kRunTookTooLong = 124;
