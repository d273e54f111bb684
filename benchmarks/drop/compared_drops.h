// The same drop on Talvenor's list and on the bare one, by turns, each time into a fresh window.
#pragma once

#include "benchmarks/support/arguments.h"
#include "benchmarks/support/samples.h"

#include <string>
#include <vector>

struct ComparedDrops {
    Samples talvenor;  // milliseconds
    Samples bare;
    [[nodiscard]] double Ratio() const { return talvenor.Median() / bare.Median(); }
};

// What is in the lists before.
enum class Before { Nothing, EveryOtherPath };

// What is waited for: the end of the action, or also the picture of it.
enum class Until { Taken, Painted };

ComparedDrops CompareDrops(const std::vector<std::wstring>& paths, Before before, Until until, int rounds);

// RunBenchmark for a program that has Talvenor's window in its own process.
int RunDropBenchmark(int count, char** values, void (*benchmark)(const Arguments&));
