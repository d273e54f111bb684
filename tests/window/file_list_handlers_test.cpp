// What a changed row and the button that clears the list do to the rest of the window.
#include "tests/window/batch_fixture.h"

namespace {

using testing::ElementsAre;

class FileListHandlersTest : public BatchFixture {
protected:
    FileListHandlersTest() { Drop({L"C:\\in\\a.pdf", L"C:\\in\\b.pdf", L"C:\\in\\c.pdf"}); }
};

TEST_F(FileListHandlersTest, EveryChangeOfARowShowsItsPathAndEnablesTheDestination) {
    for (const UINT kind : {UINT{LVIF_STATE}, UINT{LVIF_TEXT}, UINT{LVIF_IMAGE}, 0u}) {
        EXPECT_THAT(
            Recorded([&] { ReportChange(1, LVIS_SELECTED, 0, kind); }, {"SetWindowTextW", "EnableWindow"}),
            ElementsAre("SetWindowTextW 1004 \"C:\\in\\b.pdf\"", "EnableWindow 1022 1"))
            << kind;
    }
}

TEST_F(FileListHandlersTest, WithAnOutputFolderAChangeLeavesTheDestinationButton) {
    Check(IDC_OUTPUT_FOLDER_CHECK);
    EXPECT_THAT(Recorded([&] { ReportChange(1, LVIS_SELECTED); }, {"SetWindowTextW", "EnableWindow"}),
                ElementsAre("SetWindowTextW 1004 \"C:\\in\\b.pdf\""));
}

TEST_F(FileListHandlersTest, AChangeOfNoRowEmptiesTheStatusLineAndHidesTheDurations) {
    SelectRow(1);
    EXPECT_THAT(
        Recorded([&] { ReportChange(-1, LVIS_SELECTED); }),
        ElementsAre("SetWindowTextW 1004 \"\"", "LVM_SETCOLUMNWIDTH 1040 0 " + std::to_string(ListWidth()),
                    "LVM_SETCOLUMNWIDTH 1040 1 0"));
    EXPECT_EQ(SelectedRow(), 1) << "the selection was none of its business";
}

TEST_F(FileListHandlersTest, ClearingTakesItsStepsInOrder) {
    // Nothing is selected, so that the list reports no change of its rows.
    EXPECT_THAT(Recorded([&] { Command(IDC_CLEAR, BN_CLICKED); }),
                ElementsAre("LVM_DELETEALLITEMS 1040 0 0", "EnableWindow 1 0",
                            "LVM_SETCOLUMNWIDTH 1040 0 " + std::to_string(ListWidth()),
                            "LVM_SETCOLUMNWIDTH 1040 1 0", "SetWindowTextW 1004 \"\""));
    EXPECT_EQ(RowCount(), 0);
}

TEST_F(FileListHandlersTest, ClearingDoesNotAskWhetherABatchRuns) {
    StartBatch();
    Command(IDC_CLEAR, BN_CLICKED);  // the button itself is disabled
    EXPECT_EQ(RowCount(), 0);
    EXPECT_TRUE(dialog->IsRunning());
}

}  // namespace
