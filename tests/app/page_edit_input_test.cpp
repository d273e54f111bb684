// What the pages edit and the resolution edit take from a keyboard.
#include "tests/app/input_fixture.h"

namespace {

class PageEditInput : public InputTest {
protected:
    void SetUp() override {
        StartInFront();
        // A click on the disabled edit is the quick way in.
        input::ClickOn(Control(id::kPages));
        ASSERT_TRUE(GetsFocus(id::kPages));
    }
};

TEST_F(PageEditInput, TakesPageLists) {
    input::Type(L"2,5,8-56");
    EXPECT_TRUE(Reads(id::kPages, L"2,5,8-56"));
}

TEST_F(PageEditInput, RefusesEverythingElse) {
    input::Type(L"a1 b2;.3/*+4");
    EXPECT_TRUE(Reads(id::kPages, L"1234"));
}

TEST_F(PageEditInput, TakesDigitsOfTheKeypad) {
    const bool wasLocked = (::GetKeyState(VK_NUMLOCK) & 1) != 0;
    if (!wasLocked) input::Press(VK_NUMLOCK);
    input::Press(VK_NUMPAD5);
    input::Press(VK_NUMPAD0);
    EXPECT_TRUE(Reads(id::kPages, L"50"));
    if (!wasLocked) input::Press(VK_NUMLOCK);
}

TEST_F(PageEditInput, ErasesAndMovesByTheKeysThatItLets) {
    input::Type(L"1234");
    input::Press(VK_BACK);
    input::Press(VK_LEFT);
    input::Press(VK_LEFT);
    input::Press(VK_DELETE);
    EXPECT_TRUE(Reads(id::kPages, L"13"));
    input::Press(VK_RIGHT);
    input::Type(L"5");
    EXPECT_TRUE(Reads(id::kPages, L"135"));
}

TEST_F(PageEditInput, HomeAndEndDoNotMove) {
    input::Type(L"12");
    input::Press(VK_HOME);
    input::Type(L"3");
    EXPECT_TRUE(Reads(id::kPages, L"123"));
    input::Press(VK_LEFT);
    input::Press(VK_END);
    input::Type(L"4");
    EXPECT_TRUE(Reads(id::kPages, L"1243"));
}

TEST_F(PageEditInput, RefusesToPasteByControlV) {
    input::CopyToClipboard(L"99");
    input::Type(L"1");
    input::PressWithControl('V');
    input::Type(L"2");
    EXPECT_TRUE(Reads(id::kPages, L"12"));
}

TEST_F(PageEditInput, RefusesToCopyAndCutByTheKeyboard) {
    input::CopyToClipboard(L"99");
    input::Type(L"1");
    input::PressWithControl('A');
    input::PressWithControl('X');
    input::Type(L"2");
    EXPECT_TRUE(Reads(id::kPages, L"12"));
}

TEST_F(PageEditInput, TabMovesOn) {
    input::Type(L"7");
    input::Press(VK_TAB);
    EXPECT_TRUE(GetsFocus(id::kResolutionBox));
    EXPECT_EQ(Text(id::kPages), L"7");
}

class ResolutionInput : public InputTest {
protected:
    // Types into the edit, which has the focus, leaves it and comes back.
    void ExpectAfterLeaving(const wchar_t* typed, const wchar_t* expected) {
        driver::SetText(Control(id::kResolution), L"");
        input::Type(typed);
        ASSERT_TRUE(Reads(id::kResolution, typed));
        input::Press(VK_TAB);
        ASSERT_TRUE(GetsFocus(id::kNoMetadata));
        EXPECT_EQ(Text(id::kResolution), expected);
        input::PressWithShift(VK_TAB);
        ASSERT_TRUE(GetsFocus(id::kResolution));
    }
};

TEST_F(ResolutionInput, TakesDigitsOnly) {
    StartInFront();
    input::ClickOn(Control(id::kResolution));
    ASSERT_TRUE(GetsFocus(id::kResolution));
    input::Type(L"3a0-0");
    EXPECT_TRUE(Reads(id::kResolution, L"300"));
}

TEST_F(ResolutionInput, StaysWithinItsLimitsWhenLeft) {
    StartInFront();
    input::ClickOn(Control(id::kResolution));
    ASSERT_TRUE(GetsFocus(id::kResolution));
    ExpectAfterLeaving(L"50", L"72");
    ExpectAfterLeaving(L"7000", L"6000");
    ExpectAfterLeaving(L"72", L"72");
    ExpectAfterLeaving(L"6000", L"6000");
    ExpectAfterLeaving(L"", L"");
}

}  // namespace
