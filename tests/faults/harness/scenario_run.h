// Runs a scenario once, in this process.
#pragma once

#include "tests/faults/harness/scenario.h"

#include <optional>
#include <string>
#include <vector>

struct ScenarioRun {
    Facts facts;
    std::vector<CallKey> calls;   // that counted, in their order
    bool reached = false;         // the call that was to fail was made
    bool processIsSpent = false;  // something of the program is left that no other run should meet
};

// With `failing`, that call fails. A program that hangs has the fact "hang".
[[nodiscard]] ScenarioRun RunScenario(const Scenario& scenario, const std::optional<CallKey>& failing);
