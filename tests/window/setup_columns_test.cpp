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
    // What a picture before the title takes, with the header's margins.
    [[nodiscard]] int PictureWidth() const {
        const auto header =
            reinterpret_cast<HWND>(::SendMessageW(Control(IDC_FILE_LIST), LVM_GETHEADER, 0, 0));
        return 16 + 4 * static_cast<int>(::SendMessageW(header, HDM_GETBITMAPMARGIN, 0, 0));
    }
    // Says that the duration column became `width` wide and that the header draws it in `format`.
    static ControlCalls::Answer DurationColumn(int width, int format) {
        return [=](HWND, UINT message, WPARAM column, LPARAM lParam) -> std::optional<LRESULT> {
            if (message == LVM_GETCOLUMNWIDTH && column == 1) return width;
            if (message == HDM_GETITEMW && column == 1) {
                reinterpret_cast<HDITEMW*>(lParam)->fmt = format;
                return TRUE;
            }
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
    EXPECT_THAT(StartBatchRecorded(DurationColumn(wide, HDF_STRING)),
                ElementsAre("LVM_SETCOLUMNWIDTH 1040 1 -2", "LVM_GETCOLUMNWIDTH 1040 1 0",
                            "LVM_SETCOLUMNWIDTH 1040 0 " + std::to_string(ClientWidth() - wide),
                            "UpdateWindow 1040"));
}

// Where the header draws the list's picture before the title, which is what Wine's does.
TEST_F(SetUpColumnsTest, AColumnWithRoomForTitleAndPictureStays) {
    const int wide = TitleWidth() + PictureWidth();
    EXPECT_THAT(StartBatchRecorded(DurationColumn(wide, HDF_IMAGE)),
                ElementsAre("LVM_SETCOLUMNWIDTH 1040 1 -2", "LVM_GETCOLUMNWIDTH 1040 1 0",
                            "LVM_SETCOLUMNWIDTH 1040 0 " + std::to_string(ClientWidth() - wide),
                            "UpdateWindow 1040"));
}

TEST_F(SetUpColumnsTest, AColumnTooNarrowForTitleAndPictureGetsRoomForBoth) {
    const int wide = TitleWidth() + PictureWidth();
    for (const int narrow : {0, TitleWidth() - 1, TitleWidth(), wide - 1}) {
        SCOPED_TRACE(narrow);
        EXPECT_THAT(StartBatchRecorded(DurationColumn(narrow, HDF_IMAGE | HDF_STRING)),
                    ElementsAre("LVM_SETCOLUMNWIDTH 1040 1 -2", "LVM_GETCOLUMNWIDTH 1040 1 0",
                                "LVM_SETCOLUMNWIDTH 1040 1 " + std::to_string(wide),
                                "LVM_SETCOLUMNWIDTH 1040 0 " + std::to_string(ClientWidth() - wide),
                                "UpdateWindow 1040"));
        FinishBatch();
        calls.Clear();
    }
}

// Where it draws the title alone, as on Windows: what the system has measured is enough.
TEST_F(SetUpColumnsTest, AColumnWithRoomForTheTitleAloneStaysWhereNoPictureIsDrawn) {
    const int wide = TitleWidth();
    EXPECT_THAT(StartBatchRecorded(DurationColumn(wide, HDF_STRING)),
                ElementsAre("LVM_SETCOLUMNWIDTH 1040 1 -2", "LVM_GETCOLUMNWIDTH 1040 1 0",
                            "LVM_SETCOLUMNWIDTH 1040 0 " + std::to_string(ClientWidth() - wide),
                            "UpdateWindow 1040"));
}

TEST_F(SetUpColumnsTest, AColumnTooNarrowForItsTitleGetsRoomForItWhereNoPictureIsDrawn) {
    const int wide = TitleWidth();
    EXPECT_THAT(StartBatchRecorded(DurationColumn(wide - 1, HDF_STRING)),
                ElementsAre("LVM_SETCOLUMNWIDTH 1040 1 -2", "LVM_GETCOLUMNWIDTH 1040 1 0",
                            "LVM_SETCOLUMNWIDTH 1040 1 " + std::to_string(wide),
                            "LVM_SETCOLUMNWIDTH 1040 0 " + std::to_string(ClientWidth() - wide),
                            "UpdateWindow 1040"));
}

// The second batch finds less room than the first: the list has a vertical scroll bar now.
TEST_F(SetUpColumnsTest, TheTitleIsWholeAgainAfterAScrollBarHasCome) {
    StartBatch();
    FinishBatch();
    const int firstWidth = ColumnWidth(1);
    const int firstClientWidth = ClientWidth();
    std::vector<std::wstring> many;
    for (int file = 0; file < 60; ++file) many.push_back(L"C:\\in\\" + std::to_wstring(file) + L".pdf");
    Drop(many);
    ASSERT_LT(ClientWidth(), firstClientWidth) << "no scroll bar came";
    StartBatch();
    EXPECT_EQ(ColumnWidth(1), firstWidth);
    EXPECT_EQ(ColumnWidth(0), ClientWidth() - ColumnWidth(1));
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
