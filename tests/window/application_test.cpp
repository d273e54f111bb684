// The life of the user-interface thread: the dialog's creation, the loop, and the code that comes out at the
// end.
#include "ui/application.h"

#include "tests/equipment/scripted_converters.h"
#include "tests/window/main_window_fixture.h"

#include <process.h>

#include <atomic>
#include <functional>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// The dialog stays hidden: once it is to be shown, the test acts in its place.
class ApplicationTest : public MainWindowFixture {
protected:
    ApplicationTest() {
        CAppModule::Instance().RemoveMessageLoop();  // the fixture's
    }
    ~ApplicationTest() override {
        MSG message = {};
        EXPECT_FALSE(::PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE))
            << "a quit message is left";
    }

    std::vector<int> shown;  // commands
    std::function<void(HWND dialog)> then = [](HWND window) {
        ::PostMessageW(window, WM_COMMAND, IDCANCEL, 0);
    };

private:
    Replaced m_show = REPLACE_IMPORT(ShowWindow, [this](auto original, HWND window, int command) -> BOOL {
        if (!window) return FALSE;  // a dialog that closed itself
        if (::GetWindowLongPtrW(window, GWL_STYLE) & WS_CHILD) return original(window, command);
        shown.push_back(command);
        then(window);
        return FALSE;
    });
};

TEST_F(ApplicationTest, ShowsTheDialogAsAskedWhateverTheCommandLineAndEndsWithTwoWhenItIsQuit) {
    for (const wchar_t* const line :
         {L"", L"C:\\in\\a.pdf", L"/quit --help", static_cast<const wchar_t*>(nullptr)}) {
        EXPECT_EQ(RunMainDialog(line, SW_SHOWMINNOACTIVE), 2);
        EXPECT_EQ(RunMainDialog(line, SW_SHOWNORMAL), 2);
    }
    EXPECT_THAT(shown, ElementsAre(7, 1, 7, 1, 7, 1, 7, 1));
    EXPECT_EQ(CAppModule::Instance().MessageLoop(), nullptr) << "the thread has its loop no longer";
}

TEST_F(ApplicationTest, TheResultIsTheQuitMessagesCode) {
    then = [](HWND window) {
        ::DestroyWindow(window);
        ::PostQuitMessage(41);
    };
    EXPECT_EQ(RunMainDialog(L"", SW_SHOW), 41);
}

TEST_F(ApplicationTest, TheDialogTakesItsKeysFromTheLoop) {
    // Tab moves the focus only where the dialog filters the loop's messages.
    int focusedAtTheEnd = 0;
    const auto destroy = REPLACE_IMPORT(DestroyWindow, [&](auto original, HWND window) {
        focusedAtTheEnd = ::GetDlgCtrlID(::GetFocus());
        return original(window);
    });
    then = [](HWND window) {
        ::SetFocus(::GetDlgItem(window, IDC_ADD));
        ::PostMessageW(::GetDlgItem(window, IDC_ADD), WM_KEYDOWN, VK_TAB, 1);
        ::PostMessageW(::GetDlgItem(window, IDC_CLEAR), WM_KEYDOWN, VK_ESCAPE, 1);
    };
    EXPECT_EQ(RunMainDialog(L"", SW_SHOW), 2);
    EXPECT_EQ(focusedAtTheEnd, IDC_CLEAR);
}

TEST_F(ApplicationTest, NothingLoadsAccelerators) {
    for (const ImportSlot& slot : ImportSlots()) {
        EXPECT_TRUE(slot.name.find("Accelerator") == std::string::npos) << slot.name;
    }
}

TEST_F(ApplicationTest, ADialogThatCannotBeCreatedEndsItWithZeroInSilence) {
    const auto create =
        REPLACE_IMPORT(CreateDialogParamW, [](HINSTANCE, LPCWSTR name, HWND parent, DLGPROC, LPARAM) -> HWND {
            EXPECT_EQ(name, MAKEINTRESOURCEW(IDD_MAIN));
            EXPECT_EQ(parent, nullptr);
            return nullptr;
        });
    EXPECT_EQ(RunMainDialog(L"", SW_SHOW), 0);
    EXPECT_THAT(shown, IsEmpty());
    EXPECT_THAT(calls.Calls(), IsEmpty());
    EXPECT_EQ(CAppModule::Instance().MessageLoop(), nullptr);
}

