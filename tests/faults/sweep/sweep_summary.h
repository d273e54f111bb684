// The figures of all sweeps, printed when the tests are over.
#pragma once

#include "tests/faults/sweep/sweep.h"

#include <string>

void AddToSummary(const std::string& scenario, std::size_t recorded, const SweepResult& result);
void PrintSweepSummary();
