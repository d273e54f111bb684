// The elapsed time: every timer message writes it, or the mark of a batch that runs no more, into the
// selected row.
#include "tests/window/control_calls.h"
#include "tests/window/held_batch_fixture.h"

#include <atomic>

namespace {

using testing::Each;
using testing::ElementsAre;

std::atomic<DWORD> g_tick{0};
DWORD WINAPI ScriptedTick() {
    return g_tick;
}

constexpr DWORD kStart = 1'000;

class DispatchTimerTest : public HeldBatchFixture {
protected:
    DispatchTimerTest() {
        g_tick = kStart;
        Drop({L"C:\\in\\a.pdf", L"C:\\in\\b.pdf"});
    }
    LRESULT Tick(WPARAM timer = 2) { return ::SendMessageW(Dialog(), WM_TIMER, timer, 0); }

private:
    ReplacedImport m_tick{"GetTickCount", &ScriptedTick};
};

TEST_F(DispatchTimerTest, ShowsTheTimeSinceTheFilesStart) {
    StartBatch();
    static constexpr struct {
        DWORD elapsed;
        const wchar_t* text;
    } kCases[] = {{0, L"00:00:00"},         {999, L"00:00:00"},         {1'000, L"00:00:01"},
                  {59'999, L"00:00:59"},    {60'000, L"00:01:00"},      {3'600'000, L"01:00:00"},
                  {3'725'000, L"01:02:05"}, {360'000'000, L"100:00:00"}};
    for (const auto& row : kCases) {
        g_tick = kStart + row.elapsed;
        EXPECT_EQ(Tick(), 0);
        EXPECT_EQ(Cell(0, 1), row.text);
    }
}

TEST_F(DispatchTimerTest, IsRightAcrossTheWrapOfTheTicks) {
    g_tick = 0xFFFFFF00;
    StartBatch();
    g_tick = 0x300;  // 1,024 ms later
    Tick();
    EXPECT_EQ(Cell(0, 1), L"00:00:01");
}

TEST_F(DispatchTimerTest, AnyTimerWillDo) {
    StartBatch();
    DWORD seconds = 0;
    for (const WPARAM timer : {1u, 2u, 77u, 0u}) {
        g_tick = kStart + ++seconds * 1'000;
        Tick(timer);
        EXPECT_EQ(Cell(0, 1), L"00:00:0" + std::to_wstring(seconds)) << "timer " << timer;
    }
}

TEST_F(DispatchTimerTest, WritesOneTextIntoTheSelectedRowOnly) {
    StartBatch();
    SelectRow(1);
    g_tick = kStart + 7'000;
    const ControlCalls recorded(calls);
    Tick();
    EXPECT_THAT(Only({"LVM_"}, calls.Calls()),
                ElementsAre("LVM_SETITEMW 1040 row=1 column=1 mask=1 \"00:00:07\""));
    EXPECT_EQ(Cell(1, 1), L"00:00:07");
    EXPECT_EQ(Cell(0, 1), L"");
}

TEST_F(DispatchTimerTest, WithoutASelectedRowNoRowShowsATime) {
    StartBatch();
    LVITEMW item = {};
    item.stateMask = LVIS_SELECTED;
    ::SendMessageW(Control(IDC_FILE_LIST), LVM_SETITEMSTATE, static_cast<WPARAM>(-1),
                   reinterpret_cast<LPARAM>(&item));
    Tick();
    EXPECT_THAT(Column(1), Each(L""));
}

TEST_F(DispatchTimerTest, MarksTheRowOfAStoppedBatch) {
    StartBatch();
    StopBatch();
    Tick();
    EXPECT_EQ(Cell(0, 1), L"*** Annulé !");
}

TEST_F(DispatchTimerTest, MarksTheSelectedRowWhenNoBatchHasRunAtAll) {
    SelectRow(1);
    Tick();
    EXPECT_EQ(Cell(1, 1), L"*** Annulé !");
    EXPECT_EQ(Cell(0, 1), L"");
}

}  // namespace
