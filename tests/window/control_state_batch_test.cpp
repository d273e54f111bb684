// What a batch does to the controls, at its start and at its end or stop.
#include "tests/window/control_calls.h"
#include "tests/window/forwarding_import.h"
#include "tests/window/held_batch_fixture.h"

#include <utility>

namespace {

using testing::Each;
using testing::ElementsAre;

class ControlStateBatchTest : public HeldBatchFixture {
protected:
    // What a confirmed stop of a batch without files does to the controls.
    std::vector<std::string> StopRecorded() {
        boxAnswer = IDYES;
        calls.Clear();
        const ControlCalls recorded(calls);
        Command(IDCANCEL, BN_CLICKED);
        return Only(
            {"EnableWindow", "SetWindowTextW", "LVM_SETITEMW", "ShowWindow", "CheckDlgButton", "SetFocus"},
            calls.Calls());
    }
    std::vector<std::string> StartRecorded() {
        calls.Clear();
        const ControlCalls recorded(calls);
        StartEmptyBatch();
        return Only(
            {"EnableWindow", "SetWindowTextW", "LVM_SETITEMW", "ShowWindow", "CheckDlgButton", "SetFocus"},
            calls.Calls());
    }
    // The calls that enable or disable these controls, then the one that names the quit button.
    static std::vector<std::string> Switched(const std::vector<int>& controls, bool running) {
        std::vector<std::string> expected;
        for (const int id : controls) {
            expected.push_back("EnableWindow " + std::to_string(id) + (running ? " 0" : " 1"));
        }
        expected.push_back(running ? "SetWindowTextW 2 \"Arrêter \"" : "SetWindowTextW 2 \"Quitter\"");
        return expected;
    }

