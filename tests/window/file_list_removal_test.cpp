// How rows go, and what the keys of the list do: Delete, F7, the button that clears the list.
#include "tests/window/control_calls.h"
#include "tests/window/held_batch_fixture.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class FileListRemovalTest : public HeldBatchFixture {
protected:
    FileListRemovalTest() { Drop({L"C:\\in\\a.pdf", L"C:\\in\\b.pdf", L"C:\\in\\c.pdf"}); }

    void ClearSelection() {
        LVITEMW item = {};
        item.stateMask = LVIS_SELECTED;
        ::SendMessageW(Control(IDC_FILE_LIST), LVM_SETITEMSTATE, static_cast<WPARAM>(-1),
                       reinterpret_cast<LPARAM>(&item));
    }
};

TEST_F(FileListRemovalTest, DeleteRemovesTheSelectedRow) {
    SelectRow(1);
    PressListKey(VK_DELETE);
    EXPECT_THAT(Column(0), ElementsAre(L"C:\\in\\a.pdf", L"C:\\in\\c.pdf"));
}

TEST_F(FileListRemovalTest, DeleteWithoutASelectionRemovesNothing) {
    PressListKey(VK_DELETE);
    EXPECT_EQ(RowCount(), 3);
}

TEST_F(FileListRemovalTest, DeleteOfSeveralSelectedRowsRemovesTheFirst) {
    AllowSeveralSelectedRows();
    SetRowState(2, LVIS_SELECTED, LVIS_SELECTED);
    SetRowState(1, LVIS_SELECTED, LVIS_SELECTED);
    PressListKey(VK_DELETE);
    EXPECT_THAT(Column(0), ElementsAre(L"C:\\in\\a.pdf", L"C:\\in\\c.pdf"));
}

TEST_F(FileListRemovalTest, TheStatusLineIsEmptyOnceNoRowIsSelected) {
    SelectRow(2);
    ASSERT_EQ(Text(IDC_STATUS), L"C:\\in\\c.pdf");
    while (RowCount() > 0) {
        SelectRow(0);
        PressListKey(VK_DELETE);
        EXPECT_EQ(Text(IDC_STATUS).empty(), SelectedRow() == -1) << RowCount() << " rows left";
    }
    EXPECT_EQ(Text(IDC_STATUS), L"");
}

TEST_F(FileListRemovalTest, DeletingEveryRowLeavesTheConvertButtonEnabled) {
    ::EnableWindow(Control(IDOK), TRUE);
    while (RowCount() > 0) {
        SelectRow(0);
        PressListKey(VK_DELETE);
    }
    EXPECT_TRUE(IsEnabled(IDOK));
}

TEST_F(FileListRemovalTest, F7ShowsTheCommandLineOfTheSelectedFile) {
    SelectRow(1);
    PressListKey(VK_F7);
    EXPECT_THAT(calls.Calls(),
                ElementsAre("MessageBoxW owner=main text=pdf2djvu.exe -o \"C:\\in\\b.djvu\" -v  "
                            "\"C:\\in\\b.pdf\" caption=Talvenor type=0x40"));
    EXPECT_EQ(RowCount(), 3);
}

TEST_F(FileListRemovalTest, F7ChangesNothingInTheWindow) {
    SelectRow(1);
    // What a conversion or a click would put right.
    for (const int box : {IDC_PAGES_CHECK, IDC_RESOLUTION_CHECK, IDC_OUTPUT_FOLDER_CHECK})
        ::CheckDlgButton(Dialog(), box, BST_CHECKED);
    SetText(IDC_PAGES, L",,");
    SetText(IDC_RESOLUTION, L"9999");
    SetText(IDC_OUTPUT_FOLDER, L"");
    SetText(IDC_STATUS, L"as it was");
    {
        const ControlCalls recorded(calls);
        PressListKey(VK_F7);
    }
    EXPECT_THAT(Only({"EnableWindow", "ShowWindow", "SetFocus", "CheckDlgButton", "SetWindowTextW",
                      "SetWindowPos", "LVM_SETITEM", "LVM_SETCOLUMNWIDTH", "LVM_INSERT"},
                     calls.Calls()),
                IsEmpty());
    EXPECT_THAT(Only({"MessageBoxW"}, calls.Calls()), SizeIs(1));
}

// No click brings a box of two states there, but another program may.
UINT WINAPI BetweenOnAndOff(HWND, int) {
    return BST_INDETERMINATE;
}

TEST_F(FileListRemovalTest, ABoxThatIsNotQuiteOffIsOn) {
    SelectRow(1);
    SetText(IDC_PAGES, L"1, 3");
    SetText(IDC_RESOLUTION, L"300");
    SetText(IDC_OUTPUT_FOLDER, L"D:\\out");
    const ReplacedImport isChecked("IsDlgButtonChecked", &BetweenOnAndOff);
    PressListKey(VK_F7);
    EXPECT_THAT(
        calls.Calls(),
        ElementsAre("MessageBoxW owner=main text=pdf2djvu.exe -o \"D:\\out\\b.djvu\" -v -d 300 --no-metadata "
                    "--no-outline --no-hyperlinks --no-text --monochrome -p \"1,3\" \"C:\\in\\b.pdf\" "
                    "caption=Talvenor type=0x40"));
}

TEST_F(FileListRemovalTest, F7WithoutASelectionShowsNothing) {
    SetText(IDC_STATUS, L"left over");
    PressListKey(VK_F7);
    EXPECT_THAT(calls.Calls(), IsEmpty());
    EXPECT_EQ(Text(IDC_STATUS), L"");
}