// Some systems return no window for a dialog that closed itself, others its former handle. Windows returns
// the quit message when no posted message is left, whatever is asked for.
TEST_F(ApplicationTest, MessagesPostedBeforeItClosedItselfAreServedAndDoNotHideItsCode) {
    const auto peek = REPLACE_IMPORT(
        PeekMessageW, [](auto original, LPMSG message, HWND window, UINT first, UINT last, UINT remove) {
            MSG other = {};
            if (first == WM_QUIT && original(&other, nullptr, 0, WM_QUIT - 1, PM_NOREMOVE)) return FALSE;
            return original(message, window, first, last, remove);
        });
    const auto create = REPLACE_IMPORT(CreateDialogParamW, [](auto...) -> HWND {
        for (int i = 0; i < 2; ++i) ::PostThreadMessageW(::GetCurrentThreadId(), WM_APP, 0, 0);
        ::PostQuitMessage(2);
        return nullptr;
    });
    int served = 0;
    const auto dispatch = REPLACE_IMPORT(DispatchMessageW, [&](auto original, const MSG* message) {
        if (message->message == WM_APP) ++served;
        return original(message);
    });
    EXPECT_EQ(RunMainDialog(L"", SW_SHOW), 2);
    EXPECT_EQ(served, 2) << "messages of others are lost";
    EXPECT_THAT(shown, IsEmpty());
}

// The worker of a stopped batch still waits for its converter.
TEST_F(ApplicationTest, QuittingEndsTheProcessWithTwoAndTheWorkerWithIt) {
    WorkerCalls calledByWorkers;
    ScriptedConverters converters(calledByWorkers);
    converters.HoldAll();
    HANDLE worker = nullptr;
    int exitCode = -1;
    bool workerWaited = false;
    const auto start = REPLACE_IMPORT(
        _beginthread, [&](auto original, void (*procedure)(void*), unsigned stackSize, void* argument) {
            const auto thread = original(procedure, stackSize, argument);
            // The worker is held by its converter, so that the handle is still good.
            ::DuplicateHandle(::GetCurrentProcess(), reinterpret_cast<HANDLE>(thread), ::GetCurrentProcess(),
                              &worker, 0, FALSE, DUPLICATE_SAME_ACCESS);
            return thread;
        });
    // Takes the place of the process's end: only the user-interface thread ends, as soon as the worker is
    // done with the dialog on that thread's stack.
    const auto exitProcess = Replace<void WINAPI(UINT)>("ExitProcess", [&](UINT code) {
        exitCode = static_cast<int>(code);
        workerWaited = ::WaitForSingleObject(worker, 0) == WAIT_TIMEOUT;
        converters.ReleaseAll(1);
        ::WaitForSingleObject(worker, 10'000);
        ::ExitThread(0);
    });
    then = [&](HWND window) {
        const DroppedFiles drop({L"C:\\in\\a.pdf"});
        ::SendMessageW(::GetDlgItem(window, IDC_FILE_LIST), WM_DROPFILES,
                       reinterpret_cast<WPARAM>(drop.Get()), 0);
        ::SendMessageW(window, WM_COMMAND, IDOK, 0);
        PumpUntil([&] { return converters.Started() == 1; }, std::chrono::seconds(10));
        messageAnswer = IDYES;
        ::SendMessageW(window, WM_COMMAND, IDCANCEL, 0);
        ::PostMessageW(window, WM_COMMAND, IDCANCEL, 0);
    };
    const auto userInterface = [](void* returned) WINAPI -> DWORD {
        RunMainDialog(L"", SW_SHOW);
        *static_cast<std::atomic<bool>*>(returned) = true;
        return 0;
    };
    std::atomic<bool> returned{false};
    const HANDLE thread = ::CreateThread(nullptr, 0, userInterface, &returned, 0, nullptr);
    EXPECT_EQ(::WaitForSingleObject(thread, 30'000), WAIT_OBJECT_0) << "the thread did not end";
    EXPECT_FALSE(returned) << "the dialog was destroyed under its worker";
    EXPECT_EQ(exitCode, 2);
    EXPECT_TRUE(workerWaited);
    ::CloseHandle(thread);
    ::CloseHandle(worker);
}

}  // namespace
