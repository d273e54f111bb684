// The output folder: its box, its edit, the browse button and the button that opens the destination.
#include "tests/window/control_calls.h"
#include "tests/window/main_window_fixture.h"

#include <filesystem>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr int kCodes[] = {BN_CLICKED, BN_DOUBLECLICKED, BN_SETFOCUS, BN_KILLFOCUS, 0x7FFF};

std::vector<std::wstring> g_testedFolders;
BOOL WINAPI EveryFolderExists(LPCWSTR path) {
    g_testedFolders.push_back(path);
    return TRUE;
}

class ControlStateOutputFolderTest : public MainWindowFixture {
protected:
    ControlStateOutputFolderTest() { Create(); }

    void Check(bool checked) {
        ::CheckDlgButton(Dialog(), IDC_OUTPUT_FOLDER_CHECK, checked ? BST_CHECKED : BST_UNCHECKED);
    }
    // The edit enabled by its box, with the focus and without a text.
    void EnterEmptyEdit() {
        Click(IDC_OUTPUT_FOLDER_CHECK);
        ASSERT_EQ(::GetFocus(), Control(IDC_OUTPUT_FOLDER));
    }
    void ExpectOn() {
        EXPECT_TRUE(IsChecked(IDC_OUTPUT_FOLDER_CHECK));
        EXPECT_TRUE(IsEnabled(IDC_OUTPUT_FOLDER));
        EXPECT_TRUE(IsEnabled(IDC_BROWSE));
    }
    void ExpectOff() {
        EXPECT_FALSE(IsChecked(IDC_OUTPUT_FOLDER_CHECK));
        EXPECT_FALSE(IsEnabled(IDC_OUTPUT_FOLDER));
        EXPECT_FALSE(IsEnabled(IDC_BROWSE));
    }
    [[nodiscard]] bool CanOpenDestination() const { return IsEnabled(IDC_OPEN_DESTINATION); }
};

TEST_F(ControlStateOutputFolderTest, CheckingTheBoxEnablesEditAndBrowserAndMovesTheFocusToTheEdit) {
    Click(IDC_OUTPUT_FOLDER_CHECK);
    ExpectOn();
    EXPECT_EQ(::GetFocus(), Control(IDC_OUTPUT_FOLDER));
    EXPECT_FALSE(CanOpenDestination()) << "there is no folder yet";
}

TEST_F(ControlStateOutputFolderTest, CheckingTakesItsStepsInOrder) {
    SetText(IDC_OUTPUT_FOLDER, folder.Path().c_str());
    ::EnableWindow(Control(IDC_OPEN_DESTINATION), FALSE);
    Check(true);
    const ControlCalls recorded(calls);
    Command(IDC_OUTPUT_FOLDER_CHECK, BN_CLICKED);
    EXPECT_THAT(
        Only({"EnableWindow", "SetFocus"}, calls.Calls()),
        ElementsAre("EnableWindow 1028 1", "EnableWindow 1027 1", "SetFocus 1027", "EnableWindow 1022 1"));
}

TEST_F(ControlStateOutputFolderTest, UncheckingDisablesEditAndBrowserAndLeavesTheRest) {
    Click(IDC_OUTPUT_FOLDER_CHECK);
    SetText(IDC_OUTPUT_FOLDER, folder.Path().c_str());
    ASSERT_TRUE(CanOpenDestination());
    Check(false);
    {
        const ControlCalls recorded(calls);
        Command(IDC_OUTPUT_FOLDER_CHECK, BN_CLICKED);
    }
    EXPECT_THAT(Only({"EnableWindow", "SetFocus", "SetWindowTextW"}, calls.Calls()),
                ElementsAre("EnableWindow 1028 0", "EnableWindow 1027 0"));
    EXPECT_TRUE(CanOpenDestination());
    EXPECT_EQ(Text(IDC_OUTPUT_FOLDER), folder.Path().wstring());
}

TEST_F(ControlStateOutputFolderTest, EveryNotificationOfTheBoxCounts) {
    for (const int code : kCodes) {
        Check(true);
        Command(IDC_OUTPUT_FOLDER_CHECK, code);
        ExpectOn();
        Check(false);
        Command(IDC_OUTPUT_FOLDER_CHECK, code);
        ExpectOff();
    }
}

