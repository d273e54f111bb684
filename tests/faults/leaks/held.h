// What the process, and the program in it, hold at one moment, and the figures of what came of many
// repetitions.
#pragma once

#include "tests/faults/harness/platform.h"

#include <cstddef>
#include <functional>
#include <string>

struct Held {
    int handles = 0;
    int gdiObjects = 0;
    int windows = 0;
    int icons = 0;    // loaded by the program and not destroyed
    int blocks = 0;   // of memory, allocated by the program and not freed
    int objects = 0;  // of COM libraries, that it has not let go of
    std::size_t privateBytes = 0;
};

[[nodiscard]] Held MeasureHeld(const Platform& platform);

// Does `once` a few times, so that what the system keeps for good is there, then `times` more, at least ten,
// and expects that nothing is added with time, but for `gdiObjectsOfTheSystem`, which that itself keeps each
// time. The figures, without these, go into the summary under `name`.
void ExpectFlat(const std::string& name, int times, const Platform& platform,
                const std::function<void()>& once, int gdiObjectsOfTheSystem = 0);

// Prints the figures as a line of the summary, the first time with a line of titles before it.
void PrintLeakFigures(const std::string& name, int times, const Held& before, const Held& after);
