// Check boxes and what they enable: pages, resolution, text by lines.
#include "tests/window/control_calls.h"
#include "tests/window/main_window_fixture.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ControlStateBoxesTest : public MainWindowFixture {
protected:
    ControlStateBoxesTest() { Create(); }

    void Check(int id, bool checked) {
        ::CheckDlgButton(Dialog(), id, checked ? BST_CHECKED : BST_UNCHECKED);
    }
    // What the user does to leave an edit, the dialog's other controls being free to take the focus.
    void Enter(int id) { ::SetFocus(Control(id)); }
    // Types into the resolution edit and leaves it.
    void LeaveResolutionWith(const wchar_t* text) {
        Enter(IDC_RESOLUTION);
        SetText(IDC_RESOLUTION, text);
        Enter(IDC_EXTRA_OPTIONS);
    }
};

// All codes that boxes and edits send, and one that none does.
constexpr int kCodes[] = {BN_CLICKED,  BN_PAINT, BN_DOUBLECLICKED, BN_SETFOCUS, BN_KILLFOCUS,
                          EN_SETFOCUS, 0x7FFF};

TEST_F(ControlStateBoxesTest, ThePagesBoxEnablesItsEditAndDisablesIt) {
    Click(IDC_PAGES_CHECK);
    EXPECT_TRUE(IsChecked(IDC_PAGES_CHECK));
    EXPECT_TRUE(IsEnabled(IDC_PAGES));
    Click(IDC_PAGES_CHECK);
    EXPECT_FALSE(IsChecked(IDC_PAGES_CHECK));
    EXPECT_FALSE(IsEnabled(IDC_PAGES));
}

TEST_F(ControlStateBoxesTest, EveryNotificationOfThePagesBoxCounts) {
    for (const int code : kCodes) {
        Check(IDC_PAGES_CHECK, true);
        Command(IDC_PAGES_CHECK, code);
        EXPECT_TRUE(IsEnabled(IDC_PAGES)) << code;
        Check(IDC_PAGES_CHECK, false);
        Command(IDC_PAGES_CHECK, code);
        EXPECT_FALSE(IsEnabled(IDC_PAGES)) << code;
    }
}

TEST_F(ControlStateBoxesTest, ThePagesBoxLeavesTheEditsTextAndTheFocus) {
    SetText(IDC_PAGES, L"1-3");
    Enter(IDC_EXTRA_OPTIONS);
    Check(IDC_PAGES_CHECK, true);
    Command(IDC_PAGES_CHECK, BN_CLICKED);
    EXPECT_EQ(Text(IDC_PAGES), L"1-3");
    EXPECT_EQ(::GetFocus(), Control(IDC_EXTRA_OPTIONS));
    Check(IDC_PAGES_CHECK, false);
    Command(IDC_PAGES_CHECK, BN_CLICKED);
    EXPECT_EQ(Text(IDC_PAGES), L"1-3");
}

TEST_F(ControlStateBoxesTest, TheResolutionBoxEnablesItsEditWith300) {
    Click(IDC_RESOLUTION_CHECK);
    EXPECT_TRUE(IsEnabled(IDC_RESOLUTION));
    EXPECT_EQ(Text(IDC_RESOLUTION), L"300");
}

TEST_F(ControlStateBoxesTest, TheResolutionBoxDisablesItsEditAndKeepsTheText) {
    Click(IDC_RESOLUTION_CHECK);
    SetText(IDC_RESOLUTION, L"600");
    Click(IDC_RESOLUTION_CHECK);
    EXPECT_FALSE(IsEnabled(IDC_RESOLUTION));
    EXPECT_EQ(Text(IDC_RESOLUTION), L"600");
    Click(IDC_RESOLUTION_CHECK);
    EXPECT_TRUE(IsEnabled(IDC_RESOLUTION));
    EXPECT_EQ(Text(IDC_RESOLUTION), L"600");
}

TEST_F(ControlStateBoxesTest, UncheckingTheResolutionBoxFillsNothingIn) {
    Check(IDC_RESOLUTION_CHECK, false);
    Command(IDC_RESOLUTION_CHECK, BN_CLICKED);
    EXPECT_EQ(Text(IDC_RESOLUTION), L"");
    EXPECT_FALSE(IsEnabled(IDC_RESOLUTION));
}

