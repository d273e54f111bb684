// The real main window with a batch whose converters exist in the test only. A test adds files, plans how
// their converters behave, presses "Convertir" and looks at what the window shows and what the worker did.
#pragma once

#include "tests/equipment/scripted_converters.h"
#include "tests/equipment/worker_calls.h"
#include "tests/support/replaced_late_import.h"
#include "tests/window/main_window_fixture.h"
#include "tests/window/scripted_shutdown.h"
#include "tests/window/scripted_taskbar.h"
#include "tests/window/worker_window_calls.h"

#include <windows.h>
#include <commdlg.h>
#include <shlobj.h>
#include <shlwapi.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <thread>
#include <vector>

// Beside the calls of its parts `worker` has:
//   PathStripPathW C:\in\a.pdf
//   SHGetFolderPathW owner=none folder=0x25 token=none flags=1      (the folder is C:\système)
//   DeleteFileW C:\...\TalvenorLog.txt
//   MessageBoxW Conversion terminée !
class BatchFixture : public MainWindowFixture {
protected:
    using Start = ScriptedConverters::Start;

    BatchFixture() {
        stopAnswer = IDYES;
        Create();
    }
    ~BatchFixture() override {
        converters.ReleaseAll();
        TakeQuitMessage();  // nothing is waited for while there is one
        // Before the window is: a worker that ends between the look at the flag and the stop would make a
        // quit of it.
        EXPECT_TRUE(WaitFor([&] { return !dialog->HasWorker(); })) << "a worker did not end";
        stopAnswer = IDYES;
        Destroy();
    }

    // Puts files into the list as a user does: dropped, and the open dialog cancelled, so that "Convertir"
    // can be pressed.
    void AddFiles(const std::vector<std::wstring>& paths) {
        Drop(paths);
        Click(IDC_ADD);
        ASSERT_TRUE(IsEnabled(IDOK));
    }
    void PressConvert() { Click(IDOK); }
    // Starts a batch of the rows in the list, however they came there, and waits for its first converter.
    // Converters without a plan run until they are released.
    void StartBatch() {
        converters.HoldAll();
        const int before = converters.Started();
        Command(IDOK, BN_CLICKED);
        ASSERT_TRUE(WaitFor([&] { return converters.Started() > before; })) << "no converter was started";
    }
    // Presses "Convertir" and waits for the worker to end. Fails when it does not.
    void RunBatch() {
        PressConvert();
        WaitForEnd();
    }
    // Waits until `number` converters have been started and the worker waits for the last.
    void WaitForConverter(int number) {
        const std::string wait = "WaitForSingleObject process " + std::to_string(number) + ' ';
        ASSERT_TRUE(WaitFor([&] { return worker.Count(wait) > 0; }))
            << "converter " << number << " did not start";
    }
    void WaitForEnd() {
        ASSERT_TRUE(WaitFor([&] { return !dialog->HasWorker(); })) << "the worker did not end";
    }

    // Waits until `condition` holds or ten seconds are over, and serves no message meanwhile.
    static bool WaitUnserved(const std::function<bool()>& condition) {
        const ULONGLONG end = ::GetTickCount64() + 10'000;
        while (!condition() && ::GetTickCount64() < end) std::this_thread::yield();
        return condition();
    }

    // Presses "Arrêter " and answers `stopAnswer` to the question. Also from an action on the worker.
    void PressStop() { Click(IDCANCEL); }
    // The same from the worker, in the nth call from now that begins with `call`.
    void StopAt(const std::string& call, int nth = 1) {
        worker.At(call, nth, [this] { PressStop(); });
    }

