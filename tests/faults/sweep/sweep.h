// Records the calls of a scenario, and makes each of them fail, one in each run. The program runs in
// processes of their own, for a run may end its process.
#pragma once

#include "tests/faults/harness/scenario.h"

#include <optional>
#include <string>
#include <vector>

struct RecordedCalls {
    std::vector<std::string> calls;
    std::string differences;  // from the usual facts when nothing fails, one a line
};
// Recorded once in this process.
[[nodiscard]] const RecordedCalls& CallsOf(const Scenario& scenario);

// For each of the calls what is wrong with the run in which it fails: nothing, what differs from what the
// rule allows, kNotReached, or how the process ended that did not survive it.
[[nodiscard]] std::vector<std::string> Sweep(const Scenario& scenario, const std::vector<std::string>& calls);
inline constexpr char kNotReached[] = "the call was not made again";
[[nodiscard]] std::string EndOfProcess(DWORD exitCode);

// Works as such a process when the command line asks for one, and returns its exit code. `--sweep SCENARIO`
// fails the calls that a file of the temporary folder lists, from the first without a verdict on; when there
// is no such file, it records them there.
[[nodiscard]] std::optional<int> RunAsSweepProcess(int argc, char** argv);
