// What the pages edit and the resolution edit take from a keyboard.
#include "tests/app/input_fixture.h"

namespace {

using PageEditFilter = InputTest;

TEST_F(PageEditFilter, TakesPageListsAndTheKeysThatEditThemAndRefusesEverythingElse) {
    StartInFront();
    ClickInto(IDC_PAGES);  // which enables it
    input::Type(L"a2,b5 ,8-56;.3/*+4");
    EXPECT_TRUE(Reads(IDC_PAGES, L"2,5,8-5634"));
    input::CopyToClipboard(L"99");
    for (const char key : {'V', 'A', 'X'}) input::Press(static_cast<WORD>(key), {VK_CONTROL});
    input::PressAll({VK_HOME, VK_BACK, VK_LEFT, VK_LEFT, VK_RIGHT, VK_DELETE});
    EXPECT_TRUE(Reads(IDC_PAGES, L"2,5,8-56"));
    input::Press(VK_TAB);
    EXPECT_TRUE(GetsFocus(IDC_RESOLUTION_CHECK));
    EXPECT_EQ(Text(IDC_PAGES), L"2,5,8-56");
}

using ResolutionClamp = InputTest;

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
        input::Press(VK_TAB, {VK_SHIFT});
        ASSERT_TRUE(GetsFocus(IDC_RESOLUTION));
    }
}

}  // namespace
