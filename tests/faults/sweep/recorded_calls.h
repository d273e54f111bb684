// The calls of each scenario, recorded once in this process.
#pragma once

#include "tests/faults/harness/scenario.h"

#include <string>
#include <vector>

struct RecordedCalls {
    std::vector<CallKey> calls;
    std::vector<std::string> differences;  // from the usual facts
};

[[nodiscard]] const RecordedCalls& CallsOf(const Scenario& scenario);
