// The current row: what the list's notifications of changed rows do, and what the status line shows.
#include "tests/window/control_calls.h"
#include "tests/window/main_window_fixture.h"

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

class FileListSelectionTest : public MainWindowFixture {
protected:
    FileListSelectionTest() {
        Create();
        Drop({L"C:\\in\\a.pdf", L"C:\\in\\b.pdf", L"C:\\in\\c.pdf"});
    }

    // What the list says when something of a row has changed.
    void ReportChange(int row, UINT oldState, UINT newState, UINT kind = LVIF_STATE) {
        NMLISTVIEW change = {};
        change.hdr = {Control(IDC_FILE_LIST), IDC_FILE_LIST, static_cast<UINT>(LVN_ITEMCHANGED)};
        change.iItem = row;
        change.uChanged = kind;
        change.uOldState = oldState;
        change.uNewState = newState;
        ::SendMessageW(Dialog(), WM_NOTIFY, IDC_FILE_LIST, reinterpret_cast<LPARAM>(&change));
    }
    std::vector<std::string> ReportRecorded(int row, UINT oldState, UINT newState,
                                            ControlCalls::Answer answer = nullptr) {
        calls.Clear();
        const ControlCalls recorded(calls, std::move(answer));
        ReportChange(row, oldState, newState);
        return Only({"LVM_SETITEMSTATE", "LVM_SETSELECTIONMARK", "LVM_ENSUREVISIBLE"}, calls.Calls());
    }
    [[nodiscard]] std::vector<int> RowsWith(UINT state) const {
        std::vector<int> rows;
        for (int row = 0; row < RowCount(); ++row) {
            if (::SendMessageW(Control(IDC_FILE_LIST), LVM_GETITEMSTATE, static_cast<WPARAM>(row), state)) {
                rows.push_back(row);
            }
        }
        return rows;
    }
    void ExpectCurrent(int row) {
        EXPECT_THAT(RowsWith(LVIS_SELECTED), ElementsAre(row));
        EXPECT_THAT(RowsWith(LVIS_FOCUSED), ElementsAre(row));
        EXPECT_EQ(Text(IDC_STATUS), Cell(row, 0));
    }
};

TEST_F(FileListSelectionTest, NoRowIsSelectedAfterADrop) {
    EXPECT_EQ(SelectedRow(), -1);
    EXPECT_EQ(Text(IDC_STATUS), L"");
    EXPECT_FALSE(IsEnabled(IDC_OPEN_DESTINATION));
}

TEST_F(FileListSelectionTest, ARowThatGainsTheFocusBecomesTheSelectedOne) {
    SetRowState(1, LVIS_FOCUSED, LVIS_FOCUSED);
    ExpectCurrent(1);
    EXPECT_EQ(::SendMessageW(Control(IDC_FILE_LIST), LVM_GETSELECTIONMARK, 0, 0), 1);
    SetRowState(2, LVIS_FOCUSED, LVIS_FOCUSED);
    ExpectCurrent(2);
}

TEST_F(FileListSelectionTest, ArrowKeysMoveTheCurrentRow) {
    SelectRow(0);
    PressListKey(VK_DOWN);
    ExpectCurrent(1);
    PressListKey(VK_DOWN);
    ExpectCurrent(2);
    PressListKey(VK_UP);
    ExpectCurrent(1);
}

TEST_F(FileListSelectionTest, SelectingAnotherRowLeavesOnlyThatOneSelected) {
    SelectRow(0);
    SelectRow(2);
    ExpectCurrent(2);
}

TEST_F(FileListSelectionTest, ARowThatLosesItsSelectionIsNotSelectedAgain) {
    SelectRow(1);
    SetRowState(-1, 0, LVIS_SELECTED);
    EXPECT_EQ(SelectedRow(), -1) << "the row still has the focus, but has not gained it";
}

TEST_F(FileListSelectionTest, AClickOnARowMakesItCurrent) {
    ::ShowWindow(Dialog(), SW_SHOWNA);
    RECT row = {LVIR_LABEL, 0, 0, 0};
    ::SendMessageW(Control(IDC_FILE_LIST), LVM_GETITEMRECT, 2, reinterpret_cast<LPARAM>(&row));
    const LPARAM point = MAKELPARAM(row.left + 5, (row.top + row.bottom) / 2);
    // The list waits for the button's end before it answers.
    ::PostMessageW(Control(IDC_FILE_LIST), WM_LBUTTONUP, 0, point);
    ::SendMessageW(Control(IDC_FILE_LIST), WM_LBUTTONDOWN, MK_LBUTTON, point);
    PumpPending();
    ExpectCurrent(2);
}