TEST_F(ControlStateOutputFolderTest, CheckingTheBoxNeverDisablesTheDestinationButton) {
    Drop({L"C:\\in\\a.pdf"});
    SelectRow(0);
    ASSERT_TRUE(CanOpenDestination());
    Click(IDC_OUTPUT_FOLDER_CHECK);
    EXPECT_TRUE(CanOpenDestination()) << "although there is no folder";
}

TEST_F(ControlStateOutputFolderTest, CheckingTheBoxEnablesTheDestinationButtonForAFolderThatExists) {
    SetText(IDC_OUTPUT_FOLDER, folder.Path().c_str());
    ::EnableWindow(Control(IDC_OPEN_DESTINATION), FALSE);
    Click(IDC_OUTPUT_FOLDER_CHECK);
    EXPECT_TRUE(CanOpenDestination());
}

TEST_F(ControlStateOutputFolderTest, EveryChangeOfTheTextTellsWhetherTheDestinationCanBeOpened) {
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

TEST_F(ControlStateOutputFolderTest, TheWholeTextIsTestedWhateverItsLength) {
    g_testedFolders.clear();
    const ReplacedImport isDirectory("PathIsDirectoryW", &EveryFolderExists);
    const std::wstring longPath = L"C:\\" + std::wstring(700, L'd');
    SetText(IDC_OUTPUT_FOLDER, longPath.c_str());
    EXPECT_THAT(g_testedFolders, ElementsAre(longPath));
    EXPECT_TRUE(CanOpenDestination());
}

TEST_F(ControlStateOutputFolderTest, LeavingTheEmptyEditTurnsTheOptionOff) {
    EnterEmptyEdit();
    ::SetFocus(Control(IDC_EXTRA_OPTIONS));
    ExpectOff();
}

TEST_F(ControlStateOutputFolderTest, TabbingOutOfTheEmptyEditTurnsTheOptionOff) {
    EnterEmptyEdit();
    // Backwards: the next stop forwards would be the browse button.
    ::SendMessageW(Dialog(), WM_NEXTDLGCTL, TRUE, FALSE);
    ASSERT_EQ(::GetFocus(), Control(IDC_HIDE_OUTPUT));
    ExpectOff();
}

TEST_F(ControlStateOutputFolderTest, TurningOffTakesItsStepsInOrder) {
    EnterEmptyEdit();
    ::SetFocus(Control(IDC_BROWSE));
    ExpectOn();
    ::SetFocus(Control(IDC_EXTRA_OPTIONS));
    const ControlCalls recorded(calls);
    Command(IDC_OUTPUT_FOLDER, EN_KILLFOCUS);
    EXPECT_THAT(calls.Calls(),
                ElementsAre("CheckDlgButton 1026 0", "EnableWindow 1028 0", "EnableWindow 1027 0"));
}

TEST_F(ControlStateOutputFolderTest, LeavingTheEmptyEditForItsBoxOrTheBrowserKeepsTheOption) {
    for (const int next : {IDC_OUTPUT_FOLDER_CHECK, IDC_BROWSE}) {
        Check(true);
        Command(IDC_OUTPUT_FOLDER_CHECK, BN_CLICKED);
        ::SetFocus(Control(next));
        ExpectOn();
    }
}

TEST_F(ControlStateOutputFolderTest, LeavingTheEmptyEditForNoControlAtAllTurnsTheOptionOff) {
    EnterEmptyEdit();
    ::SetFocus(nullptr);
    ExpectOff();
}

TEST_F(ControlStateOutputFolderTest, LeavingTheEditWithATextKeepsTheOptionWhateverTheTextIs) {
    EnterEmptyEdit();
    SetText(IDC_OUTPUT_FOLDER, L"no such folder");
    ::SetFocus(Control(IDC_EXTRA_OPTIONS));
    ExpectOn();
    EXPECT_EQ(Text(IDC_OUTPUT_FOLDER), L"no such folder");
    EXPECT_FALSE(CanOpenDestination());
}

TEST_F(ControlStateOutputFolderTest, OtherNotificationsOfTheEditChangeNothing) {
    EnterEmptyEdit();
    const ControlCalls recorded(calls);
    for (const int code : {EN_SETFOCUS, EN_UPDATE, EN_MAXTEXT, EN_HSCROLL, 0})
        Command(IDC_OUTPUT_FOLDER, code);
    EXPECT_THAT(calls.Calls(), IsEmpty());
}

}  // namespace