TEST_F(FileListRemovalTest, F7LeavesTheStatusLine) {
    SelectRow(1);
    SetText(IDC_STATUS, L"as it was");
    PressListKey(VK_F7);
    EXPECT_EQ(Text(IDC_STATUS), L"as it was");
}

HWND g_list = nullptr;
int WINAPI ClearSelectionMeanwhile(HWND, LPCWSTR, LPCWSTR, UINT) {
    LVITEMW item = {};
    item.stateMask = LVIS_SELECTED;
    ::SendMessageW(g_list, LVM_SETITEMSTATE, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(&item));
    return IDOK;
}

TEST_F(FileListRemovalTest, F7LooksNoFurtherOnceItHasShownTheCommandLine) {
    g_list = Control(IDC_FILE_LIST);
    const ReplacedImport box("MessageBoxW", &ClearSelectionMeanwhile);
    SelectRow(1);
    PressListKey(VK_F7);
    ASSERT_EQ(SelectedRow(), -1);
    EXPECT_EQ(Text(IDC_STATUS), L"C:\\in\\b.pdf") << "a selection that is lost meanwhile does not count";
}

TEST_F(FileListRemovalTest, AnyKeyWithoutASelectionEmptiesTheStatusLine) {
    for (const WORD key : std::initializer_list<WORD>{VK_SPACE, VK_RETURN, VK_F1, VK_SHIFT}) {
        SetText(IDC_STATUS, L"left over");
        PressListKey(key);
        // The space bar selects the focused row; there is none.
        ASSERT_EQ(SelectedRow(), -1) << key;
        EXPECT_EQ(Text(IDC_STATUS), L"") << key;
    }
}

TEST_F(FileListRemovalTest, OtherKeysLeaveTheSelectedRow) {
    SelectRow(1);
    SetText(IDC_STATUS, L"as it was");
    for (const WORD key : std::initializer_list<WORD>{VK_F1, VK_F6, VK_F8, VK_BACK, VK_INSERT, VK_ESCAPE}) {
        PressListKey(key);
    }
    EXPECT_EQ(RowCount(), 3);
    EXPECT_EQ(Text(IDC_STATUS), L"as it was");
    EXPECT_THAT(calls.Calls(), IsEmpty());
}

TEST_F(FileListRemovalTest, KeysDoNothingWhileABatchRuns) {
    StartBatch();
    SetText(IDC_STATUS, L"as it was");
    ASSERT_EQ(SelectedRow(), 0);
    PressListKey(VK_DELETE);
    PressListKey(VK_F7);
    EXPECT_EQ(RowCount(), 3);
    EXPECT_THAT(calls.Calls(), IsEmpty());
    ClearSelection();
    SetText(IDC_STATUS, L"as it was");
    PressListKey(VK_DELETE);
    EXPECT_EQ(Text(IDC_STATUS), L"as it was");
}

TEST_F(FileListRemovalTest, KeysWorkAgainOnceTheBatchIsStopped) {
    StartBatch();
    StopBatch();
    SelectRow(2);
    PressListKey(VK_DELETE);
    EXPECT_EQ(RowCount(), 2);
}

TEST_F(FileListRemovalTest, ClearingRemovesAllRowsDisablesConvertAndEmptiesTheStatusLine) {
    ::EnableWindow(Control(IDOK), TRUE);
    SelectRow(1);
    ASSERT_NE(Text(IDC_STATUS), L"");
    Click(IDC_CLEAR);
    EXPECT_EQ(RowCount(), 0);
    EXPECT_FALSE(IsEnabled(IDOK));
    EXPECT_EQ(Text(IDC_STATUS), L"");
}

TEST_F(FileListRemovalTest, ClearingTakesItsStepsInOrder) {
    // Nothing is selected, so that the list has nothing to tell about its rows.
    RECT client = {};
    ::GetClientRect(Control(IDC_FILE_LIST), &client);
    const ControlCalls recorded(calls);
    Command(IDC_CLEAR, BN_CLICKED);
    EXPECT_THAT(calls.Calls(), ElementsAre("LVM_DELETEALLITEMS 1040 0 0", "EnableWindow 1 0",
                                           "LVM_SETCOLUMNWIDTH 1040 0 " + std::to_string(client.right),
                                           "LVM_SETCOLUMNWIDTH 1040 1 0", "SetWindowTextW 1004 \"\""));
}

TEST_F(FileListRemovalTest, ClearingKeepsTheDestinationButtonsState) {
    SelectRow(1);
    ASSERT_TRUE(IsEnabled(IDC_OPEN_DESTINATION));
    Click(IDC_CLEAR);
    EXPECT_TRUE(IsEnabled(IDC_OPEN_DESTINATION));
    ::EnableWindow(Control(IDC_OPEN_DESTINATION), FALSE);
    Click(IDC_CLEAR);
    EXPECT_FALSE(IsEnabled(IDC_OPEN_DESTINATION));
}

TEST_F(FileListRemovalTest, ClearingDoesNotAskWhetherABatchRuns) {
    StartBatch();
    Command(IDC_CLEAR, BN_CLICKED);  // the button itself is disabled
    EXPECT_EQ(RowCount(), 0);
    EXPECT_TRUE(dialog->IsRunning());
}

TEST_F(FileListRemovalTest, RowsStayAfterABatch) {
    StartBatch();
    FinishBatch();
    EXPECT_THAT(Column(0), ElementsAre(L"C:\\in\\a.pdf", L"C:\\in\\b.pdf", L"C:\\in\\c.pdf"));
}

}  // namespace
