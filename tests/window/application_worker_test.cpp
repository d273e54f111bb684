// Quitting while the worker of a stopped batch still waits for its converter: the process ends there, and
// nothing touches what is gone.
#include "ui/application.h"

#include "tests/window/main_window_fixture.h"
#include "tests/equipment/scripted_converters.h"

#include <process.h>

#include <atomic>

namespace {

class ApplicationWorkerTest : public MainWindowFixture {
protected:
    static DWORD WINAPI UserInterface(void* returned) {
        RunMainDialog(L"", SW_SHOW);
        *static_cast<std::atomic<bool>*>(returned) = true;
        return 0;
    }
};

TEST_F(ApplicationWorkerTest, QuittingEndsTheProcessWithTwoAndTheWorkerWithIt) {
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
    const auto stopAndQuit = REPLACE_IMPORT(ShowWindow, [&](auto original, HWND window, int command) {
        if (::GetWindowLongPtrW(window, GWL_STYLE) & WS_CHILD) return original(window, command);
        wchar_t path[] = L"C:\\in\\a.pdf";
        LVITEMW item = {};
        item.mask = LVIF_TEXT;
        item.pszText = path;
        ::SendMessageW(::GetDlgItem(window, IDC_FILE_LIST), LVM_INSERTITEMW, 0,
                       reinterpret_cast<LPARAM>(&item));
        ::SendMessageW(window, WM_COMMAND, IDOK, 0);
        PumpUntil([&] { return converters.Started() == 1; }, std::chrono::seconds(10));
        messageAnswer = IDYES;
        ::SendMessageW(window, WM_COMMAND, IDCANCEL, 0);
        ::PostMessageW(window, WM_COMMAND, IDCANCEL, 0);
        return FALSE;
    });

    std::atomic<bool> returned{false};
    const HANDLE thread = ::CreateThread(nullptr, 0, &UserInterface, &returned, 0, nullptr);
    EXPECT_EQ(::WaitForSingleObject(thread, 30'000), WAIT_OBJECT_0) << "the thread did not end";
    EXPECT_FALSE(returned) << "the dialog was destroyed under its worker";
    EXPECT_EQ(exitCode, 2);
    EXPECT_TRUE(workerWaited);
    ::CloseHandle(thread);
    ::CloseHandle(worker);
}

}  // namespace
