// The window by keyboard alone: moving about, typing, leaving.
#include "tests/app/input_fixture.h"

#include <algorithm>

#include "tests/equipment/file_bytes.h"

namespace {

class Keyboard : public InputTest {
protected:
    // Presses Tab (or Shift and Tab) until the focus is back where it began, and gives its way.
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
    static void Plain(WORD key) { input::Press(key); }
};

TEST_F(Keyboard, FocusBeginsOnTheFirstControlThatIsEnabled) {
    StartInFront();
    EXPECT_EQ(FocusedId(), id::kQuit);
}

TEST_F(Keyboard, TabSkipsWhatIsDisabledInAFreshWindow) {
    StartInFront();
    EXPECT_EQ(Round(&Plain), (std::vector<int>{2, 57664, 1003, 1005, 1034, 1033, 1017, 1036, 1037, 1015, 1016,
                                               1030, 1018, 1019, 1026, 1038, 1040}));
}

TEST_F(Keyboard, TabGoesThroughAllControlsInTheirOrder) {
    driver::WriteFileBytes(installed.Log(), "left by an earlier run");
    Start();
    AddForConversion({installed.MakePdf(L"a.pdf")});
    for (const int box : {id::kPagesBox, id::kResolutionBox, id::kOutputFolderBox}) Window().Tick(box);
    Window().Type(id::kOutputFolder, installed.PdfFolder());
    ASSERT_TRUE(Comes([&] { return IsEnabled(id::kOpenDestination); }));
    input::BringToFront(Window().Window());
    ClickInto(id::kHideOutput);

    std::vector<int> order = {1019, 1022, 1024, 1027, 1028, 1026, 1038, 1040, 1,    2,    57664, 1003,
                              1005, 1034, 1014, 1033, 1032, 1017, 1036, 1037, 1015, 1016, 1030,  1018};
    EXPECT_EQ(Round(&Plain), order);
    std::reverse(order.begin() + 1, order.end());
    EXPECT_EQ(Round(&input::PressWithShift), order);
}

TEST_F(Keyboard, SpaceTicksABoxAndPressesAButton) {
    StartInFront();
    ClickInto(id::kMonochrome);
    ASSERT_TRUE(Comes([&] { return IsChecked(id::kMonochrome); }));
    input::Press(VK_SPACE);
    EXPECT_TRUE(Comes([&] { return !IsChecked(id::kMonochrome); }, kInputLimit));
}

TEST_F(Keyboard, EnterDoesNothingWhileConvertIsDisabled) {
    StartInFront();
    ClickInto(id::kExtraOptions);
    input::Type(L"x");
    input::Press(VK_RETURN);
    input::Type(L"y");
    EXPECT_TRUE(Reads(id::kExtraOptions, L"xy"));
    // A batch would begin on a thread of its own, a moment later; one without files would not end.
    EXPECT_FALSE(
        Comes([&] { return Window().IsRunning() || Window().OpenBox(); }, driver::Milliseconds(500)));
}

TEST_F(Keyboard, EnterPressesTheButtonThatHasTheFocus) {
    Start();
    AddForConversion({installed.MakePdf(L"a.pdf")});
    input::BringToFront(Window().Window());
    driver::Ask(Window().Window(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(Control(id::kAbout)), TRUE);
    ASSERT_TRUE(GetsFocus(id::kAbout));
    input::Press(VK_RETURN);
    EXPECT_EQ(driver::Text(WaitForBox()), L"À propos...");
    AnswerBox(IDOK);
    EXPECT_THAT(Runs(), testing::IsEmpty());
}

TEST_F(Keyboard, EnterInAnEditConverts) {
    Start();
    AddForConversion({installed.MakePdf(L"a.pdf")});
    input::BringToFront(Window().Window());
    ClickInto(id::kExtraOptions);
    input::Type(L"--exemple");
    input::Press(VK_RETURN);
    ASSERT_TRUE(Comes([&] { return Runs().size() == 1; })) << "no batch begins";
    CompleteBatch();
    EXPECT_THAT(Runs()[0].Arguments(), testing::Contains(L"--exemple"));
}

TEST_F(Keyboard, ResolutionConvertedByEnterIsTakenAsTyped) {
    Start();
    AddForConversion({installed.MakePdf(L"a.pdf")});
    input::BringToFront(Window().Window());
    input::ClickOn(Control(id::kResolution));
    ASSERT_TRUE(GetsFocus(id::kResolution));
    input::Type(L"50");
    ASSERT_TRUE(Reads(id::kResolution, L"50"));
    input::Press(VK_RETURN);
    ASSERT_TRUE(Comes([&] { return Runs().size() == 1; })) << "no batch begins";
    CompleteBatch();
    EXPECT_EQ(Runs()[0].Arguments().at(4), L"-d");
    EXPECT_EQ(Runs()[0].Arguments().at(5), L"50");
}

TEST_F(Keyboard, EscapeLeavesFromAnyControl) {
    for (const int control : {id::kExtraOptions, id::kFileList, id::kAbout}) {
        StartInFront();
        driver::Ask(Window().Window(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(Control(control)), TRUE);
        ASSERT_TRUE(GetsFocus(control));
        input::Press(VK_ESCAPE);
        EXPECT_EQ(Process().WaitForExit(kInputLimit), 2u) << control;
    }
}

TEST_F(Keyboard, EscapeLeavesFromThePageEdit) {
    StartInFront();
    input::ClickOn(Control(id::kPages));
    ASSERT_TRUE(GetsFocus(id::kPages));
    input::Press(VK_ESCAPE);
    EXPECT_EQ(Process().WaitForExit(kInputLimit), 2u);
}

TEST_F(Keyboard, AltF4Leaves) {
    StartInFront();
    input::Press(VK_F4, {VK_MENU});
    EXPECT_EQ(Process().WaitForExit(kInputLimit), 2u);
}

}  // namespace
