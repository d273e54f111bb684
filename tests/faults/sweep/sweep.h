// Records the calls of a scenario, and makes each of them fail, one in each run, in processes of their own.
#pragma once

#include "tests/faults/harness/scenario.h"

#include <string>
#include <vector>

struct RecordedCalls {
    std::vector<CallKey> calls;
    std::vector<std::string> differences;  // from the usual facts
};
// Recorded once in this process.
[[nodiscard]] const RecordedCalls& CallsOf(const Scenario& scenario);

struct Finding {
    CallKey call;
    std::string text;
};

struct SweepResult {
    std::size_t runs = 0;
    std::size_t endedTheProgram = 0;  // runs that ended the process as they must: without memory
    std::vector<CallKey> notReached;
    std::vector<Finding> findings;
};

[[nodiscard]] SweepResult Sweep(const Scenario& scenario, const std::vector<CallKey>& calls);
