// The list by mouse and keyboard: what selects, removes and shows, and what does nothing.
#include "tests/app/input_fixture.h"

#include <commctrl.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ListInput : public InputTest {
protected:
    void StartWithRows() {
        rows = {installed.MakePdf(L"c.pdf"), installed.MakePdf(L"a.pdf"), installed.MakePdf(L"b.pdf")};
        Start();
        Window().DropPdfs(rows);
        input::BringToFront(Window().Window());
    }
    void PointAtRow(int row) const {
        const RECT area = driver::RowArea(List(), row);
        input::PointAt(List(), 60, (area.top + area.bottom) / 2);
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

TEST_F(ListInput, DroppedFoldersAndOtherFilesAreLeftOut) {
    const auto upper = installed.MakePdf(L"A.PDF");
    const auto lower = installed.MakePdf(L"b.pdf");
    const auto named = installed.MakeFolder(L"dossier.pdf");
    Start();
    driver::DropFiles(List(), {upper, installed.MakePdf(L"c.txt"), installed.MakeFolder(L"d"),
                               installed.MakePdf(L"e.pdf.bak"), lower, named});
    EXPECT_TRUE(Comes([&] { return driver::RowCount(List()) == 3; }));
    EXPECT_THAT(driver::ColumnTexts(List(), 0), ElementsAre(upper, lower, named))
        << "in the order of the drop";
}

TEST_F(ListInput, ClearButtonEmptiesListAndStatusLineAndDisablesConvert) {
    Start();
    AddForConversion({installed.MakePdf(L"a.pdf"), installed.MakePdf(L"b.pdf")});
    input::BringToFront(Window().Window());
    PointAtRow(0);
    input::Click();
    ASSERT_TRUE(Comes([&] { return !Text(id::kStatus).empty(); }));
    input::ClickOn(Control(id::kClear));
    EXPECT_TRUE(Comes([&] { return driver::RowCount(List()) == 0; }));
    EXPECT_TRUE(Comes([&] { return Text(id::kStatus).empty(); }));
    EXPECT_FALSE(IsEnabled(id::kConvert));
    EXPECT_TRUE(IsEnabled(id::kOpenDestination)) << "keeps its state";
}

}  // namespace
