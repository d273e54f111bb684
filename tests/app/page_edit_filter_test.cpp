// What the pages edit takes from a keyboard.
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

}  // namespace
