// The elapsed time while a file converts, and the row that it is written to.
#include "tests/window/batch_fixture.h"

namespace {

using testing::ElementsAre;

using BatchTimerTest = BatchFixture;  // its clock begins at 1,000,000

TEST_F(BatchTimerTest, AMessageOfAnyTimerShowsTheTimeSinceTheFilesStartInItsRowOnly) {
    ConvertUntilHeld(3, {{.held = true}});
    Tick(1'001'000);
    EXPECT_THAT(Column(1), ElementsAre(L"00:00:01", L"", L""));
    Tick(1'000'000 + 3'725'999, 99);
    EXPECT_THAT(Column(1), ElementsAre(L"01:02:05", L"", L""));
    Finish(1);
}

TEST_F(BatchTimerTest, ATickWhileAConverterIsBeingStartedCountsFromThatStart) {
    std::wstring shown;
    worker.At("CreateProcessW", 2, [&] {
        Tick(1'064'000);
        shown = Cell(1, 1);
    });
    Convert(2, {{.durationMs = 60'000}});
    EXPECT_EQ(shown, L"00:00:04");
}

// The counter is 0 for a millisecond every 49.7 days. Zero asks for the end of the last file then.
TEST_F(BatchTimerTest, ATickAtZeroShowsTheTimeUpToTheEndOfTheFileBefore) {
    converters.tick = 4'294'960'297;  // 6,999 ms before zero
    std::wstring inTheFirst;
    worker.At("CreateProcessW", 1, [&] {
        Tick(0);
        inTheFirst = Cell(0, 1);
    });
    // The first ends at 5,000; the second starts 7,296 ms before the counter is 0 again.
    worker.At("PathStripPathW C:\\in\\b.pdf", 1, [&] { converters.tick = 4'294'960'000; });
    ConvertUntilHeld(2, {{.durationMs = 5'000}, {.held = true}});
    EXPECT_EQ(inTheFirst, L"00:00:06") << "no file has ended";
    Tick(1);
    EXPECT_EQ(Cell(1, 1), L"00:00:07");
    Tick(0);
    EXPECT_EQ(Cell(1, 1), L"00:00:12");
    Finish(2);
}

TEST_F(BatchTimerTest, WithoutASelectedRowNoRowShowsTheTimeOrTheFinalDuration) {
    ConvertUntilHeld(3, {{.held = true}});
    ClearSelection();
    Tick(1'000'000);
    EXPECT_THAT(Column(1), ElementsAre(L"", L"", L""));
    converters.Plan({{.durationMs = 2'000}, {.durationMs = 3'000}});
    Finish(1);
    EXPECT_THAT(Column(1), ElementsAre(L"", L"00:00:02", L"00:00:03"));
    EXPECT_EQ(worker.Count("LVM_SETITEMW 1040 row=-1 column=1 mask=1 \"00:00:00\""), 1);
}

TEST_F(BatchTimerTest, TimesGoToTheSelectedRowWhicheverConverts) {
    ConvertUntilHeld(3, {{.held = true}});
    SelectRow(2);
    Tick(1'005'000);
    EXPECT_THAT(Column(1), ElementsAre(L"", L"", L"00:00:05"));
    std::vector<std::wstring> afterTheFirst;
    worker.At("LVM_GETITEMTEXTW 1040 row=1", 1, [&] { afterTheFirst = Column(1); });
    converters.tick = 1'006'000;
    Finish(1);
    EXPECT_THAT(afterTheFirst, ElementsAre(L"", L"", L"00:00:06"));
}

TEST_F(BatchTimerTest, TheSystemsTimerTicksEverySecond) {
    windows.realTimers = true;
    ConvertUntilHeld(3, {{.held = true}});
    converters.tick = 1'009'000;
    EXPECT_TRUE(WaitFor([&] { return Cell(0, 1) == L"00:00:09"; })) << "no tick came";
    converters.tick = 1'010'000;
    EXPECT_TRUE(WaitFor([&] { return Cell(0, 1) == L"00:00:10"; })) << "no second tick came";
    Finish(1);
    // Stopped with the batch: the real call finds no timer any more.
    EXPECT_FALSE(::KillTimer(Dialog(), 2));
}

}  // namespace