TEST_F(FileListSelectionTest, SelectingTakesItsStepsInOrder) {
    SelectRow(1);
    EXPECT_THAT(ReportRecorded(1, 0, LVIS_FOCUSED),
                ElementsAre("LVM_SETITEMSTATE 1040 row=1 state=3 mask=3", "LVM_SETSELECTIONMARK 1040 0 1",
                            "LVM_ENSUREVISIBLE 1040 1 0"));
}

using Change = std::pair<UINT, UINT>;  // old state, new state

TEST_F(FileListSelectionTest, ARowWithoutTheFocusIsNotSelected) {
    for (const auto& [oldState, newState] :
         {Change{0, 0}, {0, LVIS_SELECTED}, {LVIS_FOCUSED, 0}, {LVIS_SELECTED, 0}}) {
        EXPECT_THAT(ReportRecorded(1, oldState, newState), IsEmpty()) << oldState << " to " << newState;
    }
}

TEST_F(FileListSelectionTest, ARowWithTheFocusIsSelectedWhateverItWas) {
    for (const auto& [oldState, newState] : {Change{0, LVIS_FOCUSED},
                                             {LVIS_FOCUSED, LVIS_FOCUSED},
                                             {LVIS_SELECTED, LVIS_SELECTED | LVIS_FOCUSED},
                                             {LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED}}) {
        EXPECT_THAT(ReportRecorded(1, oldState, newState), Contains("LVM_ENSUREVISIBLE 1040 1 0"))
            << oldState << " to " << newState;
    }
}

TEST_F(FileListSelectionTest, ARowThatIsJustBeingDeselectedIsNotSelectedAgain) {
    EXPECT_THAT(ReportRecorded(1, LVIS_FOCUSED | LVIS_SELECTED, LVIS_FOCUSED), IsEmpty());
}

TEST_F(FileListSelectionTest, AChangeOfAnyKindCounts) {
    for (const UINT kind : {UINT{LVIF_TEXT}, UINT{LVIF_IMAGE}, 0u}) {
        SetRowState(-1, 0, LVIS_SELECTED | LVIS_FOCUSED);
        SetText(IDC_STATUS, L"as it was");
        ReportChange(1, LVIS_FOCUSED, LVIS_FOCUSED, kind);
        ExpectCurrent(1);
        ReportChange(0, 0, 0, kind);
        EXPECT_EQ(Text(IDC_STATUS), L"C:\\in\\a.pdf") << kind;
    }
}

TEST_F(FileListSelectionTest, MarkAndScrollingNeedTheSelectionToSucceed) {
    SelectRow(1);
    EXPECT_THAT(ReportRecorded(1, 0, LVIS_FOCUSED,
                               [](HWND, UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
                                   if (message == LVM_SETITEMSTATE) return FALSE;
                                   return std::nullopt;
                               }),
                ElementsAre("LVM_SETITEMSTATE 1040 row=1 state=3 mask=3"));
}

TEST_F(FileListSelectionTest, AListOfSeveralSelectionsIsClearedFirst) {
    AllowSeveralSelectedRows();
    SelectRow(1);
    EXPECT_EQ(ReportRecorded(1, 0, LVIS_FOCUSED).front(), "LVM_SETITEMSTATE 1040 row=-1 state=0 mask=2");
    EXPECT_THAT(RowsWith(LVIS_SELECTED), ElementsAre(1));
}

TEST_F(FileListSelectionTest, TheCurrentRowIsScrolledIntoView) {
    std::vector<std::wstring> many;
    for (int number = 0; number < 100; ++number)
        many.push_back(L"C:\\many\\" + std::to_wstring(number) + L".pdf");
    Drop(many);
    SetRowState(90, LVIS_FOCUSED, LVIS_FOCUSED);
    const auto top = static_cast<int>(::SendMessageW(Control(IDC_FILE_LIST), LVM_GETTOPINDEX, 0, 0));
    const auto seen = static_cast<int>(::SendMessageW(Control(IDC_FILE_LIST), LVM_GETCOUNTPERPAGE, 0, 0));
    EXPECT_LE(top, 90);
    EXPECT_LT(90, top + seen);
}