    void SetDuration(int row, const wchar_t* text) {
        LVITEMW item = {};
        item.iSubItem = 1;
        item.pszText = const_cast<wchar_t*>(text);
        ::SendMessageW(Control(IDC_FILE_LIST), LVM_SETITEMTEXTW, static_cast<WPARAM>(row),
                       reinterpret_cast<LPARAM>(&item));
    }
};

TEST_F(ControlStateBatchTest, ABatchSwitchesTheControlsInTheirOrderAndTheStopBack) {
    const std::vector<int> order = {1,    1003, 1005, 1040, 1034, 1033, 1017, 1036, 1037, 1015,
                                    1016, 1030, 1018, 1019, 1026, 1027, 1028, 1038, 1};
    EXPECT_EQ(StartRecorded(), Switched(order, true));
    EXPECT_EQ(StopRecorded(), Switched(order, false));
}

TEST_F(ControlStateBatchTest, ThePagesEditIsSwitchedRightBehindItsBoxWhenThatIsChecked) {
    Click(IDC_PAGES_CHECK);
    const std::vector<int> order = {1,    1003, 1005, 1040, 1034, 1014, 1033, 1017, 1036, 1037,
                                    1015, 1016, 1030, 1018, 1019, 1026, 1027, 1028, 1038, 1};
    EXPECT_EQ(StartRecorded(), Switched(order, true));
    EXPECT_EQ(StopRecorded(), Switched(order, false));
}

TEST_F(ControlStateBatchTest, TheResolutionEditIsSwitchedRightBehindItsBoxWhenThatIsChecked) {
    Click(IDC_RESOLUTION_CHECK);
    const std::vector<int> order = {1,    1003, 1005, 1040, 1034, 1033, 1032, 1017, 1036, 1037,
                                    1015, 1016, 1030, 1018, 1019, 1026, 1027, 1028, 1038, 1};
    EXPECT_EQ(StartRecorded(), Switched(order, true));
    EXPECT_EQ(StopRecorded(), Switched(order, false));
}

struct BatchRow {
    const char* name;
    int id;
    bool whileRunning;
    bool afterwards;
};

TEST_F(ControlStateBatchTest, EveryControlHasItsStateWhileABatchRunsAndAfterIt) {
    // With nothing checked. 1022 and 1024 were disabled before and are not touched.
    static constexpr BatchRow kRows[] = {{"Convert", 1, false, true},
                                         {"Quit", 2, true, true},
                                         {"About", 57664, true, true},
                                         {"Add", 1003, false, true},
                                         {"Status", 1004, true, true},
                                         {"Clear", 1005, false, true},
                                         {"PagesBox", 1034, false, true},
                                         {"Pages", 1014, false, false},
                                         {"ResolutionBox", 1033, false, true},
                                         {"Resolution", 1032, false, false},
                                         {"NoMetadata", 1017, false, true},
                                         {"NoOutline", 1036, false, true},
                                         {"NoHyperlinks", 1037, false, true},
                                         {"NoText", 1015, false, true},
                                         {"Lines", 1016, false, true},
                                         {"Monochrome", 1030, false, true},
                                         {"ExtraOptions", 1018, false, true},
                                         {"HideOutput", 1019, false, true},
                                         {"OpenDestination", 1022, false, false},
                                         {"OpenLog", 1024, false, false},
                                         {"OutputFolder", 1027, false, true},
                                         {"Browse", 1028, false, true},
                                         {"OutputFolderBox", 1026, false, true},
                                         {"ShutDown", 1038, false, true},
                                         {"FileList", 1040, false, true}};
    EXPECT_FALSE(IsEnabled(IDOK));
    StartEmptyBatch();
    for (const BatchRow& row : kRows) {
        EXPECT_EQ(IsEnabled(row.id), row.whileRunning) << row.name << " while running";
    }
    StopBatch();
    for (const BatchRow& row : kRows) {
        EXPECT_EQ(IsEnabled(row.id), row.afterwards) << row.name << " afterwards";
    }
}

TEST_F(ControlStateBatchTest, TheQuitButtonReadsStopWhileABatchRuns) {
    EXPECT_EQ(Text(IDCANCEL), L"Quitter");
    StartEmptyBatch();
    EXPECT_EQ(Text(IDCANCEL), L"Arrêter ");
    StopBatch();
    EXPECT_EQ(Text(IDCANCEL), L"Quitter");
}

TEST_F(ControlStateBatchTest, TheConvertButtonIsEnabledAfterABatchWithoutFiles) {
    StartEmptyBatch();
    StopBatch();
    EXPECT_EQ(RowCount(), 0);
    EXPECT_TRUE(IsEnabled(IDOK));
    EXPECT_EQ(Text(IDOK), L"   Convertir ");
}

TEST_F(ControlStateBatchTest, TheControlsComeBackAtTheEndOfABatchAsAfterAStop) {
    Drop({L"C:\\in\\a.pdf"});
    StartBatch();
    EXPECT_FALSE(IsEnabled(IDC_ADD));
    EXPECT_EQ(Text(IDCANCEL), L"Arrêter ");
    FinishBatch();
    EXPECT_TRUE(IsEnabled(IDC_ADD));
    EXPECT_EQ(Text(IDCANCEL), L"Quitter");
}

TEST_F(ControlStateBatchTest, BoxesKeepTheirChecksAndEditsTheirTextsOverABatch) {
    for (const int box : {IDC_PAGES_CHECK, IDC_RESOLUTION_CHECK, IDC_NO_METADATA, IDC_LINES, IDC_SHUT_DOWN}) {
        Click(box);
    }
    SetText(IDC_PAGES, L"2,5");
    SetText(IDC_EXTRA_OPTIONS, L"--verbose");
    StartEmptyBatch();
    StopBatch();
    for (const int box : {IDC_PAGES_CHECK, IDC_RESOLUTION_CHECK, IDC_NO_METADATA, IDC_LINES, IDC_SHUT_DOWN}) {
        EXPECT_TRUE(IsChecked(box)) << box;
    }
    EXPECT_FALSE(IsChecked(IDC_NO_OUTLINE));
    EXPECT_EQ(Text(IDC_PAGES), L"2,5");
    EXPECT_EQ(Text(IDC_RESOLUTION), L"300");
    EXPECT_EQ(Text(IDC_EXTRA_OPTIONS), L"--verbose");
}

// The asymmetries: some controls do not follow their boxes over a batch.

TEST_F(ControlStateBatchTest, TextByLinesIsEnabledAfterABatchAlthoughTheTextIsLeftOut) {
    Click(IDC_NO_TEXT);
    ASSERT_FALSE(IsEnabled(IDC_LINES));
    StartEmptyBatch();
    StopBatch();
    EXPECT_TRUE(IsEnabled(IDC_LINES));
    EXPECT_TRUE(IsChecked(IDC_NO_TEXT));
}

TEST_F(ControlStateBatchTest, TheOutputFolderIsEnabledAfterABatchAlthoughItsBoxIsUnchecked) {
    Click(IDC_OUTPUT_FOLDER_CHECK);
    SetText(IDC_OUTPUT_FOLDER, folder.Path().c_str());
    Click(IDC_OUTPUT_FOLDER_CHECK);
    ASSERT_FALSE(IsEnabled(IDC_OUTPUT_FOLDER));
    StartEmptyBatch();
    StopBatch();
    EXPECT_TRUE(IsEnabled(IDC_OUTPUT_FOLDER));
    EXPECT_TRUE(IsEnabled(IDC_BROWSE));
    EXPECT_FALSE(IsChecked(IDC_OUTPUT_FOLDER_CHECK));
}

TEST_F(ControlStateBatchTest, ThePagesAndResolutionEditsFollowTheirBoxes) {
    Click(IDC_PAGES_CHECK);
    Click(IDC_RESOLUTION_CHECK);
    StartEmptyBatch();
    EXPECT_FALSE(IsEnabled(IDC_PAGES));
    EXPECT_FALSE(IsEnabled(IDC_RESOLUTION));
    StopBatch();
    EXPECT_TRUE(IsEnabled(IDC_PAGES));
    EXPECT_TRUE(IsEnabled(IDC_RESOLUTION));
}

TEST_F(ControlStateBatchTest, TheDestinationButtonKeepsItsStateOverABatch) {
    Drop({L"C:\\in\\a.pdf"});
    SelectRow(0);
    ASSERT_TRUE(IsEnabled(IDC_OPEN_DESTINATION));
    StartBatch();
    EXPECT_TRUE(IsEnabled(IDC_OPEN_DESTINATION));
    StopBatch();
    EXPECT_TRUE(IsEnabled(IDC_OPEN_DESTINATION));
}

// Durations.

TEST_F(ControlStateBatchTest, EveryDurationIsEmptiedAtABatchsStart) {
    Drop({L"C:\\in\\a.pdf", L"C:\\in\\b.pdf", L"C:\\in\\c.pdf"});
    for (int row = 0; row < 3; ++row) SetDuration(row, L"00:00:09");
    {
        const ControlCalls recorded(calls);
        StartBatch();
    }
    EXPECT_THAT(Only({"LVM_SETITEMW"}, calls.Calls()),
                ElementsAre("LVM_SETITEMW 1040 row=0 column=1 mask=1 \"\"",
                            "LVM_SETITEMW 1040 row=1 column=1 mask=1 \"\"",
                            "LVM_SETITEMW 1040 row=2 column=1 mask=1 \"\""));
    EXPECT_THAT(Column(1), Each(L""));
    EXPECT_THAT(Column(0), ElementsAre(L"C:\\in\\a.pdf", L"C:\\in\\b.pdf", L"C:\\in\\c.pdf"));
}

// A stop that comes in while the worker is still switching the controls.
HWND g_dialogToStop = nullptr;
BOOL WINAPI StopAtTheFirstControl(HWND window, BOOL enabled) {
    if (const HWND dialog = std::exchange(g_dialogToStop, nullptr)) {
        ::SendMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
    }
    return original<&StopAtTheFirstControl>(window, enabled);
}

TEST_F(ControlStateBatchTest, ABatchStoppedBeforeItHasBegunLeavesTheDurationsAsTheyAre) {
    Drop({L"C:\\in\\a.pdf", L"C:\\in\\b.pdf"});
    for (int row = 0; row < 2; ++row) SetDuration(row, L"00:00:09");
    const auto enable = ReplaceAndForward<&StopAtTheFirstControl>("EnableWindow");
    boxAnswer = IDYES;
    g_dialogToStop = Dialog();
    Command(IDOK, BN_CLICKED);
    ASSERT_TRUE(WaitFor([&] { return !dialog->HasWorker(); }));
    EXPECT_EQ(converter.Started(), 0);
    EXPECT_THAT(Column(1), Each(L"00:00:09"));
}

TEST_F(ControlStateBatchTest, AStopLeavesTheDurationsAsTheyAre) {
    Drop({L"C:\\in\\a.pdf", L"C:\\in\\b.pdf"});
    StartBatch();
    SetDuration(1, L"00:00:09");
    StopBatch();
    EXPECT_EQ(Cell(1, 1), L"00:00:09");
}

TEST_F(ControlStateBatchTest, TheEndOfABatchLeavesTheDurationsAsTheyAre) {
    Drop({L"C:\\in\\a.pdf"});
    StartBatch();
    FinishBatch();
    EXPECT_THAT(Cell(0, 1), testing::StartsWith(L"00:00:0"));
}

}  // namespace
