// Makes every call of a scenario fail, one in each run, in processes of their own.
#pragma once

#include "tests/faults/harness/scenario.h"

#include <set>
#include <string>
#include <vector>

struct Finding {
    CallKey call;
    std::string text;
};

struct SweepResult {
    std::size_t recorded = 0;  // calls that can fail, in the run in which none does
    std::size_t failed = 0;    // of these, made to fail
    std::size_t runs = 0;
    std::size_t endedTheProgram = 0;  // runs that ended the process as they must: without memory
    std::vector<CallKey> notReached;
    std::vector<Finding> findings;
};

// The calls that count in a run in which none fails. The scenario's usual facts are checked; what differs comes
// back in `differences`.
[[nodiscard]] std::vector<CallKey> RecordCalls(const Scenario& scenario,
                                               std::vector<std::string>& differences);

[[nodiscard]] SweepResult Sweep(const Scenario& scenario, const std::vector<CallKey>& calls);
