// What the pages edit and the resolution edit take from a keyboard.
#include "tests/app/input_fixture.h"

namespace {

class PageEditFilter : public InputTest {
protected:
    void SetUp() override {
        StartInFront();
        ClickInto(IDC_PAGES);  // which enables it
    }
};

TEST_F(PageEditFilter, TakesPageListsAndRefusesEverythingElse) {
    input::Type(L"a2,b5 ,8-56;.3/*+4");
    EXPECT_TRUE(Reads(IDC_PAGES, L"2,5,8-5634"));
    input::Press(VK_TAB);
    EXPECT_TRUE(GetsFocus(IDC_RESOLUTION_CHECK));
    EXPECT_EQ(Text(IDC_PAGES), L"2,5,8-5634");
}

TEST_F(PageEditFilter, TakesDigitsOfTheKeypad) {
    const bool wasLocked = (::GetKeyState(VK_NUMLOCK) & 1) != 0;
    if (!wasLocked) input::Press(VK_NUMLOCK);
    input::Press(VK_NUMPAD5);
    input::Press(VK_NUMPAD0);
    EXPECT_TRUE(Reads(IDC_PAGES, L"50"));
    if (!wasLocked) input::Press(VK_NUMLOCK);
}

TEST_F(PageEditFilter, ErasesAndMovesByTheKeysThatItLetsThrough) {
    input::Type(L"1234");
    input::PressAll({VK_BACK, VK_LEFT, VK_LEFT, VK_DELETE});
    EXPECT_TRUE(Reads(IDC_PAGES, L"13"));
    input::Press(VK_RIGHT);
    input::Type(L"5");
    EXPECT_TRUE(Reads(IDC_PAGES, L"135"));
    input::Press(VK_HOME);
    input::Type(L"6");
    EXPECT_TRUE(Reads(IDC_PAGES, L"1356"));
    input::Press(VK_LEFT);
    input::Press(VK_END);
    input::Type(L"7");
    EXPECT_TRUE(Reads(IDC_PAGES, L"13576"));
}

TEST_F(PageEditFilter, RefusesToPasteCopyAndCutByTheKeyboard) {
    input::CopyToClipboard(L"99");
    input::Type(L"1");
    for (const char key : {'V', 'A', 'X', 'V'}) input::PressWithControl(static_cast<WORD>(key));
    input::Type(L"2");
    EXPECT_TRUE(Reads(IDC_PAGES, L"12"));
}

class ResolutionClamp : public InputTest {};

TEST_F(ResolutionClamp, KeepsWhatIsTypedWithinItsLimitsWhenTheEditIsLeft) {
    StartInFront();
    ClickInto(IDC_RESOLUTION);
    for (const auto& [typed, digits, left] :
         {std::tuple{L"5a0", L"50", L"72"}, {L"7000", L"7000", L"6000"}, {L"3-00", L"300", L"300"}}) {
        driver::SetText(Control(IDC_RESOLUTION), L"");
        input::Type(typed);
        ASSERT_TRUE(Reads(IDC_RESOLUTION, digits)) << driver::ToUtf8(typed);
        input::Press(VK_TAB);
        ASSERT_TRUE(GetsFocus(IDC_NO_METADATA));
        EXPECT_EQ(Text(IDC_RESOLUTION), left) << driver::ToUtf8(typed);
        input::PressWithShift(VK_TAB);
        ASSERT_TRUE(GetsFocus(IDC_RESOLUTION));
    }
}

}  // namespace
