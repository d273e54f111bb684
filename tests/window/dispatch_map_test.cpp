// The main window's message map: what each section handles, and what it leaves to the default.
#include "tests/support/replaced_late_import.h"
#include "tests/window/main_window_fixture.h"

#include <commdlg.h>
#include <process.h>
#include <shellapi.h>
#include <shlobj.h>

#include <set>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr DWORD kDialog = 0;
constexpr DWORD kPageEdit = 1;
constexpr DWORD kFileList = 2;

// Keeps what the commands would set going from going: each is written down instead.
struct Actions {
    static inline CallRecord* record = nullptr;
    static inline const HWND kActive = reinterpret_cast<HWND>(0x123456);

    static INT_PTR WINAPI RunDialog(HINSTANCE module, LPCWSTR name, HWND parent, DLGPROC procedure, LPARAM) {
        record->Add("dialog " + std::to_string(reinterpret_cast<ULONG_PTR>(name)) +
                    (module == ::GetModuleHandleW(nullptr) ? " of the program" : " of another module") +
                    (parent == kActive ? " owned by the active window" : " owned by another window") +
                    (procedure ? "" : " without procedure"));
        return -1;
    }
    static HWND WINAPI ActiveWindow() { return kActive; }
    static uintptr_t StartThread(void (*)(void*), unsigned, void*) {
        record->Add("thread");
        return static_cast<uintptr_t>(-1);  // failed: nothing runs
    }
    static BOOL WINAPI Destroy(HWND) {
        record->Add("destroy");
        return TRUE;
    }
    static void WINAPI Quit(int code) { record->Add("quit " + std::to_string(code)); }
    static BOOL WINAPI OpenFile(LPOPENFILENAMEW) {
        record->Add("open dialog");
        return FALSE;
    }
    static LPITEMIDLIST WINAPI Browse(LPBROWSEINFOW) {
        record->Add("browse");
        return nullptr;
    }
    static BOOL WINAPI Execute(LPSHELLEXECUTEINFOW request) {
        record->Add("execute " + Utf8(request->lpFile));
        return TRUE;
    }
};

class DispatchMapTest : public MainWindowFixture {
protected:
    DispatchMapTest() {
        Create();
        Actions::record = &calls;
    }

    struct Answer {
        bool handled;
        LRESULT result;
    };
    Answer Dispatch(DWORD section, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
        LRESULT result = 77;
        const bool handled =
            dialog->DispatchDialogMessage(Dialog(), message, wParam, lParam, result, section);
        return {handled, result};
    }
    // Whether the map handles a command; checks that its result is 0 then.
    bool HandlesCommand(int id, int code) {
        const Answer answer = Dispatch(kDialog, WM_COMMAND, MAKEWPARAM(id, code), 0);
        if (answer.handled) {
            EXPECT_EQ(answer.result, 0) << "command " << id << " code " << code;
        }
        return answer.handled;
    }
    bool HandlesNotification(UINT_PTR sender, int code) {
        union {
            NMHDR header;
            NMLISTVIEW change;
            NMLVKEYDOWN key;
        } notification = {};
        notification.header = {Control(IDC_FILE_LIST), sender, static_cast<UINT>(code)};
        const Answer answer = Dispatch(kDialog, WM_NOTIFY, sender, reinterpret_cast<LPARAM>(&notification));
        if (answer.handled) {
            EXPECT_EQ(answer.result, 0) << "notification " << code;
        }
        return answer.handled;
    }
    // All messages up to the private ones of controls that a section handles, without arguments.
    std::vector<UINT> Handled(DWORD section, const std::set<UINT>& except) {
        std::vector<UINT> handled;
        for (UINT message = 0; message <= WM_APP + 0x100; ++message) {
            if (!except.contains(message) && Dispatch(section, message).handled) handled.push_back(message);
        }
        return handled;
    }

private:
    ReplacedImport m_dialogBox{"DialogBoxParamW", &Actions::RunDialog};
    ReplacedImport m_activeWindow{"GetActiveWindow", &Actions::ActiveWindow};
    ReplacedImport m_thread{"_beginthread", &Actions::StartThread};
    ReplacedLateImport m_openFile{"GetOpenFileNameW", &Actions::OpenFile};
    ReplacedImport m_browse{"SHBrowseForFolderW", &Actions::Browse};
    ReplacedImport m_execute{"ShellExecuteExW", &Actions::Execute};
};

constexpr int kCodes[] = {0, 1, 2, 5, 6, 7, 0x100, 0x200, 0x300, 0x400, 0x500, 0x7FFF, 0xFFFF};

TEST_F(DispatchMapTest, CommandsThatTakeAnyNotificationAreHandledWithEveryCode) {
    const ReplacedImport destroy("DestroyWindow", &Actions::Destroy);
    const ReplacedImport quit("PostQuitMessage", &Actions::Quit);
    for (const int id : {57664, 1, 2, 1034, 1033, 1026, 1015}) {
        for (const int code : kCodes) EXPECT_TRUE(HandlesCommand(id, code)) << id << " code " << code;
    }
}

TEST_F(DispatchMapTest, TheOtherCommandsAreHandledWithTheirOwnCodesOnly) {
    static constexpr struct {
        int id;
        std::initializer_list<int> codes;
    } kCommands[] = {{1032, {0x200}}, {1003, {0}}, {1005, {0}},           {1022, {0}},
                     {1024, {0}},     {1028, {0}}, {1027, {0x300, 0x200}}};
    for (const auto& command : kCommands) {
        for (const int code : kCodes) {
            const bool own =
                std::find(command.codes.begin(), command.codes.end(), code) != command.codes.end();
            EXPECT_EQ(HandlesCommand(command.id, code), own) << command.id << " code " << code;
        }
    }
}