    // Puts C:\in\a.pdf, C:\in\b.pdf and so on into the list until it has `count` files.
    void AddFiles(int count) {
        std::vector<std::wstring> paths;
        for (int file = RowCount(); file < count; ++file) {
            paths.push_back(std::wstring(L"C:\\in\\") + static_cast<wchar_t>(L'a' + file) + L".pdf");
        }
        AddFiles(paths);
    }
    // A batch of so many files, with these plans for its converters: to its end, or to the first that is
    // held.
    void Convert(int files, std::vector<Conversion> plan = {}) {
        AddFiles(files);
        converters.Plan(std::move(plan));
        RunBatch();
    }
    void ConvertUntilHeld(int files, std::vector<Conversion> plan) {
        AddFiles(files);
        const auto held = std::ranges::find_if(plan, &Conversion::held);
        const int number = converters.Started() + 1 + static_cast<int>(held - plan.begin());
        converters.Plan(std::move(plan));
        PressConvert();
        WaitForConverter(number);
    }
    // Starts a batch without files, which runs until it is stopped. Its worker ends at once.
    void StartEmptyBatch() {
        ASSERT_EQ(RowCount(), 0);
        Command(IDOK, BN_CLICKED);
        ASSERT_TRUE(WaitFor([&] { return dialog->IsRunning() && !dialog->HasWorker(); }))
            << "the batch did not come to rest";
    }
    // Lets a held converter end, and the batch with it.
    void Finish(int number) {
        converters.Release(number);
        WaitForEnd();
    }
    // That the window is as after a batch, however that ended.
    void ExpectIdle() const {
        EXPECT_FALSE(dialog->IsRunning());
        EXPECT_EQ(SelectedRow(), -1);
        EXPECT_EQ(Text(IDC_STATUS), L"");
        EXPECT_EQ(Text(IDCANCEL), L"Quitter");
        EXPECT_TRUE(IsEnabled(IDOK));
    }

    // The code of the quit message that the window has posted, which is removed; -1 without one.
    static int TakeQuitMessage() {
        MSG message;
        if (!::PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE)) return -1;
        return static_cast<int>(message.wParam);
    }
    // A tick of the timer, when the system's clock shows `tick`.
    void Tick(DWORD tick, WPARAM timerId = 2) {
        converters.tick = tick;
        ::SendMessageW(Dialog(), WM_TIMER, timerId, 0);
    }

    [[nodiscard]] std::wstring LogFile() const { return folder.File(L"TalvenorLog.txt"); }
    [[nodiscard]] bool LogExists() const { return std::filesystem::exists(LogFile()); }
    void WriteLog(const std::string& bytes) const {
        std::ofstream(std::filesystem::path(LogFile()), std::ios::binary | std::ios::app) << bytes;
    }
    // The texts of the message boxes that were shown, in their order.
    [[nodiscard]] std::vector<std::string> MessageTexts() const {
        std::vector<std::string> texts;
        for (const std::string& call : calls.Calls()) {
            const std::size_t text = call.find(" text=");
            const std::size_t caption = call.find(" caption=");
            if (call.starts_with("MessageBoxW")) texts.push_back(call.substr(text + 6, caption - text - 6));
        }
        return texts;
    }

    WorkerCalls worker;
    CallRecord shutdownCalls;

    static inline std::atomic<int> stopAnswer{IDYES};

private:
    Replaced m_messageBox = REPLACE_IMPORT(
        MessageBoxW, [this](auto original, HWND owner, LPCWSTR text, LPCWSTR caption, UINT type) {
            original(owner, text, caption, type);  // writes it down
            worker.Note("MessageBoxW " + Utf8(text));
            return (type & MB_YESNO) ? stopAnswer.load() : IDOK;
        });
    ReplacedLateImport m_openDialog{"GetOpenFileNameW",
                                    +[](LPOPENFILENAMEW) WINAPI -> BOOL { return FALSE; }};
    Replaced m_delete = REPLACE_IMPORT(DeleteFileW, [this](auto original, LPCWSTR path) {
        worker.Note("DeleteFileW " + Utf8(path));
        return original(path);
    });
    Replaced m_strip = REPLACE_IMPORT(PathStripPathW, [this](auto original, LPWSTR path) {
        worker.Note("PathStripPathW " + Utf8(path));
        original(path);
    });
    Replaced m_folder = REPLACE_IMPORT(
        SHGetFolderPathW, [this](HWND owner, int folderId, HANDLE token, DWORD flags, LPWSTR path) {
            worker.Note(CallText("SHGetFolderPathW", owner ? "owner=some" : "owner=none",
                                 "folder=" + Hex(static_cast<unsigned>(folderId)),
                                 token ? "token=some" : "token=none", "flags=" + std::to_string(flags)));
            ::lstrcpynW(path, L"C:\\système", MAX_PATH);
            return S_OK;
        });

protected:
    ScriptedConverters converters{worker};
    ScriptedConsoles& consoles = converters.consoles;
    ScriptedTaskbar taskbar;
    WorkerWindowCalls windows{worker};
    ScriptedShutdown shutdown{shutdownCalls};
};
