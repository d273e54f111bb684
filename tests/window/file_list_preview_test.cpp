// What F7 shows: the command line of which row, and the options as they are in their controls.
#include "tests/window/forwarding_import.h"
#include "tests/window/main_window_fixture.h"

namespace {

using testing::ElementsAre;

std::vector<int> g_read;  // ids of controls, in the order in which they were asked

UINT WINAPI RecordBox(HWND dialog, int id) {
    g_read.push_back(id);
    return original<&RecordBox>(dialog, id);
}

int WINAPI RecordText(HWND control, LPWSTR text, int size) {
    g_read.push_back(::GetDlgCtrlID(control));
    return original<&RecordText>(control, text, size);
}

class FileListPreviewTest : public MainWindowFixture {
protected:
    FileListPreviewTest() {
        Create();
        Drop({L"C:\\in\\a.pdf", L"C:\\in\\b.pdf", L"C:\\in\\c.pdf"});
    }

    [[nodiscard]] int FocusedRow() const {
        return static_cast<int>(
            ::SendMessageW(Control(IDC_FILE_LIST), LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_FOCUSED));
    }
    // The box with this command line.
    static std::string Preview(const std::string& commandLine) {
        return "MessageBoxW owner=main text=" + commandLine + " caption=Talvenor type=0x40";
    }
};

TEST_F(FileListPreviewTest, OfSeveralSelectedRowsTheFirstIsShownWhereverTheFocusIs) {
    AllowSeveralSelectedRows();
    SelectRow(0);
    SetRowState(0, 0, LVIS_SELECTED);
    SetRowState(2, LVIS_SELECTED, LVIS_SELECTED);
    SetRowState(1, LVIS_SELECTED, LVIS_SELECTED);
    ASSERT_EQ(FocusedRow(), 0);
    ASSERT_EQ(SelectedRow(), 1);
    PressListKey(VK_F7);
    EXPECT_THAT(calls.Calls(),
                ElementsAre(Preview("pdf2djvu.exe -o \"C:\\in\\b.djvu\" -v  \"C:\\in\\b.pdf\"")));
}

TEST_F(FileListPreviewTest, ThePathIsTheRowsAndNotTheStatusLines) {
    SelectRow(1);
    SetText(IDC_STATUS, L"C:\\in\\c.pdf");
    PressListKey(VK_F7);
    EXPECT_THAT(calls.Calls(),
                ElementsAre(Preview("pdf2djvu.exe -o \"C:\\in\\b.djvu\" -v  \"C:\\in\\b.pdf\"")));
}

TEST_F(FileListPreviewTest, TheOutputFolderKeepsItsBlanks) {
    SelectRow(0);
    ::CheckDlgButton(Dialog(), IDC_OUTPUT_FOLDER_CHECK, BST_CHECKED);
    SetText(IDC_OUTPUT_FOLDER, L"  D:\\out  ");
    PressListKey(VK_F7);
    EXPECT_THAT(calls.Calls(),
                ElementsAre(Preview("pdf2djvu.exe -o \"  D:\\out  \\a.djvu\" -v  \"C:\\in\\a.pdf\"")));
}

TEST_F(FileListPreviewTest, EachBoxIsReadWithWhatBelongsToItFromTheTopOfTheOptionsDown) {
    SelectRow(0);
    for (const int box : {IDC_PAGES_CHECK, IDC_RESOLUTION_CHECK, IDC_OUTPUT_FOLDER_CHECK}) {
        ::CheckDlgButton(Dialog(), box, BST_CHECKED);
    }
    const auto boxes = ReplaceAndForward<&RecordBox>("IsDlgButtonChecked");
    const auto texts = ReplaceAndForward<&RecordText>("GetWindowTextW");
    SetText(IDC_PAGES, L"1");
    SetText(IDC_RESOLUTION, L"300");
    g_read.clear();
    PressListKey(VK_F7);
    EXPECT_THAT(g_read,
                ElementsAre(IDC_PAGES_CHECK, IDC_PAGES, IDC_RESOLUTION_CHECK, IDC_RESOLUTION, IDC_NO_METADATA,
                            IDC_NO_OUTLINE, IDC_NO_HYPERLINKS, IDC_NO_TEXT, IDC_LINES, IDC_MONOCHROME,
                            IDC_EXTRA_OPTIONS, IDC_OUTPUT_FOLDER_CHECK, IDC_OUTPUT_FOLDER));
}

TEST_F(FileListPreviewTest, TheResolutionKeepsItsZeros) {
    SelectRow(0);
    ::CheckDlgButton(Dialog(), IDC_RESOLUTION_CHECK, BST_CHECKED);
    SetText(IDC_RESOLUTION, L"0300");
    PressListKey(VK_F7);
    EXPECT_THAT(calls.Calls(),
                ElementsAre(Preview("pdf2djvu.exe -o \"C:\\in\\a.djvu\" -v -d 0300 \"C:\\in\\a.pdf\"")));
}

}  // namespace
