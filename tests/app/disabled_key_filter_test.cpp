// Keys while a batch runs and the control with the focus is disabled: what would change the batch, or begin
// another beside it, has no effect, and the window's own keys do what they always do.
#include "tests/app/input_fixture.h"

namespace {

class DisabledKeys : public InputTest {
protected:
    // By Enter in an edit, which the batch disables and which keeps the focus. The first file takes longer
    // than any test, and ends with it.
    void Begin() {
        StartWith({installed.MakePdf(L"a wait120000.pdf"), installed.MakePdf(L"b.pdf")});
        Window().Check(IDC_HIDE_OUTPUT);
        BringToFront();
        ClickInto(IDC_EXTRA_OPTIONS);
        input::Type(L"--exemple");
        ASSERT_TRUE(Reads(IDC_EXTRA_OPTIONS, L"--exemple"));
        input::Press(VK_RETURN);
        ASSERT_TRUE(Comes([&] { return Runs().size() == 1; })) << "no batch begins";
        ASSERT_FALSE(IsEnabled(IDC_EXTRA_OPTIONS));
        ASSERT_EQ(FocusedId(), IDC_EXTRA_OPTIONS);
    }
    // Timer messages come when no key is left to be served. The first change may have been on its way.
    [[nodiscard]] bool TimeGoesOnTwice() const {
        for (int change = 0; change < 2; ++change) {
            const std::wstring before = Durations()[0];
            if (!Comes([&] { return Durations()[0] != before; })) return false;
        }
        return true;
    }
    // The question that a key has brought is answered with no.
    void ExpectQuestion() const {
        EXPECT_THAT(driver::AllText(WaitForDialog()), testing::HasSubstr(L"Un traitement est en cours."));
        AnswerDialog(IDNO);
        EXPECT_TRUE(Window().IsRunning());
        EXPECT_EQ(Window().OpenDialog(), nullptr);
    }
    [[nodiscard]] bool MenuIsOpen() const {
        return driver::GuiThread(Window().Window()).hwndMenuOwner == Window().Window();
    }
};

TEST_F(DisabledKeys, ChangeNothing) {
    Begin();
    const std::wstring before = State();
    input::CopyToClipboard(L"5");
    input::PressAll({VK_SPACE, VK_RETURN, VK_DOWN, VK_END, VK_NEXT, VK_DELETE, VK_F7});
    input::Type(L"+8" + installed.PdfFolder().substr(0, 1));
    input::Press('V', {VK_CONTROL});
    input::Press(VK_INSERT, {VK_SHIFT});
    input::PressAll({VK_BACK, VK_HOME, VK_DELETE, VK_RETURN, VK_SPACE});
    EXPECT_TRUE(TimeGoesOnTwice()) << "the time goes to another row";
    EXPECT_EQ(State(), before);
    EXPECT_EQ(Durations()[1], L"");
    EXPECT_EQ(FocusedId(), IDC_EXTRA_OPTIONS);
    EXPECT_EQ(Window().OpenDialog(), nullptr);
    EXPECT_EQ(Runs().size(), 1u);
}

TEST_F(DisabledKeys, OpenTheWindowsMenuAndAskWhetherToStop) {
    Begin();
    input::Press(VK_SPACE, {VK_MENU});
    ASSERT_TRUE(Comes([&] { return MenuIsOpen(); }));
    // Escape closes it too, after one press on Windows and two on Wine.
    driver::Ask(Window().Window(), WM_CANCELMODE);
    ASSERT_TRUE(Comes([&] { return !MenuIsOpen(); }));
    EXPECT_EQ(Window().OpenDialog(), nullptr);
    input::Press(VK_ESCAPE);
    ExpectQuestion();
    input::Press(VK_F4, {VK_MENU});
    ExpectQuestion();
}

TEST_F(DisabledKeys, LeadByTabToTheStopButtonByWayOfEnabledControls) {
    Begin();
    // Three controls can be enabled during a batch; whichever comes first, the button is not far.
    for (int presses = 0; presses < 3 && FocusedId() != IDCANCEL; ++presses) {
        const int before = FocusedId();
        input::Press(VK_TAB);
        ASSERT_TRUE(Comes([&] { return FocusedId() != before; })) << before;
        EXPECT_TRUE(IsEnabled(FocusedId())) << FocusedId();
    }
    EXPECT_EQ(FocusedId(), IDCANCEL);
    input::Press(VK_SPACE);
    ExpectQuestion();
}

TEST_F(DisabledKeys, OfAnEditThatAClickHasEnabledAreItsOwnAndEnterBeginsNothing) {
    Begin();
    for (const int control : {IDC_FILE_LIST, IDC_CLEAR, IDC_ADD}) input::ClickOn(Control(control));
    ClickInto(IDC_PAGES);
    EXPECT_TRUE(IsChecked(IDC_PAGES_CHECK));
    EXPECT_FALSE(IsEnabled(IDC_PAGES_CHECK));
    // Enter goes to the default button, which the system does not press while it is disabled.
    input::Type(L"12");
    input::Press(VK_RETURN);
    input::Type(L"3");
    EXPECT_TRUE(Reads(IDC_PAGES, L"123"));
    input::Press(VK_ESCAPE);
    ExpectQuestion();
    EXPECT_EQ(driver::RowCount(List()), 2);
    EXPECT_EQ(Runs().size(), 1u);
}

}  // namespace
