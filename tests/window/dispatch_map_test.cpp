// The main window's message map: what each section handles, and what it leaves to the default.
#include "tests/support/replaced_late_import.h"
#include "tests/window/main_window_fixture.h"
#include "tests/window/scripted_shell.h"

#include <commdlg.h>
#include <process.h>
#include <shlobj.h>

#include <map>
#include <optional>
#include <set>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr DWORD kDialog = 0;
constexpr DWORD kPageEdit = 1;
constexpr DWORD kFileList = 2;

const HWND kActiveWindow = reinterpret_cast<HWND>(0x123456);

// What the commands would set going is written down instead.
class DispatchMapTest : public MainWindowFixture {
protected:
    DispatchMapTest() { Create(); }

    // Whether the map handles a message, whose result is 0 then.
    bool Handles(DWORD section, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
        LRESULT result = 77;
        const bool handled =
            dialog->DispatchDialogMessage(Dialog(), message, wParam, lParam, result, section);
        if (handled) {
            EXPECT_EQ(result, 0) << "message " << message << " wParam " << wParam;
        }
        return handled;
    }
    bool HandlesCommand(int id, int code) { return Handles(kDialog, WM_COMMAND, MAKEWPARAM(id, code)); }
    // Who sends it is in the notification; `wParam` says the same, as a rule.
    bool HandlesNotification(UINT_PTR sender, int code, std::optional<WPARAM> wParam = {}) {
        NMLISTVIEW notification = {};  // larger than that of a key, and as empty
        notification.hdr = {Control(IDC_FILE_LIST), sender, static_cast<UINT>(code)};
        return Handles(kDialog, WM_NOTIFY, wParam.value_or(sender), reinterpret_cast<LPARAM>(&notification));
    }

    ScriptedShell shell;

private:
    Replaced m_dialogBox = REPLACE_IMPORT(
        DialogBoxParamW, [](HINSTANCE module, LPCWSTR name, HWND parent, DLGPROC procedure, LPARAM) {
            EXPECT_EQ(module, ::GetModuleHandleW(nullptr));
            EXPECT_EQ(parent, kActiveWindow);
            EXPECT_NE(procedure, nullptr);
            calls.Add("dialog " + std::to_string(reinterpret_cast<ULONG_PTR>(name)));
            return -1;
        });
    Replaced m_activeWindow = REPLACE_IMPORT(GetActiveWindow, [] { return kActiveWindow; });
    Replaced m_thread = REPLACE_IMPORT(_beginthread, [](void (*)(void*), unsigned, void*) {
        calls.Add("thread");
        return static_cast<uintptr_t>(-1);  // failed: nothing runs
    });
    ReplacedLateImport m_openFile{"GetOpenFileNameW", +[](LPOPENFILENAMEW) WINAPI -> BOOL {
                                      calls.Add("open dialog");
                                      return FALSE;
                                  }};
    Replaced m_browse = REPLACE_IMPORT(SHBrowseForFolderW, [](LPBROWSEINFOW) -> LPITEMIDLIST {
        calls.Add("browse");
        return nullptr;
    });
};

// Codes of buttons, of edits, and some that no control sends.
constexpr int kCodes[] = {BN_CLICKED,  BN_PAINT,     2,         BN_DOUBLECLICKED, BN_SETFOCUS, BN_KILLFOCUS,
                          EN_SETFOCUS, EN_KILLFOCUS, EN_CHANGE, EN_UPDATE,        EN_MAXTEXT,  0x7FFF,
                          0xFFFF};

