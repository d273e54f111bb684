// What a batch does to the controls and durations, at its start and at its end or stop.
#include "tests/window/batch_fixture.h"

#include <algorithm>
#include <utility>

namespace {

using testing::Each;
using testing::ElementsAre;

class ControlStateBatchTest : public BatchFixture {
protected:
    // All that `action` changes in controls.
    std::vector<std::string> Changes(const std::function<void()>& action) {
        return Recorded(action, {"EnableWindow", "SetWindowTextW", "LVM_SETITEMW", "ShowWindow",
                                 "CheckDlgButton", "SetFocus"});
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
        SendList(LVM_SETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
    }
};

// Only the edits of pages and resolution follow their check boxes. Text by lines (1016) and the output folder
// (1027, 1028) are enabled after a batch whatever theirs say; the buttons of log and destination are left
// alone.
TEST_F(ControlStateBatchTest, ABatchSwitchesTheControlsInTheirOrderAndTheStopBack) {
    const std::vector<int> always(
        {IDOK, IDC_ADD, IDC_CLEAR, IDC_FILE_LIST, IDC_PAGES_CHECK, IDC_RESOLUTION_CHECK, IDC_NO_METADATA,
         IDC_NO_OUTLINE, IDC_NO_HYPERLINKS, IDC_NO_TEXT, IDC_LINES, IDC_MONOCHROME, IDC_EXTRA_OPTIONS,
         IDC_HIDE_OUTPUT, IDC_OUTPUT_FOLDER_CHECK, IDC_OUTPUT_FOLDER, IDC_BROWSE, IDC_SHUT_DOWN, IDOK});
    // The list with `edit` right behind its check box.
    const auto with = [&](int checkBox, int edit) {
        std::vector<int> switched = always;
        switched.insert(std::ranges::find(switched, checkBox) + 1, edit);
        return switched;
    };
    const struct {
        std::vector<int> checked;
        std::vector<int> switched;
    } cases[] = {
        {{}, always},
        {{IDC_PAGES_CHECK, IDC_NO_TEXT, IDC_SHUT_DOWN}, with(IDC_PAGES_CHECK, IDC_PAGES)},
        {{IDC_RESOLUTION_CHECK, IDC_NO_METADATA, IDC_LINES}, with(IDC_RESOLUTION_CHECK, IDC_RESOLUTION)},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(testing::PrintToString(row.checked));
        for (const int id : row.checked) Click(id);
        EXPECT_EQ(Changes([&] { StartEmptyBatch(); }), Switched(row.switched, true));
        EXPECT_EQ(Changes([&] { Command(IDCANCEL, BN_CLICKED); }), Switched(row.switched, false));
        for (const int id : row.checked) Click(id);
    }
}

TEST_F(ControlStateBatchTest, EveryDurationIsEmptiedAtABatchsStart) {
    Drop({L"C:\\in\\a.pdf", L"C:\\in\\b.pdf", L"C:\\in\\c.pdf"});
    for (int row = 0; row < 3; ++row) SetDuration(row, L"00:00:09");
    EXPECT_THAT(Recorded([&] { StartBatch(); }, {"LVM_SETITEMW"}),
                ElementsAre("LVM_SETITEMW 1040 row=0 column=1 mask=1 \"\"",
                            "LVM_SETITEMW 1040 row=1 column=1 mask=1 \"\"",
                            "LVM_SETITEMW 1040 row=2 column=1 mask=1 \"\""));
    EXPECT_THAT(Column(1), Each(L""));
}

TEST_F(ControlStateBatchTest, ABatchStoppedBeforeItHasBegunLeavesTheDurationsAsTheyAre) {
    Drop({L"C:\\in\\a.pdf", L"C:\\in\\b.pdf"});
    for (int row = 0; row < 2; ++row) SetDuration(row, L"00:00:09");
    HWND toStop = Dialog();  // while the worker is at the first control that it switches
    const auto enable = REPLACE_IMPORT(EnableWindow, [&](auto original, HWND window, BOOL enabled) {
        if (const HWND stopped = std::exchange(toStop, nullptr)) {
            ::SendMessageW(stopped, WM_COMMAND, IDCANCEL, 0);
        }
        return original(window, enabled);
    });
    Command(IDOK, BN_CLICKED);
    ASSERT_TRUE(WaitFor([&] { return !dialog->HasWorker(); }));
    EXPECT_EQ(converters.Started(), 0);
    EXPECT_THAT(Column(1), Each(L"00:00:09"));
}

TEST_F(ControlStateBatchTest, ATimerMarksTheSelectedRowAsCancelledWhenNoBatchHasRunAtAll) {
    Drop({L"C:\\in\\a.pdf", L"C:\\in\\b.pdf"});
    SelectRow(1);
    ::SendMessageW(Dialog(), WM_TIMER, 2, 0);
    EXPECT_THAT(Column(1), ElementsAre(L"", L"*** Annulé !"));
}

}  // namespace
