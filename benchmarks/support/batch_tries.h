// Batches that are measured once more when they fail.
#pragma once

#include "benchmarks/support/result.h"

#include "tests/equipment/failure.h"

#include <string>

// Runs `measure`, which throws driver::Failure before it keeps any figure of a batch that failed, again when
// it does so, whatever the reason, and says why. Now and then Wine cannot start a process ("Internal error"),
// in whichever program that happens, and a benchmark of batches starts thousands.
template <class Measure>
void MeasureBatch(Measure&& measure) {
    constexpr int kTries = 3;
    for (int number = 1; number < kTries; ++number) {
        try {
            return measure();
        } catch (const driver::Failure& failure) {
            Say(std::string("a batch is measured once more: ") + failure.what());
        }
    }
    measure();
}