TEST_F(ControlStateBoxesTest, OnlyClicksOfTheResolutionBoxCount) {
    Check(IDC_RESOLUTION_CHECK, true);
    for (const int code : kCodes) {
        if (code == BN_CLICKED) continue;
        Command(IDC_RESOLUTION_CHECK, code);
        EXPECT_FALSE(IsEnabled(IDC_RESOLUTION)) << code;
        EXPECT_EQ(Text(IDC_RESOLUTION), L"") << code;
    }
}

TEST_F(ControlStateBoxesTest, TheFocusOfTheResolutionBoxItselfChangesNothing) {
    Check(IDC_RESOLUTION_CHECK, true);
    Enter(IDC_RESOLUTION_CHECK);
    Enter(IDC_EXTRA_OPTIONS);
    EXPECT_FALSE(IsEnabled(IDC_RESOLUTION));
}

struct ClampCase {
    const wchar_t* typed;
    const wchar_t* left;
};

TEST_F(ControlStateBoxesTest, AResolutionIsClampedWhenItsEditIsLeft) {
    static constexpr ClampCase kCases[] = {{L"50", L"72"},     {L"71", L"72"},          {L"72", L"72"},
                                           {L"73", L"73"},     {L"300", L"300"},        {L"5999", L"5999"},
                                           {L"6000", L"6000"}, {L"6001", L"6000"},      {L"7000", L"6000"},
                                           {L"9000", L"6000"}, {L"0", L"72"},           {L"0072", L"0072"},
                                           {L"abc", L"72"},    {L"300dpi", L"300dpi"},  {L"", L""},
                                           {L"-5", L"72"},     {L"4294967596", L"6000"}};
    Click(IDC_RESOLUTION_CHECK);
    for (const ClampCase& clamp : kCases) {
        LeaveResolutionWith(clamp.typed);
        EXPECT_EQ(Text(IDC_RESOLUTION), clamp.left) << Utf8(clamp.typed);
    }
}

TEST_F(ControlStateBoxesTest, AResolutionThatMayStayIsNotWrittenAgain) {
    SetText(IDC_RESOLUTION, L"300");
    const ControlCalls recorded(calls);
    Command(IDC_RESOLUTION, EN_KILLFOCUS);
    EXPECT_THAT(calls.Calls(), IsEmpty());
}

TEST_F(ControlStateBoxesTest, AResolutionIsNotClampedBeforeItsEditIsLeft) {
    Click(IDC_RESOLUTION_CHECK);
    Enter(IDC_RESOLUTION);
    SetText(IDC_RESOLUTION, L"5");
    for (const int code : {EN_SETFOCUS, EN_CHANGE, EN_UPDATE, EN_MAXTEXT}) Command(IDC_RESOLUTION, code);
    EXPECT_EQ(Text(IDC_RESOLUTION), L"5");
}

TEST_F(ControlStateBoxesTest, LeavingOutTheTextDisablesTextByLinesAndKeepsItsCheck) {
    Click(IDC_LINES);
    Click(IDC_NO_TEXT);
    EXPECT_FALSE(IsEnabled(IDC_LINES));
    EXPECT_TRUE(IsChecked(IDC_LINES));
    Click(IDC_NO_TEXT);
    EXPECT_TRUE(IsEnabled(IDC_LINES));
    EXPECT_TRUE(IsChecked(IDC_LINES));
}

TEST_F(ControlStateBoxesTest, EveryNotificationOfTheNoTextBoxCounts) {
    for (const int code : kCodes) {
        Check(IDC_NO_TEXT, true);
        Command(IDC_NO_TEXT, code);
        EXPECT_FALSE(IsEnabled(IDC_LINES)) << code;
        Check(IDC_NO_TEXT, false);
        Command(IDC_NO_TEXT, code);
        EXPECT_TRUE(IsEnabled(IDC_LINES)) << code;
    }
}

TEST_F(ControlStateBoxesTest, TheOtherBoxesEnableAndDisableNothing) {
    for (const int box : {IDC_NO_METADATA, IDC_NO_OUTLINE, IDC_NO_HYPERLINKS, IDC_LINES, IDC_MONOCHROME,
                          IDC_HIDE_OUTPUT, IDC_SHUT_DOWN}) {
        calls.Clear();
        const ControlCalls recorded(calls);
        Click(box);
        EXPECT_THAT(Only({"EnableWindow", "CheckDlgButton", "SetWindowTextW"}, calls.Calls()), IsEmpty())
            << box;
        EXPECT_TRUE(IsChecked(box)) << box;
    }
}

}  // namespace
