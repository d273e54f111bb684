// What the process, and the program in it, hold at one moment, and the figures of what came of many
// repetitions.
#pragma once

#include "tests/faults/harness/leak_counts.h"
#include "tests/faults/harness/platform.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

// The system takes things of its own when they are first needed: images to draw with, an event for a lock
// that two threads want at once, a piece of memory. That passes: what leaks grows in every part of the time.
struct Figure {
    const char* name;
    long long passing;  // how much it may grow in a part; 0: never at all
};
inline constexpr Figure kFigures[] = {
    {"handles", 1},  // what is lost each time is at least two in a part
    {"GDI objects", 1},
    {"windows", 0},
    {"icons", 0},    // loaded by the program and not destroyed
    {"blocks", 0},   // of memory, allocated by the program and not freed
    {"objects", 0},  // of COM libraries, that it has not let go of
    // Committed memory comes in pieces of 64 KB. One block of sixteen bytes lost in each of a thousand rounds
    // already shows among the program's own blocks.
    {"private KB", 128},
};
using Held = std::array<long long, std::size(kFigures)>;

[[nodiscard]] inline Held MeasureHeld(const Platform& platform) {
    const auto program = platform.Held();
    return {HandleCount(),
            GdiObjectCount(),
            WindowCount(),
            program.at("icons"),
            program.at("blocks"),
            program.at("objects"),
            static_cast<long long>(PrivateBytes() / 1024)};
}

// Prints the figures as a line of the summary.
inline void PrintLeakFigures(const std::string& name, int times, const Held& before, const Held& after) {
    std::printf("[ figures  ] %-38s %4d times", name.c_str(), times);
    for (std::size_t i = 0; i < before.size(); ++i) {
        std::printf(", %s %lld -> %lld", kFigures[i].name, before[i], after[i]);
    }
    std::printf("\n");
}

// Does `once` a few times, so that what the system keeps for good is there, then `times` more, at least ten,
// and expects that nothing is added with time but `gdiKept` GDI objects each time, which the system keeps.
// The figures go into the summary under `name`.
inline void ExpectFlat(const std::string& name, int times, const Platform& platform,
                       const std::function<void()>& once, int gdiKept = 0) {
    constexpr int kParts = 5;
    ASSERT_GE(times, kParts * 2) << "one thing lost each time would not be noticed";
    const int rounds = std::max(3, times / 10);
    for (int i = 0; i < rounds; ++i) once();
    std::vector<Held> held = {MeasureHeld(platform)};  // before the first part, and after each
    for (int part = 1; part <= kParts; ++part) {
        for (int i = times * (part - 1) / kParts; i < times * part / kParts; ++i) once();
        held.push_back(MeasureHeld(platform));
        held.back()[1] -= gdiKept * (times * part / kParts);
    }
    PrintLeakFigures(name, times, held.front(), held.back());
    for (std::size_t i = 0; i < std::size(kFigures); ++i) {
        std::vector<long long> growths;
        for (std::size_t part = 1; part < held.size(); ++part) {
            growths.push_back(held[part][i] - held[part - 1][i]);
        }
        std::sort(growths.begin(), growths.end());
        const auto& [what, passing] = kFigures[i];
        if (passing == 0) {
            EXPECT_EQ(held.back()[i], held.front()[i]) << what;
        } else {
            EXPECT_LE(growths[kParts / 2], passing) << what;
        }
    }
}
