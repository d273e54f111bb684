// Thousands of files dropped at once, in a time that grows with their number and not with its square.
#include "tests/app/app_fixture.h"

#include <algorithm>
#include <chrono>
#include <cstdio>

namespace {

using Clock = std::chrono::steady_clock;
using Seconds = std::chrono::duration<double>;

class DropScaling : public AppTest {
protected:
    [[nodiscard]] Seconds TimeOfDrop(int count, const std::wstring& extension) const {
        // Files that need not exist: nobody looks at them. The last is a PDF in any case.
        std::vector<std::wstring> paths;
        for (int i = 1; i < count; ++i) paths.push_back(L"C:\\Cartons\\" + std::to_wstring(i) + extension);
        paths.emplace_back(L"C:\\Cartons\\dernier.pdf");
        const int rows = extension == L".pdf" ? count : 1;
        const auto begin = Clock::now();
        driver::DropFiles(List(), paths);
        driver::Await("the list has the PDFs", [&] { return driver::RowCount(List()) == rows; });
        const Seconds time = Clock::now() - begin;
        driver::Click(Control(IDC_CLEAR));
        driver::Await("the list is empty", [&] { return driver::RowCount(List()) == 0; });
        return time;
    }
};

TEST_F(DropScaling, TimeGrowsWithTheNumberOfFiles) {
    Start();
    struct {
        int count;
        const wchar_t* extension;
        Seconds shortest = Seconds::max();
    } few{2'500, L".pdf"}, many{10'000, L".pdf"}, othersOfFew{2'500, L".txt"}, othersOfMany{10'000, L".txt"};
    // Four times the files may take four times as long, and half as much again on a busy machine; with
    // comparing each with all it would be sixteen times. Wine's system walks through all that come before for
    // each path that it hands out: its share is what a drop takes of files that the program leaves out. The
    // addends are for what is subtracted, which was measured at another moment, and for the probe's grain.
    const auto isProportional = [&] {
        const Seconds own = std::max(few.shortest - othersOfFew.shortest, Seconds(0));
        return many.shortest - othersOfMany.shortest <= 6 * own + othersOfMany.shortest / 3 + Seconds(0.1);
    };
    // What else runs on the machine makes a drop longer, and never shorter.
    for (int round = 0; round < 4 || (round < 16 && !isProportional()); ++round) {
        for (auto* const drop : {&few, &othersOfFew, &othersOfMany, &many})
            drop->shortest = std::min(drop->shortest, TimeOfDrop(drop->count, drop->extension));
    }
    for (const auto* const drop : {&few, &othersOfFew, &othersOfMany, &many})
        std::printf("%6d %ls: %.3f s\n", drop->count, drop->extension, drop->shortest.count());
    EXPECT_TRUE(isProportional());
}

}  // namespace
