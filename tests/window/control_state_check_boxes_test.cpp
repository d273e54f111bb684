// Check boxes and what they enable: pages, resolution, text by lines; and the output folder, with its edit,
// the browse button and the button that opens the destination.
#include "tests/window/main_window_fixture.h"

#include <shlwapi.h>

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

class ControlStateOutputFolderTest : public ControlStateCheckBoxesTest {
protected:
    // The edit enabled by its check box, with the focus and without a text.
    void EnterEmptyEdit() {
        SetText(IDC_OUTPUT_FOLDER, L"");
        Check(IDC_OUTPUT_FOLDER_CHECK, false);
        Click(IDC_OUTPUT_FOLDER_CHECK);
        ASSERT_EQ(::GetFocus(), Control(IDC_OUTPUT_FOLDER));
    }
    void ExpectOption(bool on) {
        EXPECT_EQ(IsChecked(IDC_OUTPUT_FOLDER_CHECK), on);
        EXPECT_EQ(IsEnabled(IDC_OUTPUT_FOLDER), on);
        EXPECT_EQ(IsEnabled(IDC_BROWSE), on);
    }
    [[nodiscard]] bool CanOpenDestination() const { return IsEnabled(IDC_OPEN_DESTINATION); }
};

TEST_F(ControlStateOutputFolderTest, EveryNotificationOfTheCheckBoxTakesTheStepsInOrder) {
    for (const int code : kCodes) {
        SCOPED_TRACE(code);
        SetText(IDC_OUTPUT_FOLDER, L"Q:\\absent");
        EXPECT_THAT(Notified(IDC_OUTPUT_FOLDER_CHECK, true, code),
                    ElementsAre("EnableWindow 1028 1", "EnableWindow 1027 1", "SetFocus 1027"));
        EXPECT_THAT(Notified(IDC_OUTPUT_FOLDER_CHECK, false, code),
                    ElementsAre("EnableWindow 1028 0", "EnableWindow 1027 0"));
        SetText(IDC_OUTPUT_FOLDER, folder.Path().c_str());
        EXPECT_THAT(Notified(IDC_OUTPUT_FOLDER_CHECK, true, code),
                    ElementsAre("EnableWindow 1028 1", "EnableWindow 1027 1", "SetFocus 1027",
                                "EnableWindow 1022 1"));
        EXPECT_THAT(Notified(IDC_OUTPUT_FOLDER_CHECK, false, code),
                    ElementsAre("EnableWindow 1028 0", "EnableWindow 1027 0"));
    }
}

TEST_F(ControlStateOutputFolderTest, EveryChangeOfTheTextDecidesWhetherTheDestinationCanBeOpened) {
    Click(IDC_OUTPUT_FOLDER_CHECK);
    SetText(IDC_OUTPUT_FOLDER, folder.Path().c_str());
    EXPECT_TRUE(CanOpenDestination());
    ::SendMessageW(Control(IDC_OUTPUT_FOLDER), EM_SETSEL, 10'000, 10'000);
    ::SendMessageW(Control(IDC_OUTPUT_FOLDER), WM_CHAR, L'x', 1);
    EXPECT_FALSE(CanOpenDestination()) << "one character too many";
    ::SendMessageW(Control(IDC_OUTPUT_FOLDER), WM_CHAR, L'\b', 1);
    EXPECT_TRUE(CanOpenDestination());
    SetText(IDC_OUTPUT_FOLDER, L"");
    EXPECT_FALSE(CanOpenDestination());
    SetText(IDC_OUTPUT_FOLDER, (folder.Path() / "pdf2djvu.exe").c_str());
    EXPECT_FALSE(CanOpenDestination()) << "a file is no folder";
}

TEST_F(ControlStateOutputFolderTest, TheWholeTextIsTestedAsItIsWhateverItsLength) {
    std::vector<std::wstring> tested;
    const auto isDirectory = REPLACE_IMPORT(PathIsDirectoryW, [&](LPCWSTR path) {
        tested.emplace_back(path);
        return TRUE;
    });
    const std::vector<std::wstring> texts = {L"C:\\" + std::wstring(700, L'd'), L"\"C:\\a, b\\\"  ", L"."};
    for (const std::wstring& text : texts) SetText(IDC_OUTPUT_FOLDER, text.c_str());
    EXPECT_EQ(tested, texts);
    EXPECT_TRUE(CanOpenDestination());
}

TEST_F(ControlStateOutputFolderTest, LeavingTheEmptyEditTurnsTheOptionOff) {
    EnterEmptyEdit();
    EXPECT_THAT(
        Recorded([&] { ::SetFocus(Control(IDC_EXTRA_OPTIONS)); }),
        ElementsAre("SetFocus 1018", "CheckDlgButton 1026 0", "EnableWindow 1028 0", "EnableWindow 1027 0"));
    EnterEmptyEdit();
    // By Tab, backwards: the next stop forwards would be the browse button.
    ::SendMessageW(Dialog(), WM_NEXTDLGCTL, TRUE, FALSE);
    ASSERT_EQ(::GetFocus(), Control(IDC_HIDE_OUTPUT));
    ExpectOption(false);
    EnterEmptyEdit();
    ::SetFocus(nullptr);  // no control at all
    ExpectOption(false);
}

TEST_F(ControlStateOutputFolderTest, LeavingTheEmptyEditForItsCheckBoxOrTheBrowserKeepsTheOption) {
    for (const int next : {IDC_OUTPUT_FOLDER_CHECK, IDC_BROWSE}) {
        EnterEmptyEdit();
        ::SetFocus(Control(next));
        ExpectOption(true);
    }
}

TEST_F(ControlStateOutputFolderTest, LeavingTheEditWithATextKeepsTheOptionWhateverTheTextIs) {
    EnterEmptyEdit();
    SetText(IDC_OUTPUT_FOLDER, L"no such folder");
    EXPECT_THAT(Recorded([&] { Command(IDC_OUTPUT_FOLDER, EN_KILLFOCUS); }), IsEmpty());
    ::SetFocus(Control(IDC_EXTRA_OPTIONS));
    ExpectOption(true);
    EXPECT_FALSE(CanOpenDestination());
}

}  // namespace
