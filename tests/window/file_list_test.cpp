// The list of files as it is after set-up, its rows' texts, and the current row.
#include "tests/window/main_window_fixture.h"

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

class FileListTest : public MainWindowFixture {
protected:
    FileListTest() { Create(); }
};

TEST_F(FileListTest, EveryRowHasThePagePicture) {
    Destroy();
    std::vector<HICON> pages, added;
    const auto load = Replace<decltype(::LoadImageW)>(
        "LoadImageW", [&](auto original, HINSTANCE module, LPCWSTR name, auto... others) {
            const HANDLE loaded = original(module, name, others...);
            if (name == MAKEINTRESOURCEW(IDI_PAGE)) pages.push_back(static_cast<HICON>(loaded));
            return loaded;
        });
    const auto add = Replace<decltype(::ImageList_ReplaceIcon)>(
        "ImageList_ReplaceIcon", [&](auto original, HIMAGELIST images, int index, HICON icon) {
            added.push_back(icon);
            return original(images, index, icon);
        });
    Create();
    ASSERT_EQ(pages.size(), 1u);
    EXPECT_NE(pages.front(), nullptr);
    EXPECT_EQ(added, pages);
    const auto images = reinterpret_cast<HIMAGELIST>(SendList(LVM_GETIMAGELIST, LVSIL_SMALL));
    EXPECT_EQ(::ImageList_GetImageCount(images), 1);
    Drop({L"C:\\in\\a.pdf", L"C:\\in\\b.pdf"});
    for (int row = 0; row < 2; ++row) {
        LVITEMW item = {};
        item.mask = LVIF_IMAGE;
        item.iItem = row;
        item.iImage = -1;
        SendList(LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
        EXPECT_EQ(item.iImage, 0);
    }
}

TEST_F(FileListTest, RowsDoWithoutPicturesWhenThereIsNoImageList) {
    Destroy();
    const auto create = Replace<decltype(::ImageList_Create)>(
        "ImageList_Create", [](int, int, UINT, int, int) -> HIMAGELIST { return nullptr; });
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
        NMLISTVIEW change = {};
        change.hdr = {Control(IDC_FILE_LIST), IDC_FILE_LIST, static_cast<UINT>(LVN_ITEMCHANGED)};
        EXPECT_EQ(Recorded(
                      [&] {
                          ::SendMessageW(Dialog(), WM_NOTIFY, IDC_FILE_LIST,
                                         reinterpret_cast<LPARAM>(&change));
                      },
                      {"LVM_GETITEMTEXTW"}),
                  expected);
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

    // The kind of the change is left out: any counts.
    std::vector<std::string> Report(int row, UINT oldState, UINT newState,
                                    ControlCalls::Answer answer = nullptr) {
        NMLISTVIEW change = {};
        change.hdr = {Control(IDC_FILE_LIST), IDC_FILE_LIST, static_cast<UINT>(LVN_ITEMCHANGED)};
        change.iItem = row;
        change.uOldState = oldState;
        change.uNewState = newState;
        return Recorded(
            [&] { ::SendMessageW(Dialog(), WM_NOTIFY, IDC_FILE_LIST, reinterpret_cast<LPARAM>(&change)); },
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

TEST_F(FileListCurrentRowTest, IsNoneAfterADrop) {
    EXPECT_EQ(SelectedRow(), -1);
    EXPECT_EQ(Text(IDC_STATUS), L"");
    EXPECT_FALSE(IsEnabled(IDC_OPEN_DESTINATION));
}

TEST_F(FileListCurrentRowTest, IsTheOneThatGainsTheFocusOrIsSelected) {
    SetRowState(1, LVIS_FOCUSED, LVIS_FOCUSED);
    ExpectCurrent(1);
    EXPECT_EQ(SendList(LVM_GETSELECTIONMARK), 1);
    SetRowState(2, LVIS_FOCUSED, LVIS_FOCUSED);
    ExpectCurrent(2);
    SelectRow(0);
    ExpectCurrent(0);
}

TEST_F(FileListCurrentRowTest, FollowsTheArrowKeys) {
    SelectRow(0);
    PressListKey(VK_DOWN);
    ExpectCurrent(1);
    PressListKey(VK_DOWN);
    ExpectCurrent(2);
    PressListKey(VK_UP);
    ExpectCurrent(1);
}

TEST_F(FileListCurrentRowTest, FollowsAClick) {
    ::ShowWindow(Dialog(), SW_SHOWNA);
    RECT row = {LVIR_LABEL, 0, 0, 0};
    SendList(LVM_GETITEMRECT, 2, reinterpret_cast<LPARAM>(&row));
    const LPARAM point = MAKELPARAM(row.left + 5, (row.top + row.bottom) / 2);
    // The list waits for the button's end before it answers.
    ::PostMessageW(Control(IDC_FILE_LIST), WM_LBUTTONUP, 0, point);
    SendList(WM_LBUTTONDOWN, MK_LBUTTON, point);
    PumpPending();
    ExpectCurrent(2);
}

TEST_F(FileListCurrentRowTest, IsNotTheOneThatLosesItsSelection) {
    SelectRow(1);
    ClearSelection();
    EXPECT_EQ(SelectedRow(), -1) << "the row still has the focus, but has not gained it";
}

TEST_F(FileListCurrentRowTest, IsSelectedThenMarkedThenShown) {
    SelectRow(1);
    EXPECT_THAT(Report(1, 0, LVIS_FOCUSED),
                ElementsAre("LVM_SETITEMSTATE 1040 row=1 state=3 mask=3", "LVM_SETSELECTIONMARK 1040 0 1",
                            "LVM_ENSUREVISIBLE 1040 1 0"));
}

using Change = std::pair<UINT, UINT>;  // old state, new state

TEST_F(FileListCurrentRowTest, IsNotChangedByARowWithoutTheFocusOrOneJustBeingDeselected) {
    for (const auto& [oldState, newState] : {Change{0, 0},
                                             {0, LVIS_SELECTED},
                                             {LVIS_FOCUSED, 0},
                                             {LVIS_SELECTED, 0},
                                             {LVIS_FOCUSED | LVIS_SELECTED, LVIS_FOCUSED}}) {
        EXPECT_THAT(Report(1, oldState, newState), IsEmpty()) << oldState << " to " << newState;
    }
}

TEST_F(FileListCurrentRowTest, IsTheOneWithTheFocusWhateverThatWas) {
    for (const auto& [oldState, newState] : {Change{0, LVIS_FOCUSED},
                                             {LVIS_FOCUSED, LVIS_FOCUSED},
                                             {LVIS_SELECTED, LVIS_SELECTED | LVIS_FOCUSED},
                                             {LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED}}) {
        EXPECT_THAT(Report(1, oldState, newState), Contains("LVM_ENSUREVISIBLE 1040 1 0"))
            << oldState << " to " << newState;
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

TEST_F(FileListCurrentRowTest, IsScrolledIntoView) {
    std::vector<std::wstring> many;
    for (int number = 0; number < 100; ++number)
        many.push_back(L"C:\\many\\" + std::to_wstring(number) + L".pdf");
    Drop(many);
    SetRowState(90, LVIS_FOCUSED, LVIS_FOCUSED);
    EXPECT_LE(SendList(LVM_GETTOPINDEX), 90);
    EXPECT_LT(90, SendList(LVM_GETTOPINDEX) + SendList(LVM_GETCOUNTPERPAGE));
}

TEST_F(FileListCurrentRowTest, IsNoneWhenNoRowGainsTheFocus) {
    SelectRow(1);
    EXPECT_THAT(Report(-1, 0, LVIS_FOCUSED), ElementsAre("LVM_SETITEMSTATE 1040 row=-1 state=0 mask=2"));
    EXPECT_EQ(SelectedRow(), -1);
    EXPECT_EQ(Text(IDC_STATUS), L"");
}

}  // namespace