TEST_F(FileListSelectionTest, EveryChangeOfARowShowsItsPathAndEnablesTheDestination) {
    ReportChange(1, LVIS_SELECTED, 0);
    EXPECT_EQ(Text(IDC_STATUS), L"C:\\in\\b.pdf");
    EXPECT_TRUE(IsEnabled(IDC_OPEN_DESTINATION));
}

TEST_F(FileListSelectionTest, WithAnOutputFolderAChangeLeavesTheDestinationButton) {
    ::CheckDlgButton(Dialog(), IDC_OUTPUT_FOLDER_CHECK, BST_CHECKED);
    ReportChange(1, 0, LVIS_SELECTED);
    EXPECT_FALSE(IsEnabled(IDC_OPEN_DESTINATION));
    EXPECT_EQ(Text(IDC_STATUS), L"C:\\in\\b.pdf");
    ::EnableWindow(Control(IDC_OPEN_DESTINATION), TRUE);
    ReportChange(1, 0, LVIS_SELECTED);
    EXPECT_TRUE(IsEnabled(IDC_OPEN_DESTINATION));
}

TEST_F(FileListSelectionTest, AChangeOfNoRowEmptiesTheStatusLineAndHidesTheDurations) {
    SelectRow(1);
    ::SendMessageW(Control(IDC_FILE_LIST), LVM_SETCOLUMNWIDTH, 0, 200);
    ::SendMessageW(Control(IDC_FILE_LIST), LVM_SETCOLUMNWIDTH, 1, 100);
    ReportChange(-1, 0, LVIS_SELECTED);
    EXPECT_EQ(Text(IDC_STATUS), L"");
    RECT client = {};
    ::GetClientRect(Control(IDC_FILE_LIST), &client);
    EXPECT_EQ(ColumnWidth(0), client.right);
    EXPECT_EQ(ColumnWidth(1), 0);
    EXPECT_EQ(SelectedRow(), 1) << "the selection was none of its business";
}

TEST_F(FileListSelectionTest, NoRowThatGainsTheFocusClearsTheSelection) {
    SelectRow(1);
    EXPECT_THAT(ReportRecorded(-1, 0, LVIS_FOCUSED),
                ElementsAre("LVM_SETITEMSTATE 1040 row=-1 state=0 mask=2"));
    EXPECT_EQ(SelectedRow(), -1);
    EXPECT_EQ(Text(IDC_STATUS), L"");
}

class FileListLongPathTest : public MainWindowFixture, public testing::WithParamInterface<int> {};

TEST_P(FileListLongPathTest, IsReadBackWhole) {
    Create();
    std::wstring path = L"C:\\";
    while (static_cast<int>(path.size()) < GetParam()) path += static_cast<wchar_t>(L'a' + path.size() % 26);
    LVITEMW item = {};
    item.mask = LVIF_TEXT;
    item.pszText = path.data();
    ::SendMessageW(Control(IDC_FILE_LIST), LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
    SelectRow(0);
    EXPECT_EQ(Text(IDC_STATUS), path);
}

INSTANTIATE_TEST_SUITE_P(Lengths, FileListLongPathTest,
                         testing::Values(253, 254, 255, 256, 257, 259, 260, 510, 511, 512, 1'023, 5'000));

TEST_F(FileListSelectionTest, APathIsAskedForWithTwiceTheRoomUntilItFits) {
    // 255 characters fill the first buffer, of 256, to its last place, and could have been cut.
    for (const auto& [length, requests] : {std::pair<std::size_t, std::size_t>{254, 1}, {255, 2}, {511, 3}}) {
        Command(IDC_CLEAR, BN_CLICKED);
        std::wstring path(length, L'x');
        LVITEMW item = {};
        item.mask = LVIF_TEXT;
        item.pszText = path.data();
        ::SendMessageW(Control(IDC_FILE_LIST), LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
        calls.Clear();
        const ControlCalls recorded(calls);
        ReportChange(0, 0, LVIS_SELECTED);
        const std::vector<std::string> all = {"LVM_GETITEMTEXTW 1040 row=0 column=0 size=256",
                                              "LVM_GETITEMTEXTW 1040 row=0 column=0 size=512",
                                              "LVM_GETITEMTEXTW 1040 row=0 column=0 size=1024"};
        EXPECT_EQ(
            Only({"LVM_GETITEMTEXTW"}, calls.Calls()),
            (std::vector<std::string>{all.begin(), all.begin() + static_cast<std::ptrdiff_t>(requests)}))
            << length << " characters";
    }
}

}  // namespace
