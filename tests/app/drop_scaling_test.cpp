// Thousands of files dropped at once: all of them, in order, in a time that grows with their number and not
// with its square.
#include "tests/app/app_fixture.h"
#include "tests/support/dropped_files.h"

#include <windows.h>

#include <shellapi.h>

#include <algorithm>
#include <chrono>
#include <cstdio>

namespace {

using Clock = std::chrono::steady_clock;
using Seconds = std::chrono::duration<double>;

// Paths of files that need not exist: nobody looks at them before they are converted.
std::vector<std::wstring> Paths(int count) {
    std::vector<std::wstring> paths;
    for (int i = 0; i < count; ++i) paths.push_back(L"C:\\Archives\\Carton " + std::to_wstring(i) + L".pdf");
    return paths;
}

// What the system itself takes to hand out the paths of such a drop, one by one. Wine's walks through all
// that come before, each time, so that its share grows with the square.
Seconds EnumerationTime(const std::vector<std::wstring>& paths) {
    const DroppedFiles drop(paths);
    const auto begin = Clock::now();
    wchar_t path[MAX_PATH] = {};
    UINT index = 0;
    while (::DragQueryFileW(drop.Get(), index, path, MAX_PATH) != 0) ++index;
    const Seconds time = Clock::now() - begin;
    EXPECT_EQ(index, paths.size());
    return time;
}

// How long a drop of some size takes until the list holds its rows, and the system's share of that. Of
// several drops the shortest time counts for each: what else runs on the machine makes them longer, and never
// shorter.
struct DropTimes {
    std::vector<std::wstring> paths;
    Seconds whole = Seconds::max();
    Seconds enumeration = Seconds::max();

    // Never below nothing: the two were measured at different moments.
    [[nodiscard]] Seconds Own() const { return std::max(whole - enumeration, Seconds(0)); }
};

class DropScaling : public AppTest {
protected:
    // Drops the paths once more, and leaves the list empty.
    void Measure(DropTimes& times) {
        const int count = static_cast<int>(times.paths.size());
        const auto begin = Clock::now();
        driver::DropFiles(List(), times.paths);
        ASSERT_TRUE(Comes([&] { return driver::RowCount(List()) == count; }, driver::Milliseconds(60'000)));
        const Seconds whole = Clock::now() - begin;
        const Seconds enumeration = EnumerationTime(times.paths);
        std::printf("%6d paths: %.3f s, of which the system's share %.3f s\n", count, whole.count(),
                    enumeration.count());
        if (times.whole == Seconds::max()) {
            EXPECT_EQ(driver::ColumnTexts(List(), 0), times.paths);
        }
        times.whole = std::min(times.whole, whole);
        times.enumeration = std::min(times.enumeration, enumeration);
        driver::Click(Control(IDC_CLEAR));
        ASSERT_TRUE(Comes([&] { return driver::RowCount(List()) == 0; }));
    }
};

TEST_F(DropScaling, TimeGrowsWithTheNumberOfFiles) {
    constexpr int kRounds = 4;
    DropTimes few{Paths(2'500)};
    DropTimes many{Paths(10'000)};
    Start();
    for (int round = 0; round < kRounds; ++round) {
        Measure(few);
        Measure(many);
    }
    // Four times the files may take four times as long, and half as much again on a busy machine; with
    // comparing each with all it would be sixteen times. The addends are for what is subtracted, which was
    // measured at another moment, and for the grain of the probe.
    constexpr Seconds kGrain{0.1};
    EXPECT_LE(many.Own().count(),
              1.5 * 4 * few.Own().count() + many.enumeration.count() / 3 + kGrain.count());
}

}  // namespace
