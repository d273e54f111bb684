// The window by keyboard alone: moving about, pressing, leaving.
#include "tests/app/input_fixture.h"

#include <algorithm>

namespace {

class MessageLoop : public InputTest {
protected:
    // Presses Tab (or Shift and Tab) until the focus is back where it began, and returns its way.
    [[nodiscard]] std::vector<int> Round(void (*press)(WORD)) {
        const int begin = FocusedId();
        std::vector<int> way = {begin};
        constexpr std::size_t kMoreThanAllControls = 40;
        while (way.size() < kMoreThanAllControls) {
            const int before = FocusedId();
            press(VK_TAB);
            EXPECT_TRUE(Comes([&] { return FocusedId() != before && FocusedId() != 0; }, kInputLimit))
                << "the focus stays on " << before;
            if (FocusedId() == begin || FocusedId() == before) break;
            way.push_back(FocusedId());
        }
        return way;
    }
};

TEST_F(MessageLoop, TabGoesThroughAllControlsInTheirOrderAndBack) {
    driver::WriteFileBytes(installed.Log(), "left by an earlier run");
    StartWith({installed.MakePdf(L"a.pdf")});
    for (const int checkBox : {IDC_PAGES_CHECK, IDC_RESOLUTION_CHECK, IDC_OUTPUT_FOLDER_CHECK})
        Window().Check(checkBox);
    Window().Type(IDC_OUTPUT_FOLDER, installed.PdfFolder());
    ASSERT_TRUE(Comes([&] { return IsEnabled(IDC_OPEN_DESTINATION); }));
    BringToFront();
    ClickInto(IDC_HIDE_OUTPUT);

    std::vector<int> order = {IDC_HIDE_OUTPUT,
                              IDC_OPEN_DESTINATION,
                              IDC_OPEN_LOG,
                              IDC_OUTPUT_FOLDER,
                              IDC_BROWSE,
                              IDC_OUTPUT_FOLDER_CHECK,
                              IDC_SHUT_DOWN,
                              IDC_FILE_LIST,
                              IDOK,
                              IDCANCEL,
                              IDC_ABOUT,
                              IDC_ADD,
                              IDC_CLEAR,
                              IDC_PAGES_CHECK,
                              IDC_PAGES,
                              IDC_RESOLUTION_CHECK,
                              IDC_RESOLUTION,
                              IDC_NO_METADATA,
                              IDC_NO_OUTLINE,
                              IDC_NO_HYPERLINKS,
                              IDC_NO_TEXT,
                              IDC_LINES,
                              IDC_MONOCHROME,
                              IDC_EXTRA_OPTIONS};
    EXPECT_EQ(Round([](WORD key) { input::Press(key); }), order);
    std::reverse(order.begin() + 1, order.end());
    EXPECT_EQ(Round(&input::PressWithShift), order);
}

TEST_F(MessageLoop, ArrowsGoFromOneControlToTheNextAndBack) {
    StartInFront();
    FocusOn(IDC_NO_METADATA);
    input::PressAll({VK_DOWN, VK_RIGHT});
    EXPECT_TRUE(GetsFocus(IDC_NO_HYPERLINKS));
    input::PressAll({VK_UP, VK_LEFT});
    EXPECT_TRUE(GetsFocus(IDC_NO_METADATA));
    EXPECT_FALSE(IsChecked(IDC_NO_OUTLINE));
}

TEST_F(MessageLoop, FocusBeginsOnTheFirstEnabledControlAndSpaceChecksABox) {
    StartInFront();
    EXPECT_EQ(FocusedId(), IDCANCEL);
    FocusOn(IDC_MONOCHROME);
    input::Press(VK_SPACE);
    EXPECT_TRUE(Comes([&] { return IsChecked(IDC_MONOCHROME); }, kInputLimit));
}

TEST_F(MessageLoop, EnterDoesNothingWhileConvertIsDisabled) {
    StartInFront();
    ClickInto(IDC_EXTRA_OPTIONS);
    input::Type(L"x");
    input::Press(VK_RETURN);
    input::Type(L"y");
    EXPECT_TRUE(Reads(IDC_EXTRA_OPTIONS, L"xy"));
    // A batch would begin on a thread of its own, a moment later; one without files would not end.
    EXPECT_FALSE(
        Comes([&] { return Window().IsRunning() || Window().OpenDialog(); }, driver::Milliseconds(500)));
}

TEST_F(MessageLoop, EnterPressesTheButtonThatHasTheFocusAndInAnEditConverts) {
    StartWith({installed.MakePdf(L"a.pdf")});
    BringToFront();
    FocusOn(IDC_ABOUT);
    input::Press(VK_RETURN);
    EXPECT_EQ(driver::Text(WaitForDialog()), L"À propos...");
    AnswerDialog(IDOK);
    EXPECT_THAT(Runs(), testing::IsEmpty());

    BringToFront();
    ClickInto(IDC_EXTRA_OPTIONS);
    input::Type(L"--exemple");
    input::Press(VK_RETURN);
    ASSERT_TRUE(Comes([&] { return Runs().size() == 1; })) << "no batch begins";
    CompleteBatch();
    EXPECT_THAT(Runs()[0].Arguments(), testing::Contains(L"--exemple"));
}

TEST_F(MessageLoop, EscapeLeavesFromAnyControlAndAltF4TheSame) {
    for (const int control : {IDC_EXTRA_OPTIONS, IDC_FILE_LIST, IDC_ABOUT, IDC_PAGES, IDCANCEL}) {
        SCOPED_TRACE(control);
        StartInFront();
        if (control == IDC_PAGES) {
            ClickInto(control);  // it is disabled before
        } else {
            FocusOn(control);
        }
        if (control == IDCANCEL) {
            input::Press(VK_F4, {VK_MENU});
        } else {
            input::Press(VK_ESCAPE);
        }
        EXPECT_EQ(Process().WaitForExit(kInputLimit), 2u);
    }
}

}  // namespace
