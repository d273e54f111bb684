// Thousands of files dropped at once: all of them, in a time that grows with their number and not with its
// square.
#include "tests/app/app_fixture.h"

#include <algorithm>
#include <chrono>
#include <cstdio>

namespace {

using Clock = std::chrono::steady_clock;
using Seconds = std::chrono::duration<double>;

// The shortest of several drops of so many files: what else runs on the machine makes them longer, and never
// shorter. Wine's system walks through all that come before for each path that it hands out, so that its
// share grows with the square. It is what a drop takes of files that the program looks at and leaves out.
struct DropTimes {
    int count;
    Seconds ofPdfs = Seconds::max();
    Seconds ofOthers = Seconds::max();

    // Never below nothing: the two were measured at different moments.
    [[nodiscard]] Seconds Own() const { return std::max(ofPdfs - ofOthers, Seconds(0)); }
};

class DropScaling : public AppTest {
protected:
    void Measure(DropTimes& times) {
        times.ofPdfs = std::min(times.ofPdfs, TimeOfDrop(times.count, L".pdf"));
        times.ofOthers = std::min(times.ofOthers, TimeOfDrop(times.count, L".txt"));
        std::printf("%6d paths: %.3f s, of which the system's share %.3f s\n", times.count,
                    times.ofPdfs.count(), times.ofOthers.count());
    }

private:
    // Until the list has the PDFs; the last file is one in any case. The list is empty again afterwards.
    [[nodiscard]] Seconds TimeOfDrop(int count, const std::wstring& extension) {
        // Of files that need not exist: nobody looks at them before they are converted.
        std::vector<std::wstring> paths;
        for (int i = 1; i < count; ++i)
            paths.push_back(L"C:\\Archives\\Carton " + std::to_wstring(i) + extension);
        paths.emplace_back(L"C:\\Archives\\Dernier carton.pdf");
        const int rows = extension == L".pdf" ? count : 1;
        const auto begin = Clock::now();
        driver::DropFiles(List(), paths);
        EXPECT_TRUE(Comes([&] { return driver::RowCount(List()) == rows; }, driver::Milliseconds(60'000)));
        const Seconds time = Clock::now() - begin;
        driver::Click(Control(IDC_CLEAR));
        EXPECT_TRUE(Comes([&] { return driver::RowCount(List()) == 0; }));
        return time;
    }
};

TEST_F(DropScaling, TimeGrowsWithTheNumberOfFiles) {
    constexpr int kRounds = 4;
    DropTimes few{2'500};
    DropTimes many{10'000};
    Start();
    for (int round = 0; round < kRounds; ++round) {
        Measure(few);
        Measure(many);
    }
    // Four times the files may take four times as long, and half as much again on a busy machine; with
    // comparing each with all it would be sixteen times. The addends are for what is subtracted, which was
    // measured at another moment, and for the grain of the probe.
    constexpr Seconds kGrain{0.1};
    EXPECT_LE(many.Own().count(), 1.5 * 4 * few.Own().count() + many.ofOthers.count() / 3 + kGrain.count());
}

}  // namespace
