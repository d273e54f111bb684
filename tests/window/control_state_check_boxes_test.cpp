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

TEST_F(ControlStateCheckBoxesTest, AResolutionIsClampedWhenItsEditIsLeftAndNotWrittenAgainWhenItMayStay) {
    const auto left = [this](const wchar_t* text) {
        SetText(IDC_RESOLUTION, text);
        return Recorded([this] { Command(IDC_RESOLUTION, EN_KILLFOCUS); });
    };
    EXPECT_THAT(left(L"71"), ElementsAre("SetWindowTextW 1032 \"72\""));
    EXPECT_THAT(left(L"6001"), ElementsAre("SetWindowTextW 1032 \"6000\""));
    EXPECT_THAT(left(L"300"), IsEmpty());
    EXPECT_THAT(left(L""), IsEmpty());
}

}  // namespace