TEST_F(DispatchMapTest, CommandsAreHandledWithTheirOwnCodesOrWithEveryCodeAndUnknownOnesNever) {
    std::map<int, std::set<int>> known = {{IDC_RESOLUTION, {EN_KILLFOCUS}},
                                          {IDC_ADD, {BN_CLICKED}},
                                          {IDC_CLEAR, {BN_CLICKED}},
                                          {IDC_OPEN_DESTINATION, {BN_CLICKED}},
                                          {IDC_OPEN_LOG, {BN_CLICKED}},
                                          {IDC_BROWSE, {BN_CLICKED}},
                                          {IDC_OUTPUT_FOLDER, {EN_CHANGE, EN_KILLFOCUS}}};
    for (const int id : {IDC_ABOUT, IDOK, IDCANCEL, IDC_PAGES_CHECK, IDC_RESOLUTION_CHECK,
                         IDC_OUTPUT_FOLDER_CHECK, IDC_NO_TEXT}) {
        known[id] = {std::begin(kCodes), std::end(kCodes)};
    }
    for (int id = 0; id <= 0xFFFF; ++id) {
        if (known.contains(id)) continue;
        for (const int code : {BN_CLICKED, BN_PAINT, EN_KILLFOCUS, EN_CHANGE})
            ASSERT_FALSE(HandlesCommand(id, code)) << id << " code " << code;
    }
    EXPECT_THAT(calls.Calls(), IsEmpty());
    const auto destroy = REPLACE_IMPORT(DestroyWindow, [](HWND) { return TRUE; });
    const auto quit = REPLACE_IMPORT(PostQuitMessage, [](int) {});
    for (const auto& [id, codes] : known) {
        for (const int code : kCodes) {
            EXPECT_EQ(HandlesCommand(id, code), codes.contains(code)) << id << " code " << code;
        }
    }
}

TEST_F(DispatchMapTest, OnlyTwoNotificationsOfTheListAreHandled) {
    for (int code = -1'000; code <= 10; ++code) {
        EXPECT_EQ(HandlesNotification(IDC_FILE_LIST, code), code == -101 || code == -155) << code;
    }
    for (const UINT_PTR sender : std::initializer_list<UINT_PTR>{0, IDOK, IDC_STATUS, IDC_PAGES,
                                                                 IDC_FILE_LIST - 1, IDC_FILE_LIST + 1}) {
        EXPECT_FALSE(HandlesNotification(sender, -101)) << sender;
        EXPECT_FALSE(HandlesNotification(sender, -155)) << sender;
    }
    EXPECT_TRUE(HandlesNotification(IDC_FILE_LIST, -155, 0));
    EXPECT_FALSE(HandlesNotification(IDC_STATUS, -155, IDC_FILE_LIST));
}

TEST_F(DispatchMapTest, EachOfTheThreeSectionsHandlesItsMessagesAndTheirResultIsZero) {
    // Without arguments, up to the private messages of controls. Initialising and notifying need more than a
    // message, and a command of id 0 is unknown.
    const std::map<DWORD, std::set<UINT>> handled = {{kDialog, {WM_DESTROY, WM_TIMER, WM_LBUTTONDOWN}},
                                                     {kPageEdit, {WM_KEYDOWN, WM_CHAR}},
                                                     {kFileList, {WM_DROPFILES}},
                                                     {3, {}},
                                                     {4, {}},
                                                     {0xFFFFFFFF, {}}};
    for (const auto& [section, messages] : handled) {
        std::set<UINT> found;
        for (UINT message = 0; message <= WM_APP + 0x100; ++message) {
            if (message == WM_INITDIALOG || message == WM_NOTIFY) continue;
            if (Handles(section, message)) found.insert(message);
        }
        EXPECT_EQ(found, messages) << "section " << section;
    }
}

// The other commands' actions are subjects of their own.
TEST_F(DispatchMapTest, TheAboutCommandOpensItsDialogForTheActiveWindow) {
    Command(IDC_ABOUT, BN_CLICKED);
    EXPECT_THAT(calls.Calls(), ElementsAre("dialog 100"));
}

// A message that a handler sends reaches the map again while the handler still runs. Here the beep of a
// refused character "types" one that is let through.
TEST_F(DispatchMapTest, AMessageSentByAHandlerLeavesItsFlag) {
    const auto beep = REPLACE_IMPORT(Beep, [this](DWORD, DWORD) {
        ::SendMessageW(Control(IDC_PAGES), WM_CHAR, L'1', 1);
        return TRUE;
    });
    ::SendMessageW(Control(IDC_PAGES), WM_CHAR, L'a', 1);
    EXPECT_EQ(Text(IDC_PAGES), L"1") << "the refused character was let through after all";
}

}  // namespace
