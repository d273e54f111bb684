// Thousands of files dropped at once: all of them, in a time that grows with their number and not with its
// square.
#include "tests/app/app_fixture.h"

#include <algorithm>
#include <chrono>
#include <cstdio>

namespace {

using Clock = std::chrono::steady_clock;
using Seconds = std::chrono::duration<double>;

class DropScaling : public AppTest {
protected:
    // Of several drops of so many files: what else runs on the machine makes them longer, and never shorter.
    [[nodiscard]] Seconds ShortestDrop(int count, const std::wstring& extension) const {
        constexpr int kDrops = 4;
        // Files that need not exist: nobody looks at them before they are converted. The last is a PDF in any
        // case.
        std::vector<std::wstring> paths;
        for (int i = 1; i < count; ++i)
            paths.push_back(L"C:\\Archives\\Carton " + std::to_wstring(i) + extension);
        paths.emplace_back(L"C:\\Archives\\Dernier carton.pdf");
        const int rows = extension == L".pdf" ? count : 1;
        Seconds shortest = Seconds::max();
        for (int drop = 0; drop < kDrops; ++drop) {
            const auto begin = Clock::now();
            driver::DropFiles(List(), paths);
            driver::Await("the list has the PDFs", [&] { return driver::RowCount(List()) == rows; });
            shortest = std::min(shortest, Seconds(Clock::now() - begin));
            driver::Click(Control(IDC_CLEAR));
            driver::Await("the list is empty", [&] { return driver::RowCount(List()) == 0; });
        }
        std::printf("%6d paths, %d of them PDFs: %.3f s\n", count, rows, shortest.count());
        return shortest;
    }
};

TEST_F(DropScaling, TimeGrowsWithTheNumberOfFiles) {
    Start();
    // Wine's system walks through all that come before for each path that it hands out, so that its share
    // grows with the square. It is what a drop takes of files that the program looks at and leaves out.
    const Seconds few = ShortestDrop(2'500, L".pdf") - ShortestDrop(2'500, L".txt");
    const Seconds systemsShareOfMany = ShortestDrop(10'000, L".txt");
    const Seconds many = ShortestDrop(10'000, L".pdf") - systemsShareOfMany;
    // Four times the files may take four times as long, and half as much again on a busy machine; with
    // comparing each with all it would be sixteen times. The addends are for what is subtracted, which was
    // measured at another moment, and for the grain of the probe.
    constexpr Seconds kGrain{0.1};
    EXPECT_LE(many, 1.5 * 4 * std::max(few, Seconds(0)) + systemsShareOfMany / 3 + kGrain);
}

}  // namespace
