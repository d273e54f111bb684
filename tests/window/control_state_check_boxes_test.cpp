// Check boxes and what they enable: pages, resolution, text by lines.
#include "tests/window/main_window_fixture.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ControlStateCheckBoxesTest : public MainWindowFixture {
protected:
    ControlStateCheckBoxesTest() { Create(); }

    // What a notification of the check box, in this state, makes the dialog do.
    std::vector<std::string> Notified(int id, bool checked, int code) {
        Check(id, checked);
        return Recorded([&] { Command(id, code); });
    }
    // Types into the resolution edit and leaves it.
    void LeaveResolutionWith(const wchar_t* text) {
        ::SetFocus(Control(IDC_RESOLUTION));
        SetText(IDC_RESOLUTION, text);
        ::SetFocus(Control(IDC_EXTRA_OPTIONS));
    }
};

// All codes that check boxes and edits send, and one that none does.
constexpr int kCodes[] = {BN_CLICKED,  BN_PAINT, BN_DOUBLECLICKED, BN_SETFOCUS, BN_KILLFOCUS,
                          EN_SETFOCUS, 0x7FFF};

TEST_F(ControlStateCheckBoxesTest, PagesAndNoTextSwitchTheirControlWithEveryNotification) {
    for (const int code : kCodes) {
        SCOPED_TRACE(code);
        EXPECT_THAT(Notified(IDC_PAGES_CHECK, true, code), ElementsAre("EnableWindow 1014 1"));
        EXPECT_THAT(Notified(IDC_PAGES_CHECK, false, code), ElementsAre("EnableWindow 1014 0"));
        EXPECT_THAT(Notified(IDC_NO_TEXT, true, code), ElementsAre("EnableWindow 1016 0"));
        EXPECT_THAT(Notified(IDC_NO_TEXT, false, code), ElementsAre("EnableWindow 1016 1"));
    }
}

TEST_F(ControlStateCheckBoxesTest, AClickSwitchesTheControl) {
    Click(IDC_PAGES_CHECK);
    EXPECT_TRUE(IsEnabled(IDC_PAGES));
    Click(IDC_PAGES_CHECK);
    EXPECT_FALSE(IsEnabled(IDC_PAGES));
}

TEST_F(ControlStateCheckBoxesTest, TheResolutionIsEnabledWith300UnlessItHasAText) {
    EXPECT_THAT(Notified(IDC_RESOLUTION_CHECK, false, BN_CLICKED), ElementsAre("EnableWindow 1032 0"));
    EXPECT_THAT(Notified(IDC_RESOLUTION_CHECK, true, BN_CLICKED),
                ElementsAre("EnableWindow 1032 1", "SetWindowTextW 1032 \"300\""));
    SetText(IDC_RESOLUTION, L"600");
    EXPECT_THAT(Notified(IDC_RESOLUTION_CHECK, false, BN_CLICKED), ElementsAre("EnableWindow 1032 0"));
    EXPECT_THAT(Notified(IDC_RESOLUTION_CHECK, true, BN_CLICKED), ElementsAre("EnableWindow 1032 1"));
}

TEST_F(ControlStateCheckBoxesTest, OnlyClicksOfTheResolutionCheckBoxCount) {
    for (const int code : kCodes) {
        if (code == BN_CLICKED) continue;
        EXPECT_THAT(Notified(IDC_RESOLUTION_CHECK, true, code), IsEmpty()) << code;
    }
}

TEST_F(ControlStateCheckBoxesTest, AResolutionIsClampedWhenItsEditIsLeft) {
    Click(IDC_RESOLUTION_CHECK);
    LeaveResolutionWith(L"71");
    EXPECT_EQ(Text(IDC_RESOLUTION), L"72");
    LeaveResolutionWith(L"6001");
    EXPECT_EQ(Text(IDC_RESOLUTION), L"6000");
}

TEST_F(ControlStateCheckBoxesTest, AResolutionThatMayStayIsNotWrittenAgain) {
    for (const wchar_t* const text : {L"300", L""}) {
        SetText(IDC_RESOLUTION, text);
        EXPECT_THAT(Recorded([&] { Command(IDC_RESOLUTION, EN_KILLFOCUS); }), IsEmpty()) << Utf8(text);
    }
}

TEST_F(ControlStateCheckBoxesTest, AResolutionIsNotClampedBeforeItsEditIsLeft) {
    SetText(IDC_RESOLUTION, L"5");
    for (const int code : {EN_SETFOCUS, EN_CHANGE, EN_UPDATE, EN_MAXTEXT}) Command(IDC_RESOLUTION, code);
    EXPECT_EQ(Text(IDC_RESOLUTION), L"5");
}

TEST_F(ControlStateCheckBoxesTest, TheOtherCheckBoxesEnableAndDisableNothing) {
    for (const int id : {IDC_NO_METADATA, IDC_NO_OUTLINE, IDC_NO_HYPERLINKS, IDC_LINES, IDC_MONOCHROME,
                         IDC_HIDE_OUTPUT, IDC_SHUT_DOWN}) {
        EXPECT_THAT(Recorded([&] { Click(id); }, {"EnableWindow", "CheckDlgButton", "SetWindowTextW"}),
                    IsEmpty())
            << id;
        EXPECT_TRUE(IsChecked(id)) << id;
    }
}

}  // namespace
