// The window by mouse: clicks on what is disabled, on rows, on nothing; tips under the pointer.
#include "tests/app/input_fixture.h"

#include <commctrl.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Mouse : public InputTest {
protected:
    // The text of the program's tip that is shown now; empty without one.
    [[nodiscard]] std::wstring ShownTip() const {
        for (HWND tip = nullptr;
             (tip = ::FindWindowExW(nullptr, tip, L"tooltips_class32", nullptr)) != nullptr;) {
            DWORD process = 0;
            ::GetWindowThreadProcessId(tip, &process);
            if (process == Process().Id() && ::IsWindowVisible(tip)) return driver::Text(tip);
        }
        return std::wstring();
    }
    // Which controls differ from how they were: enabled or not, ticked or not, texts.
    [[nodiscard]] std::wstring State() const {
        std::wstring state = driver::AllText(Window().Window());
        for (const int control : {1, 1014, 1032, 1027, 1028, 1022})
            state += IsEnabled(control) ? L" enabled" : L" disabled";
        for (const int box : {1034, 1033, 1026}) state += IsChecked(box) ? L" ticked" : L" not ticked";
        return state;
    }
};

TEST_F(Mouse, ClickOnTheDisabledPagesEditEnablesItAndTicksItsBox) {
    StartInFront();
    input::ClickOn(Control(id::kPages));
    EXPECT_TRUE(GetsFocus(id::kPages));
    EXPECT_TRUE(IsEnabled(id::kPages));
    EXPECT_TRUE(IsChecked(id::kPagesBox));
}

TEST_F(Mouse, ClickOnTheDisabledResolutionEditLeavesItEmpty) {
    StartInFront();
    input::ClickOn(Control(id::kResolution));
    EXPECT_TRUE(GetsFocus(id::kResolution));
    EXPECT_TRUE(IsEnabled(id::kResolution));
    EXPECT_TRUE(IsChecked(id::kResolutionBox));
    EXPECT_EQ(Text(id::kResolution), L"");
}

TEST_F(Mouse, ClickOnTheResolutionBoxFillsIn300) {
    StartInFront();
    input::ClickOn(Control(id::kResolutionBox));
    EXPECT_TRUE(Reads(id::kResolution, L"300"));
    EXPECT_TRUE(IsEnabled(id::kResolution));
}

TEST_F(Mouse, ClickOnTheDisabledFolderEditEnablesItAndItsButton) {
    StartInFront();
    input::ClickOn(Control(id::kOutputFolder));
    EXPECT_TRUE(GetsFocus(id::kOutputFolder));
    EXPECT_TRUE(IsEnabled(id::kOutputFolder));
    EXPECT_TRUE(IsEnabled(id::kBrowse));
    EXPECT_TRUE(IsChecked(id::kOutputFolderBox));
}

TEST_F(Mouse, FolderLeftEmptyIsGivenUp) {
    StartInFront();
    input::ClickOn(Control(id::kOutputFolderBox));
    ASSERT_TRUE(GetsFocus(id::kOutputFolder)) << "the box leads into its edit";
    input::ClickOn(Control(id::kMonochrome));
    ASSERT_TRUE(GetsFocus(id::kMonochrome));
    EXPECT_FALSE(IsChecked(id::kOutputFolderBox));
    EXPECT_FALSE(IsEnabled(id::kOutputFolder));
    EXPECT_FALSE(IsEnabled(id::kBrowse));
}

TEST_F(Mouse, FolderTypedEnablesItsButtonAtOnce) {
    StartInFront();
    input::ClickOn(Control(id::kOutputFolder));
    ASSERT_TRUE(GetsFocus(id::kOutputFolder));
    driver::SetText(Control(id::kOutputFolder), installed.PdfFolder());
    EXPECT_TRUE(Comes([&] { return IsEnabled(id::kOpenDestination); }, kInputLimit));
    input::Press(VK_END);
    input::Type(L"x");
    EXPECT_TRUE(Comes([&] { return !IsEnabled(id::kOpenDestination); }, kInputLimit));
}

TEST_F(Mouse, ClicksOnOtherDisabledControlsAndOnTheBackgroundDoNothing) {
    StartInFront();
    const std::wstring before = State();
    input::ClickOn(Control(id::kConvert));
    input::ClickOn(Control(id::kOpenDestination));
    input::ClickOn(Control(id::kStatus));
    input::PointAt(Window().Window(), 3, 3);
    input::Click();
    // What follows is served after the clicks.
    input::ClickOn(Control(id::kLines));
    ASSERT_TRUE(GetsFocus(id::kLines));
    EXPECT_EQ(State(), before);
}

TEST_F(Mouse, TipComesUpUnderThePointer) {
    StartInFront();
    input::PointAt(Control(id::kHideOutput));
    EXPECT_TRUE(Comes([&] { return !ShownTip().empty(); }));
    EXPECT_EQ(ShownTip(),
              L"Les fenêtres de traitement sont masquées.\r\nTous les résultats et les durées sont "
              L"enregistrés dans un fichier journal.");
}

