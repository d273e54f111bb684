// The list of files: its rows' texts, and the current row. That it gets the page's picture is a step of the
// set-up.
#include "tests/window/main_window_fixture.h"

namespace {

using testing::ElementsAre;

class FileListTest : public MainWindowFixture {
protected:
    FileListTest() { Create(); }
};

TEST_F(FileListTest, RowsDoWithoutPicturesWhenThereIsNoImageList) {
    Destroy();
    const auto create =
        REPLACE_IMPORT(ImageList_Create, [](int, int, UINT, int, int) -> HIMAGELIST { return nullptr; });
    EXPECT_EQ(Recorded([&] { Create(); }).back(), "BM_SETIMAGE 1028 1") << "the set-up did not go on";
    EXPECT_EQ(SendList(LVM_GETIMAGELIST, LVSIL_SMALL), 0);
}

TEST_F(FileListTest, APathIsReadBackWholeWithTwiceTheRoomUntilItFits) {
    // 255 characters fill the first buffer, of 256, to its last place, and could have been cut.
    static const struct {
        std::size_t length;
        std::vector<int> sizes;
    } kCases[] = {{253, {256}},
                  {254, {256}},
                  {255, {256, 512}},
                  {257, {256, 512}},
                  {510, {256, 512}},
                  {511, {256, 512, 1024}},
                  {5'000, {256, 512, 1024, 2048, 4096, 8192}}};
    for (const auto& row : kCases) {
        SCOPED_TRACE(row.length);
        SendList(LVM_DELETEALLITEMS);
        std::wstring path = L"C:\\";
        while (path.size() < row.length) path += static_cast<wchar_t>(L'a' + path.size() % 26);
        InsertRow(path);
        std::vector<std::string> expected;
        for (const int size : row.sizes) {
            expected.push_back("LVM_GETITEMTEXTW 1040 row=0 column=0 size=" + std::to_string(size));
        }
        EXPECT_EQ(Recorded([&] { ReportChange(0); }, {"LVM_GETITEMTEXTW"}), expected);
        EXPECT_EQ(Text(IDC_STATUS), path);
    }
}

// Of an owner that leaves all messages to the control.
class NoMessages final : public CMessageMap {
    bool ProcessWindowMessage(HWND, UINT, WPARAM, LPARAM, LRESULT&, DWORD) override { return false; }
};

TEST_F(FileListTest, TheTextOfAnyColumnIsRead) {
    const HWND control = ::CreateWindowExW(0, WC_LISTVIEWW, L"", WS_CHILD | LVS_REPORT, 0, 0, 100, 100,
                                           Dialog(), nullptr, nullptr, nullptr);
    NoMessages owner;
    CFileList list(owner, 0);
    ASSERT_TRUE(list.SubclassWindow(control));
    LVCOLUMNW column = {};
    for (const WPARAM place : {0u, 1u})
        list.Send(LVM_INSERTCOLUMNW, place, reinterpret_cast<LPARAM>(&column));
    LVITEMW row = {};
    list.Send(LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&row));
    list.SetDurationText(0, L"00:00:07");
    std::wstring text;
    EXPECT_EQ(list.GetListItemText(0, 1, text), 8);
    EXPECT_EQ(text, L"00:00:07");
}

TEST_F(FileListTest, TheTextIsEmptyWithoutAList) {
    NoMessages owner;
    const CFileList list(owner, 0);
    std::wstring text = L"before";
    EXPECT_EQ(list.GetListItemText(0, 0, text), 0);
    EXPECT_EQ(text, L"");
}

// What makes a row the current one: the list's notifications of changed rows.
class FileListCurrentRowTest : public FileListTest {
protected:
    FileListCurrentRowTest() { Drop({L"C:\\in\\a.pdf", L"C:\\in\\b.pdf", L"C:\\in\\c.pdf"}); }

    std::vector<std::string> Report(int row, UINT oldState, UINT newState,
                                    ControlCalls::Answer answer = nullptr) {
        return Recorded([&] { ReportChange(row, oldState, newState); },
                        {"LVM_SETITEMSTATE", "LVM_SETSELECTIONMARK", "LVM_ENSUREVISIBLE"}, std::move(answer));
    }
    [[nodiscard]] std::vector<int> RowsWith(UINT state) const {
        std::vector<int> rows;
        for (int row = 0; row < RowCount(); ++row) {
            if (SendList(LVM_GETITEMSTATE, static_cast<WPARAM>(row), state)) rows.push_back(row);
        }
        return rows;
    }
    void ExpectCurrent(int row) {
        EXPECT_THAT(RowsWith(LVIS_SELECTED), ElementsAre(row));
        EXPECT_THAT(RowsWith(LVIS_FOCUSED), ElementsAre(row));
        EXPECT_EQ(Text(IDC_STATUS), Cell(row, 0));
    }
};

TEST_F(FileListCurrentRowTest, IsTheOneThatGainsTheFocusOrIsSelected) {
    SetRowState(1, LVIS_FOCUSED, LVIS_FOCUSED);
    ExpectCurrent(1);
    EXPECT_EQ(SendList(LVM_GETSELECTIONMARK), 1);
    SetRowState(2, LVIS_FOCUSED, LVIS_FOCUSED);
    ExpectCurrent(2);
    SelectRow(0);
    ExpectCurrent(0);
}

TEST_F(FileListCurrentRowTest, IsSelectedThenMarkedThenShown) {
    SelectRow(1);
    EXPECT_THAT(Report(1, 0, LVIS_FOCUSED),
                ElementsAre("LVM_SETITEMSTATE 1040 row=1 state=3 mask=3", "LVM_SETSELECTIONMARK 1040 0 1",
                            "LVM_ENSUREVISIBLE 1040 1 0"));
}

TEST_F(FileListCurrentRowTest, IsTheOneWithTheFocusUnlessItIsJustBeingDeselected) {
    constexpr UINT kBoth = LVIS_FOCUSED | LVIS_SELECTED;
    static constexpr struct {
        UINT oldState, newState;
        bool becomesCurrent;
    } kChanges[] = {{0, 0, false},
                    {0, LVIS_SELECTED, false},
                    {LVIS_FOCUSED, 0, false},
                    {LVIS_SELECTED, 0, false},
                    {kBoth, LVIS_FOCUSED, false},
                    {0, LVIS_FOCUSED, true},
                    {LVIS_SELECTED, LVIS_FOCUSED, true},
                    {LVIS_FOCUSED, LVIS_FOCUSED, true},
                    {LVIS_SELECTED, kBoth, true},
                    {LVIS_FOCUSED, kBoth, true}};
    for (const auto& [oldState, newState, becomesCurrent] : kChanges) {
        EXPECT_EQ(Report(1, oldState, newState).empty(), !becomesCurrent) << oldState << " to " << newState;
    }
}

TEST_F(FileListCurrentRowTest, IsNeitherMarkedNorShownWhenItCannotBeSelected) {
    SelectRow(1);
    EXPECT_THAT(Report(1, 0, LVIS_FOCUSED,
                       [](HWND, UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
                           if (message == LVM_SETITEMSTATE) return FALSE;
                           return std::nullopt;
                       }),
                ElementsAre("LVM_SETITEMSTATE 1040 row=1 state=3 mask=3"));
}

TEST_F(FileListCurrentRowTest, IsTheOnlyOneInAListOfSeveralSelections) {
    AllowSeveralSelectedRows();
    SelectRow(1);
    EXPECT_EQ(Report(1, 0, LVIS_FOCUSED).front(), "LVM_SETITEMSTATE 1040 row=-1 state=0 mask=2");
    EXPECT_THAT(RowsWith(LVIS_SELECTED), ElementsAre(1));
}

TEST_F(FileListCurrentRowTest, IsNoneWhenNoRowGainsTheFocus) {
    SelectRow(1);
    EXPECT_THAT(Report(-1, 0, LVIS_FOCUSED), ElementsAre("LVM_SETITEMSTATE 1040 row=-1 state=0 mask=2"));
    EXPECT_EQ(SelectedRow(), -1);
    EXPECT_EQ(Text(IDC_STATUS), L"");
}

}  // namespace
