#include "tests/faults/leaks/held.h"

#include "tests/faults/harness/leak_counts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdio>

namespace {

// The system takes things of its own when they are first needed: images to draw with, an event for a lock
// that two threads want at once, a piece of memory. What leaks grows in every part of the time.
constexpr int kParts = 5;
// In each part what is lost each time is at least two.
constexpr int kPassing = 1;
// Committed memory comes in pieces of 64 KB. One block of sixteen bytes lost in each of a thousand rounds
// already shows among the program's own blocks.
constexpr long long kPassingBytes = 128 * 1024;

std::string Change(long long before, long long after) {
    return std::to_string(before) + " -> " + std::to_string(after);
}

using Parts = std::array<Held, kParts + 1>;  // what is held before the first, and after each

// By how much a figure grew in the middle one of the parts, when they are put in order of that.
template <class Number>
long long MedianGrowth(const Parts& parts, Number Held::*figure) {
    std::array<long long, kParts> growths = {};
    for (std::size_t i = 0; i < kParts; ++i)
        growths[i] = static_cast<long long>(parts[i + 1].*figure) - static_cast<long long>(parts[i].*figure);
    std::sort(growths.begin(), growths.end());
    return growths[kParts / 2];
}

}  // namespace

Held MeasureHeld(const Platform& platform) {
    return {.handles = HandleCount(),
            .gdiObjects = GdiObjectCount(),
            .windows = WindowCount(),
            .icons = platform.Icons(),
            .blocks = platform.Blocks(),
            .objects = platform.ComObjects(),
            .privateBytes = PrivateBytes()};
}

void ExpectFlat(const std::string& name, int times, const Platform& platform,
                const std::function<void()>& once, int gdiObjectsOfTheSystem) {
    ASSERT_GE(times, kParts * (kPassing + 1)) << "one thing lost each time would not be noticed";
    if (gdiObjectsOfTheSystem != 0) {
        std::printf("    %d GDI objects of the system's own each time are left out\n", gdiObjectsOfTheSystem);
    }
    const int rounds = std::max(3, times / 10);
    for (int i = 0; i < rounds; ++i) once();
    Parts parts = {MeasureHeld(platform)};
    for (int part = 0; part < kParts; ++part) {
        const int done = times * (part + 1) / kParts;
        for (int i = times * part / kParts; i < done; ++i) once();
        Held& held = parts[static_cast<std::size_t>(part) + 1];
        held = MeasureHeld(platform);
        held.gdiObjects -= done * gdiObjectsOfTheSystem;
    }
    const Held& before = parts.front();
    const Held& after = parts.back();
    PrintLeakFigures(name, times, before, after);
    EXPECT_LE(MedianGrowth(parts, &Held::handles), kPassing) << Change(before.handles, after.handles);
    EXPECT_LE(MedianGrowth(parts, &Held::gdiObjects), kPassing)
        << Change(before.gdiObjects, after.gdiObjects);
    EXPECT_EQ(after.windows, before.windows);
    EXPECT_EQ(after.icons, before.icons);
    EXPECT_EQ(after.blocks, before.blocks);
    EXPECT_EQ(after.objects, before.objects);
    EXPECT_LE(MedianGrowth(parts, &Held::privateBytes), kPassingBytes)
        << Change(static_cast<long long>(before.privateBytes), static_cast<long long>(after.privateBytes));
}

void PrintLeakFigures(const std::string& name, int times, const Held& before, const Held& after) {
    static const int s_titles =
        std::printf("[ figures  ] %-38s %6s %14s %14s %12s %10s %12s %10s %16s\n", "Repeated", "times",
                    "handles", "GDI objects", "windows", "icons", "blocks", "objects", "private KB");
    static_cast<void>(s_titles);
    std::printf("[ figures  ] %-38s %6d %14s %14s %12s %10s %12s %10s %16s\n", name.c_str(), times,
                Change(before.handles, after.handles).c_str(),
                Change(before.gdiObjects, after.gdiObjects).c_str(),
                Change(before.windows, after.windows).c_str(), Change(before.icons, after.icons).c_str(),
                Change(before.blocks, after.blocks).c_str(), Change(before.objects, after.objects).c_str(),
                Change(static_cast<long long>(before.privateBytes / 1024),
                       static_cast<long long>(after.privateBytes / 1024))
                    .c_str());
}