class ListInput : public InputTest {
protected:
    void StartWithRows() {
        rows = {installed.MakePdf(L"c.pdf"), installed.MakePdf(L"a.pdf"), installed.MakePdf(L"b.pdf")};
        Start();
        Window().DropPdfs(rows);
        input::BringToFront(Window().Window());
    }
    void PointAtRow(int row) const {
        const LRESULT header = driver::Ask(List(), LVM_GETHEADER);
        RECT title = {};
        ::GetWindowRect(reinterpret_cast<HWND>(header), &title);
        const int titleHeight = title.bottom - title.top;
        // Rows are as high as the small icons and a little more.
        const int rowHeight = HIWORD(driver::Ask(List(), LVM_GETITEMSPACING, TRUE));
        input::PointAt(List(), 60, titleHeight + row * rowHeight + rowHeight / 2);
    }

    std::vector<std::wstring> rows;
};

TEST_F(ListInput, ClickSelectsARowAndShowsItsPath) {
    StartWithRows();
    EXPECT_FALSE(IsEnabled(id::kOpenDestination));
    PointAtRow(1);
    input::Click();
    EXPECT_TRUE(Comes([&] { return driver::SelectedRow(List()) == 1; }, kInputLimit));
    EXPECT_EQ(Text(id::kStatus), rows[1]);
    EXPECT_TRUE(IsEnabled(id::kOpenDestination));
}

TEST_F(ListInput, DoubleClickIsNoMoreThanAClick) {
    StartWithRows();
    PointAtRow(1);
    input::DoubleClick();
    PointAtRow(2);
    input::DoubleClick();
    EXPECT_TRUE(Comes([&] { return driver::SelectedRow(List()) == 2; }, kInputLimit));
    EXPECT_THAT(driver::ColumnTexts(List(), 0), testing::ElementsAreArray(rows));
    EXPECT_EQ(Window().OpenBox(), nullptr);
    EXPECT_EQ(Text(id::kStatus), rows[2]);
}

TEST_F(ListInput, ClickOnTheTitleSortsNothing) {
    StartWithRows();
    input::PointAt(List(), 60, 5);
    input::DoubleClick();
    input::ClickOn(Control(id::kMonochrome));
    ASSERT_TRUE(GetsFocus(id::kMonochrome));
    EXPECT_THAT(driver::ColumnTexts(List(), 0), testing::ElementsAreArray(rows));
}

TEST_F(ListInput, ArrowKeysMoveTheOnlySelection) {
    StartWithRows();
    PointAtRow(0);
    input::Click();
    ASSERT_TRUE(Comes([&] { return driver::SelectedRow(List()) == 0; }, kInputLimit));
    input::Press(VK_DOWN);
    input::PressWithShift(VK_DOWN);
    EXPECT_TRUE(Comes([&] { return driver::SelectedRow(List()) == 2; }, kInputLimit));
    EXPECT_EQ(driver::Ask(List(), LVM_GETSELECTEDCOUNT), 1);
    EXPECT_EQ(Text(id::kStatus), rows[2]);
}

TEST_F(ListInput, DeleteRemovesTheSelectedRow) {
    StartWithRows();
    PointAtRow(1);
    input::Click();
    ASSERT_TRUE(Comes([&] { return driver::SelectedRow(List()) == 1; }, kInputLimit));
    input::Press(VK_DELETE);
    EXPECT_TRUE(Comes([&] { return driver::RowCount(List()) == 2; }, kInputLimit));
    EXPECT_THAT(driver::ColumnTexts(List(), 0), ElementsAre(rows[0], rows[2]));
    EXPECT_FALSE(IsEnabled(id::kConvert));
}

TEST_F(ListInput, F7ShowsTheCommandLineOfTheSelectedRow) {
    StartWithRows();
    Window().Tick(id::kNoText);
    Window().Tick(id::kHideOutput);
    input::BringToFront(Window().Window());
    PointAtRow(2);
    input::Click();
    ASSERT_TRUE(Comes([&] { return driver::SelectedRow(List()) == 2; }, kInputLimit));
    input::Press(VK_F7);
    const HWND box = WaitForBox();
    EXPECT_EQ(driver::Text(box), L"Talvenor");
    const std::wstring djvu = installed.PdfFolder() + L"\\b.djvu";
    EXPECT_THAT(driver::AllText(box) + L"\n", testing::HasSubstr(L"\npdf2djvu.exe -o \"" + djvu +
                                                                 L"\" -v  --no-text \"" + rows[2] + L"\"\n"));
    AnswerBox(IDOK);
    EXPECT_THAT(Runs(), IsEmpty()) << "shown, not run";
}

TEST_F(ListInput, F7AndDeleteWithoutASelectionDoNothing) {
    StartWithRows();
    driver::Ask(Window().Window(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(List()), TRUE);
    ASSERT_TRUE(GetsFocus(id::kFileList));
    ASSERT_EQ(driver::SelectedRow(List()), -1);
    input::Press(VK_F7);
    input::Press(VK_DELETE);
    input::Press(VK_TAB);
    ASSERT_TRUE(Comes([&] { return FocusedId() != id::kFileList; }, kInputLimit));
    EXPECT_EQ(Window().OpenBox(), nullptr);
    EXPECT_EQ(driver::RowCount(List()), 3);
}

}  // namespace
