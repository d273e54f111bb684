// The keys of the list: Delete, and F7, which shows the command line of the selected row with the options as
// they are in their controls.
#include "tests/window/batch_fixture.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class FileListKeysTest : public BatchFixture {
protected:
    FileListKeysTest() { Drop({L"C:\\in\\a.pdf", L"C:\\in\\b.pdf", L"C:\\in\\c.pdf"}); }

    static std::string Preview(const std::string& commandLine) { return MessageBoxCall(commandLine, "0x40"); }
};

constexpr char kLineOfB[] = "pdf2djvu.exe -o \"C:\\in\\b.djvu\" -v  \"C:\\in\\b.pdf\"";

TEST_F(FileListKeysTest, DeleteRemovesTheFirstSelectedRowAndNoneWithoutASelection) {
    PressListKey(VK_DELETE);
    EXPECT_EQ(RowCount(), 3);
    AllowSeveralSelectedRows();
    SetRowState(2, LVIS_SELECTED, LVIS_SELECTED);
    SetRowState(1, LVIS_SELECTED, LVIS_SELECTED);
    PressListKey(VK_DELETE);
    EXPECT_THAT(Column(0), ElementsAre(L"C:\\in\\a.pdf", L"C:\\in\\c.pdf"));
}

TEST_F(FileListKeysTest, OtherKeysEmptyTheStatusLineWithoutASelectionAndLeaveASelectedRow) {
    for (const WORD key : std::initializer_list<WORD>{VK_SPACE, VK_RETURN, VK_F1, VK_F7, VK_SHIFT}) {
        SetText(IDC_STATUS, L"left over");
        PressListKey(key);
        // The space bar selects the focused row; there is none.
        ASSERT_EQ(SelectedRow(), -1) << key;
        EXPECT_EQ(Text(IDC_STATUS), L"") << key;
    }
    SelectRow(1);
    SetText(IDC_STATUS, L"as it was");
    for (const WORD key : std::initializer_list<WORD>{VK_F1, VK_F6, VK_F8, VK_BACK, VK_INSERT, VK_ESCAPE}) {
        PressListKey(key);
    }
    EXPECT_EQ(RowCount(), 3);
    EXPECT_EQ(Text(IDC_STATUS), L"as it was");
    EXPECT_THAT(calls.Calls(), IsEmpty());
}

TEST_F(FileListKeysTest, NoKeyDoesAnythingWhileABatchRuns) {
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
    PressStop();
    SelectRow(2);
    PressListKey(VK_DELETE);
    EXPECT_EQ(RowCount(), 2);
}

TEST_F(FileListKeysTest, F7ShowsTheCommandLineAndChangesNothingInTheWindow) {
    SelectRow(1);
    // What a conversion or a click would put right, and a status line of another row.
    Check(IDC_PAGES_CHECK);
    Check(IDC_RESOLUTION_CHECK);
    Check(IDC_OUTPUT_FOLDER_CHECK);
    SetText(IDC_PAGES, L",,");
    SetText(IDC_RESOLUTION, L"0300");
    SetText(IDC_OUTPUT_FOLDER, L"  D:\\out  ");
    SetText(IDC_STATUS, L"C:\\in\\c.pdf");
    const std::vector<std::string> done = Recorded([&] { PressListKey(VK_F7); });
    EXPECT_THAT(done, ElementsAre("LVM_GETITEMTEXTW 1040 row=1 column=0 size=256",
                                  Preview("pdf2djvu.exe -o \"  D:\\out  \\b.djvu\" -v -d 0300 -p \",,\" "
                                          "\"C:\\in\\b.pdf\"")));
}

// No click brings a check box of two states there, but another program may.
TEST_F(FileListKeysTest, AnIndeterminateCheckBoxCountsAsChecked) {
    SelectRow(1);
    SetText(IDC_PAGES, L"1, 3");
    SetText(IDC_RESOLUTION, L"300");
    SetText(IDC_OUTPUT_FOLDER, L"D:\\out");
    const auto isChecked =
        REPLACE_IMPORT(IsDlgButtonChecked, [](HWND, int) -> UINT { return BST_INDETERMINATE; });
    PressListKey(VK_F7);
    EXPECT_THAT(calls.Calls(), ElementsAre(Preview(
                                   "pdf2djvu.exe -o \"D:\\out\\b.djvu\" -v -d 300 --no-metadata --no-outline "
                                   "--no-hyperlinks --no-text --monochrome -p \"1,3\" \"C:\\in\\b.pdf\"")));
}

TEST_F(FileListKeysTest, F7LooksNoFurtherOnceItHasShownTheCommandLine) {
    const auto messageBox = REPLACE_IMPORT(MessageBoxW, [this](HWND, LPCWSTR, LPCWSTR, UINT) {
        ClearSelection();
        return IDOK;
    });
    SelectRow(1);
    PressListKey(VK_F7);
    ASSERT_EQ(SelectedRow(), -1);
    EXPECT_EQ(Text(IDC_STATUS), L"C:\\in\\b.pdf") << "a selection that is lost meanwhile does not count";
}

TEST_F(FileListKeysTest, F7ShowsTheFirstOfSeveralSelectedRowsWhereverTheFocusIs) {
    AllowSeveralSelectedRows();
    SelectRow(0);
    SetRowState(0, 0, LVIS_SELECTED);
    SetRowState(2, LVIS_SELECTED, LVIS_SELECTED);
    SetRowState(1, LVIS_SELECTED, LVIS_SELECTED);
    ASSERT_EQ(SendList(LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_FOCUSED), 0);
    PressListKey(VK_F7);
    EXPECT_THAT(calls.Calls(), ElementsAre(Preview(kLineOfB)));
}

TEST_F(FileListKeysTest, F7ReadsEachCheckBoxWithWhatBelongsToItFromTheTopOfTheOptionsDown) {
    SelectRow(0);
    for (const int id : {IDC_PAGES_CHECK, IDC_RESOLUTION_CHECK, IDC_OUTPUT_FOLDER_CHECK}) Check(id);
    std::vector<int> read;
    const auto checkBoxes = REPLACE_IMPORT(IsDlgButtonChecked, [&](auto original, HWND owner, int id) {
        read.push_back(id);
        return original(owner, id);
    });
    const auto texts =
        REPLACE_IMPORT(GetWindowTextW, [&](auto original, HWND control, LPWSTR text, int size) {
            read.push_back(::GetDlgCtrlID(control));
            return original(control, text, size);
        });
    PressListKey(VK_F7);
    EXPECT_THAT(read,
                ElementsAre(IDC_PAGES_CHECK, IDC_PAGES, IDC_RESOLUTION_CHECK, IDC_RESOLUTION, IDC_NO_METADATA,
                            IDC_NO_OUTLINE, IDC_NO_HYPERLINKS, IDC_NO_TEXT, IDC_LINES, IDC_MONOCHROME,
                            IDC_EXTRA_OPTIONS, IDC_OUTPUT_FOLDER_CHECK, IDC_OUTPUT_FOLDER));
}

}  // namespace
