// The widths of the list's columns: with durations from a batch's start, without them after clearing.
#include "tests/window/control_calls.h"
#include "tests/window/held_batch_fixture.h"

namespace {

using testing::ElementsAre;

class SetUpColumnsTest : public HeldBatchFixture {
protected:
    SetUpColumnsTest() { Drop({L"C:\\in\\a.pdf"}); }

    [[nodiscard]] std::vector<std::string> StartBatchRecorded(ControlCalls::Answer answer = nullptr) {
        const ControlCalls recorded(calls, std::move(answer));
        StartBatch();
        return Only({"LVM_SETCOLUMNWIDTH", "LVM_GETCOLUMNWIDTH", "UpdateWindow"}, calls.Calls());
    }
    [[nodiscard]] int ClientWidth() const {
        RECT client = {};
        ::GetClientRect(Control(IDC_FILE_LIST), &client);
        return client.right;
    }
    [[nodiscard]] int TitleWidth() const {
        return static_cast<int>(::SendMessageW(Control(IDC_FILE_LIST), LVM_GETSTRINGWIDTHW, 0,
                                               reinterpret_cast<LPARAM>(L"Durée de conversion")));
    }
    // Says that the duration column became `width` wide.
    static ControlCalls::Answer DurationWidth(int width) {
        return [width](HWND, UINT message, WPARAM column, LPARAM) -> std::optional<LRESULT> {
            if (message == LVM_GETCOLUMNWIDTH && column == 1) return width;
            return std::nullopt;
        };
    }
};

TEST_F(SetUpColumnsTest, ABatchShowsTheDurationsWholeAndGivesThePathsTheRest) {
    StartBatch();
    EXPECT_GE(ColumnWidth(1), TitleWidth());
    EXPECT_EQ(ColumnWidth(0), ClientWidth() - ColumnWidth(1));
}

TEST_F(SetUpColumnsTest, TheDurationsAreFittedToTitleAndContentsAndTheListIsRepaintedAtOnce) {
    const int wide = TitleWidth() + 40;
    EXPECT_THAT(StartBatchRecorded(DurationWidth(wide)),
                ElementsAre("LVM_SETCOLUMNWIDTH 1040 1 -2", "LVM_GETCOLUMNWIDTH 1040 1 0",
                            "LVM_SETCOLUMNWIDTH 1040 0 " + std::to_string(ClientWidth() - wide),
                            "UpdateWindow 1040"));
}

TEST_F(SetUpColumnsTest, AColumnThatIsJustWideEnoughStays) {
    const int wide = TitleWidth();
    EXPECT_THAT(StartBatchRecorded(DurationWidth(wide)),
                ElementsAre("LVM_SETCOLUMNWIDTH 1040 1 -2", "LVM_GETCOLUMNWIDTH 1040 1 0",
                            "LVM_SETCOLUMNWIDTH 1040 0 " + std::to_string(ClientWidth() - wide),
                            "UpdateWindow 1040"));
}

TEST_F(SetUpColumnsTest, AColumnTooNarrowForItsTitleGetsRoomForTitlePictureAndTheControlsMargins) {
    const auto header = reinterpret_cast<HWND>(::SendMessageW(Control(IDC_FILE_LIST), LVM_GETHEADER, 0, 0));
    const int wide =
        TitleWidth() + 16 + 4 * static_cast<int>(::SendMessageW(header, HDM_GETBITMAPMARGIN, 0, 0));
    EXPECT_THAT(StartBatchRecorded(DurationWidth(TitleWidth() - 1)),
                ElementsAre("LVM_SETCOLUMNWIDTH 1040 1 -2", "LVM_GETCOLUMNWIDTH 1040 1 0",
                            "LVM_SETCOLUMNWIDTH 1040 1 " + std::to_string(wide),
                            "LVM_SETCOLUMNWIDTH 1040 0 " + std::to_string(ClientWidth() - wide),
                            "UpdateWindow 1040"));
}

TEST_F(SetUpColumnsTest, TheDurationsStayAfterTheBatchUntilTheListIsCleared) {
    StartBatch();
    const int wide = ColumnWidth(1);
    FinishBatch();
    EXPECT_EQ(ColumnWidth(1), wide);
    calls.Clear();
    {
        const ControlCalls recorded(calls);
        Click(IDC_CLEAR);
    }
    EXPECT_THAT(Only({"LVM_SETCOLUMNWIDTH"}, calls.Calls()),
                ElementsAre("LVM_SETCOLUMNWIDTH 1040 0 " + std::to_string(ClientWidth()),
                            "LVM_SETCOLUMNWIDTH 1040 1 0"));
    EXPECT_EQ(ColumnWidth(0), ClientWidth());
    EXPECT_EQ(ColumnWidth(1), 0);
}

}  // namespace
