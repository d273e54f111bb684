// The window by keyboard alone: moving, pressing and leaving.
#include "tests/app/input_fixture.h"

namespace {

using MessageLoop = InputTest;

TEST_F(MessageLoop, FocusBeginsOnTheFirstEnabledControlAndKeysMoveItCheckAndPress) {
    StartInFront();
    EXPECT_EQ(FocusedId(), IDCANCEL);
    FocusOn(IDC_NO_METADATA);
    input::PressAll({VK_DOWN, VK_RIGHT});
    EXPECT_TRUE(GetsFocus(IDC_NO_HYPERLINKS));
    input::PressAll({VK_UP, VK_LEFT});
    EXPECT_TRUE(GetsFocus(IDC_NO_METADATA));
    EXPECT_FALSE(IsChecked(IDC_NO_OUTLINE));
    input::Press(VK_SPACE);
    EXPECT_TRUE(Comes([&] { return IsChecked(IDC_NO_METADATA); }));
    // Enter presses the button that has the focus, and not the default one.
    Window().DropPdfs({installed.MakePdf(L"a.pdf")});
    Window().OpenAndCancelAddDialog();
    BringToFront();
    FocusOn(IDC_ABOUT);
    input::Press(VK_RETURN);
    EXPECT_EQ(driver::Text(WaitForDialog()), L"À propos...");
    AnswerDialog(IDOK);
    EXPECT_THAT(Runs(), testing::IsEmpty());
}

TEST_F(MessageLoop, EscapeLeavesFromAnyControlAndAltF4TheSame) {
    for (const int control : {IDC_EXTRA_OPTIONS, IDC_FILE_LIST, IDC_ABOUT, IDC_PAGES, IDCANCEL}) {
        SCOPED_TRACE(control);
        StartInFront();
        control == IDC_PAGES ? ClickInto(control) : FocusOn(control);  // the one is disabled before
        control == IDCANCEL ? input::Press(VK_F4, {VK_MENU}) : input::Press(VK_ESCAPE);
        EXPECT_EQ(Process().WaitForExit(), 2u);
    }
}

}  // namespace
