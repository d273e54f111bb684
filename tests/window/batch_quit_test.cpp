// The end of the window while a worker still waits for its converter.
#include "tests/window/batch_fixture.h"

#include "ui/application.h"

namespace {

using testing::SizeIs;

class BatchQuitTest : public BatchFixture {
protected:
    void StartHeld() {
        SetChecked(IDC_SHUT_DOWN, true);
        AddFiles({L"C:\\in\\a.pdf", L"C:\\in\\b.pdf"});
        converters.Plan({{.durationMs = 1'000, .held = true}});
        PressConvert();
        WaitForConverter(1);
    }
};

TEST_F(BatchQuitTest, AfterAStopTheSecondPressDestroysTheWindowAndPostsQuit) {
    StartHeld();
    PressStop();
    PressStop();
    EXPECT_EQ(dialog->Handle(), nullptr);
    EXPECT_EQ(TakeQuitMessage(), 2);
    EXPECT_TRUE(dialog->HasWorker());
}

TEST_F(BatchQuitTest, TheStoppedWorkerEndsWithoutItsWindow) {
    StartHeld();
    PressStop();
    PressStop();
    TakeQuitMessage();
    converters.Release(1);
    WaitForEnd();
    EXPECT_THAT(converters.Starts(), SizeIs(1));
    EXPECT_EQ(worker.Count("DialogBoxParamW"), 0);
    EXPECT_EQ(worker.Count("MessageBoxW"), 0);
    EXPECT_EQ(worker.Count("CloseHandle"), 2);
}

TEST_F(BatchQuitTest, AWorkerWhoseWindowWasTakenAwayEndsToo) {
    StartHeld();
    ::DestroyWindow(Dialog());
    EXPECT_TRUE(dialog->HasWorker());
    converters.Release(1);
    WaitForEnd();
    EXPECT_THAT(converters.Starts(), SizeIs(1));
    EXPECT_EQ(worker.Count("CloseHandle"), 2);
    EXPECT_FALSE(dialog->IsRunning());
}

// The life of a second main window on a thread of its own, as the program's entry runs it. ExitProcess is
// written down and ends that thread only, once the worker has ended.
class ApplicationEndTest : public BatchFixture {
protected:
    ApplicationEndTest() {
        s_exitCode = -1;
        s_worker = nullptr;
        m_thread = ::CreateThread(nullptr, 0, &RunApplication, nullptr, 0, nullptr);
    }
    ~ApplicationEndTest() override {
        ::PostThreadMessageW(::GetThreadId(m_thread), WM_QUIT, 0, 0);  // should it still be there
        EXPECT_TRUE(Ends(m_thread)) << "the application did not end";
        ::CloseHandle(m_thread);
    }

    // Its window: hidden, like every main window of the tests.
    HWND Window() {
        HWND window = nullptr;
        const auto keepMainWindow = [](HWND one, LPARAM found) -> BOOL {
            const bool isMain = ::GetDlgItem(one, IDC_FILE_LIST) != nullptr;
            if (isMain) *reinterpret_cast<HWND*>(found) = one;
            return !isMain;
        };
        EXPECT_TRUE(WaitFor([&] {
            ::EnumThreadWindows(::GetThreadId(m_thread), keepMainWindow, reinterpret_cast<LPARAM>(&window));
            return window != nullptr;
        })) << "no main window came";
        return window;
    }
    bool Ends(HANDLE thread) {
        return WaitFor([&] { return ::WaitForSingleObject(thread, 0) == WAIT_OBJECT_0; });
    }
    DWORD ThreadExitCode() {
        DWORD code = 0;
        ::GetExitCodeThread(m_thread, &code);
        return code;
    }

    static inline std::atomic<int> s_exitCode{-1};  // of ExitProcess; -1: not called
    static inline std::atomic<HANDLE> s_worker{nullptr};
    HANDLE m_thread = nullptr;

private:
    static DWORD WINAPI RunApplication(void*) { return static_cast<DWORD>(RunMainDialog(L"", SW_HIDE)); }
    static void WINAPI EndThread(UINT code) {
        s_exitCode = static_cast<int>(code);
        ::WaitForSingleObject(s_worker, 10'000);
        ::ExitThread(1000 + code);
    }

    ReplacedImport m_exit{"ExitProcess", &EndThread};
};

TEST_F(ApplicationEndTest, QuitWithoutAWorkerReturnsTwo) {
    ::SendMessageW(Window(), WM_COMMAND, IDCANCEL, 0);
    ASSERT_TRUE(Ends(m_thread));
    EXPECT_EQ(ThreadExitCode(), 2u);
    EXPECT_EQ(s_exitCode, -1);
}

TEST_F(ApplicationEndTest, QuitBesideAWaitingWorkerEndsTheProcessWithTwo) {
    const HWND window = Window();
    wchar_t path[] = L"C:\\in\\a.pdf";
    LVITEMW item = {};
    item.mask = LVIF_TEXT;
    item.pszText = path;
    ::SendDlgItemMessageW(window, IDC_FILE_LIST, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
    converters.Plan({{.held = true}});
    ::SendMessageW(window, WM_COMMAND, IDOK, 0);
    WaitForConverter(1);
    s_worker = ::OpenThread(SYNCHRONIZE, FALSE, converters.Starts()[0].workerId);
    ::SendMessageW(window, WM_COMMAND, IDCANCEL, 0);  // stops
    EXPECT_TRUE(::IsWindow(window));
    ::SendMessageW(window, WM_COMMAND, IDCANCEL, 0);  // quits
    EXPECT_FALSE(::IsWindow(window));
    EXPECT_TRUE(WaitFor([&] { return s_exitCode != -1; }));
    EXPECT_EQ(s_exitCode, 2);
    converters.Release(1);
    EXPECT_TRUE(Ends(s_worker)) << "the worker found its dialog gone";
    ASSERT_TRUE(Ends(m_thread));
    EXPECT_EQ(ThreadExitCode(), 1002u);
    ::CloseHandle(s_worker);
}

}  // namespace
