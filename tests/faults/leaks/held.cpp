#include "tests/faults/leaks/held.h"

#include "tests/faults/harness/leak_counts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <limits>
#include <vector>

namespace {

// Committed memory comes in pieces of 64 KB, and a heap that is used over and over settles within some of
// them. One block of sixteen bytes lost in each of a thousand rounds already shows among the program's own
// blocks.
constexpr std::size_t kSettlingBytes = 512 * 1024;

constexpr int kParts = 2;

struct Figures {
    std::string name;
    int times = 0;
    Held before;
    Held after;
};

std::vector<Figures> g_figures;

std::string Change(long long before, long long after) {
    return std::to_string(before) + " -> " + std::to_string(after);
}

}  // namespace

Held MeasureHeld(const Platform& platform) {
    return {.handles = HandleCount(),
            .gdiObjects = GdiObjectCount(),
            .windows = WindowCount(),
            .icons = platform.Icons(),
            .blocks = platform.Blocks(),
            .privateBytes = PrivateBytes()};
}

void ExpectFlat(const std::string& name, int times, const Platform& platform,
                const std::function<void()>& once) {
    const int rounds = std::max(3, times / 10);
    for (int i = 0; i < rounds; ++i) once();
    const Held before = MeasureHeld(platform);
    Held after = before;
    // The system enlarges its store of drawing contexts now and then; what leaks grows in each part of the
    // time.
    int leastGdiGrowth = std::numeric_limits<int>::max();
    for (int part = 0; part < kParts; ++part) {
        const int gdiBefore = after.gdiObjects;
        for (int i = times * part / kParts; i < times * (part + 1) / kParts; ++i) once();
        after = MeasureHeld(platform);
        leastGdiGrowth = std::min(leastGdiGrowth, after.gdiObjects - gdiBefore);
    }
    AddLeakFigures(name, times, before, after);
    EXPECT_EQ(after.handles, before.handles);
    EXPECT_LE(leastGdiGrowth, 0) << before.gdiObjects << " -> " << after.gdiObjects;
    EXPECT_EQ(after.windows, before.windows);
    EXPECT_EQ(after.icons, before.icons);
    EXPECT_EQ(after.blocks, before.blocks);
    EXPECT_LE(after.privateBytes, before.privateBytes + kSettlingBytes);
}

void AddLeakFigures(const std::string& name, int times, const Held& before, const Held& after) {
    g_figures.push_back({name, times, before, after});
}

void PrintLeakSummary() {
    if (g_figures.empty()) return;
    std::printf("[ figures  ] %-38s %6s %14s %14s %12s %10s %12s %16s\n", "Repeated", "times", "handles",
                "GDI objects", "windows", "icons", "blocks", "private KB");
    for (const Figures& one : g_figures) {
        std::printf("[ figures  ] %-38s %6d %14s %14s %12s %10s %12s %16s\n", one.name.c_str(), one.times,
                    Change(one.before.handles, one.after.handles).c_str(),
                    Change(one.before.gdiObjects, one.after.gdiObjects).c_str(),
                    Change(one.before.windows, one.after.windows).c_str(),
                    Change(one.before.icons, one.after.icons).c_str(),
                    Change(one.before.blocks, one.after.blocks).c_str(),
                    Change(static_cast<long long>(one.before.privateBytes / 1024),
                           static_cast<long long>(one.after.privateBytes / 1024))
                        .c_str());
    }
}