TEST_F(DispatchMapTest, UnknownCommandsAreNotHandled) {
    const std::set<int> known = {57664, 1,    2,    1034, 1032, 1033, 1003,
                                 1005,  1022, 1024, 1026, 1015, 1027, 1028};
    for (int id = 0; id <= 0xFFFF; ++id) {
        if (known.contains(id)) continue;
        for (const int code : {0, 1, 0x200, 0x300})
            ASSERT_FALSE(HandlesCommand(id, code)) << id << " code " << code;
    }
    EXPECT_THAT(calls.Calls(), IsEmpty());
}

TEST_F(DispatchMapTest, OnlyTwoNotificationsOfTheListAreHandled) {
    for (int code = -1'000; code <= 10; ++code) {
        EXPECT_EQ(HandlesNotification(1040, code), code == -101 || code == -155) << code;
    }
}

TEST_F(DispatchMapTest, NotificationsOfOtherSendersAreNotHandled) {
    for (const UINT_PTR sender : std::initializer_list<UINT_PTR>{0, 1, 1004, 1014, 1039, 1041}) {
        EXPECT_FALSE(HandlesNotification(sender, -101)) << sender;
        EXPECT_FALSE(HandlesNotification(sender, -155)) << sender;
    }
}

TEST_F(DispatchMapTest, BesidesCommandsAndNotificationsTheDialogHandlesDestructionTimersAndClicks) {
    // Initialising and notifying need more than a message.
    EXPECT_THAT(Handled(kDialog, {WM_INITDIALOG, WM_NOTIFY}),
                ElementsAre(WM_DESTROY, WM_TIMER, WM_LBUTTONDOWN))
        << "a command of id 0 is unknown";
    for (const UINT message : std::initializer_list<UINT>{WM_DESTROY, WM_TIMER, WM_LBUTTONDOWN}) {
        EXPECT_EQ(Dispatch(kDialog, message).result, 0) << message;
    }
}

TEST_F(DispatchMapTest, ThePageEditHandlesCharactersAndKeys) {
    EXPECT_THAT(Handled(kPageEdit, {}), ElementsAre(WM_KEYDOWN, WM_CHAR));
    EXPECT_EQ(Dispatch(kPageEdit, WM_CHAR, L'a').result, 0);
    EXPECT_EQ(Dispatch(kPageEdit, WM_KEYDOWN, VK_HOME).result, 0);
}

TEST_F(DispatchMapTest, TheFileListHandlesDrops) {
    EXPECT_THAT(Handled(kFileList, {}), ElementsAre(WM_DROPFILES));
    EXPECT_EQ(Dispatch(kFileList, WM_DROPFILES).result, 0);
}

TEST_F(DispatchMapTest, ThereAreThreeSectionsOnly) {
    for (const DWORD section : {3u, 4u, 0xFFFFFFFFu}) {
        for (const UINT message :
             std::initializer_list<UINT>{WM_COMMAND, WM_TIMER, WM_CHAR, WM_KEYDOWN, WM_DROPFILES}) {
            EXPECT_FALSE(Dispatch(section, message).handled) << section;
        }
    }
}

TEST_F(DispatchMapTest, ProcessWindowMessageLeadsToTheSameMap) {
    CMessageMap& map = *dialog;
    LRESULT result = 77;
    EXPECT_TRUE(map.ProcessWindowMessage(Dialog(), WM_CHAR, L'a', 0, result, kPageEdit));
    EXPECT_EQ(result, 0);
    EXPECT_FALSE(map.ProcessWindowMessage(Dialog(), WM_CHAR, L'1', 0, result, kPageEdit));
    EXPECT_FALSE(map.ProcessWindowMessage(Dialog(), WM_CHAR, L'a', 0, result, kDialog));
}

struct ActionCase {
    int id;
    const char* action;
};

TEST_F(DispatchMapTest, CommandsSetTheirActionsGoing) {
    Drop({L"C:\\in\\a.pdf"});
    SelectRow(0);
    programPath = L"C:\\program\\Talvenor.exe";
    static constexpr ActionCase kCases[] = {
        {57664, "dialog 100 of the program owned by the active window"},
        {1, "thread"},
        {1003, "open dialog"},
        {1028, "browse"},
        {1022, "execute explorer.exe"},
        {1024, "execute C:\\program\\TalvenorLog.txt"},
    };
    for (const ActionCase& command : kCases) {
        calls.Clear();
        Command(command.id, BN_CLICKED);
        EXPECT_THAT(calls.Calls(), ElementsAre(command.action)) << command.id;
    }
}

// A message that a handler sends comes back to the map while the handler still runs. Here the beep of a
// refused character "types" one that is let through.
HWND g_pageEdit = nullptr;
BOOL WINAPI TypeAOne(DWORD, DWORD) {
    ::SendMessageW(g_pageEdit, WM_CHAR, L'1', 1);
    return TRUE;
}

TEST_F(DispatchMapTest, AMessageSentByAHandlerLeavesItsFlag) {
    g_pageEdit = Control(IDC_PAGES);
    const ReplacedImport beep("Beep", &TypeAOne);
    ::SendMessageW(g_pageEdit, WM_CHAR, L'a', 1);
    EXPECT_EQ(Text(IDC_PAGES), L"1") << "the refused character was let through after all";
}

}  // namespace
