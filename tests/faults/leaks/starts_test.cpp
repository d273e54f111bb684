// The program as it ships, started and quit again and again from outside: nothing of it stays in the system.
#include "tests/faults/leaks/held.h"
#include "tests/faults/options.h"

#include "tests/equipment/main_window.h"
#include "tests/equipment/program.h"
#include "tests/equipment/wine.h"
#include "tests/faults/harness/leak_counts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

namespace {

std::ptrdiff_t FilesIn(const std::wstring& folder) {
    return std::distance(std::filesystem::directory_iterator(folder), {});
}

TEST(LeaksOfStarts, NoneInTheSystem) {
    const Platform platform;  // for its folder with the program in it
    const auto startAndQuit = [&] {
        const driver::Program program(platform.File(L"Talvenor.exe"));
        const driver::MainWindow window(program);
        EXPECT_EQ(window.Quit(), 2u);
    };
    const int times = IsFull() ? 200 : 5;
    for (int i = 0; i < 3; ++i) startAndQuit();
    const std::ptrdiff_t filesBefore = FilesIn(platform.Folder());
    const Held before = {.handles = HandleCountOfOthers(), .windows = WindowCountOfOthers()};
    for (int i = 0; i < times; ++i) startAndQuit();
    const Held after = {.handles = HandleCountOfOthers(), .windows = WindowCountOfOthers()};
    PrintLeakFigures("starts from outside (others' things)", times, before, after);
    EXPECT_EQ(FilesIn(platform.Folder()), filesBefore);
    // Other programs of the session go on with their own work meanwhile.
    constexpr int kOfOthers = 20;
    // On a real Windows a hundred programs of the system take and release handles all the time.
    if (UnderWine()) {
        EXPECT_LE(after.handles, before.handles + kOfOthers);
    }
    EXPECT_LE(after.windows, before.windows + kOfOthers);
}

}  // namespace
