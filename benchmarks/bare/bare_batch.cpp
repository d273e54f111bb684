// A batch with nothing around it: starts the interpreter with each line of a file and waits for it. With
// "window" that is the work of a second thread, and the bare dialog shows what a person is to see of it: the
// file's row selected and in sight, its path in the status line, a duration when it is done. It has opened
// the system's dialog for files once, as everyone has who gets to press "Convertir": the libraries that come
// with it stay, and with them starting a process takes longer.
//
//   bare_batch LINES hidden|visible alone|window RESULT
//
// LINES is UTF-16, three lines for each file: the interpreter's arguments, its window's title, the file's
// path. The result is the wall time and this program's own processor time, in milliseconds.
#include "base/unique_resource.h"
#include "tests/equipment/failure.h"
#include "tests/equipment/file_bytes.h"

#include "benchmarks/bare/bare_dialog.h"
#include "benchmarks/bare/batch_display.h"
#include "benchmarks/support/stopwatch.h"

#include <windows.h>
#include <commctrl.h>
#include <commdlg.h>

#include <string>
#include <vector>

namespace {

// Whoever asks the window for an answer has this long to see that the batch is over.
constexpr DWORD kLastQuestionMs = 500;

struct File {
    std::wstring arguments;
    std::wstring title;
    std::wstring path;
};

std::vector<File> ReadFiles(const std::wstring& path) {
    const std::string bytes = driver::ReadFileBytes(path);
    const std::wstring text(reinterpret_cast<const wchar_t*>(bytes.data()), bytes.size() / sizeof(wchar_t));
    std::size_t at = 0;
    const auto nextLine = [&] {
        const std::size_t begin = at;
        const std::size_t end = text.find(L'\n', begin);
        at = end + 1;
        return text.substr(begin, end - begin);
    };
    std::vector<File> files;
    while (at < text.size()) {
        File file;
        file.arguments = nextLine();
        file.title = nextLine();
        file.path = nextLine();
        files.push_back(std::move(file));
    }
    return files;
}

double OwnCpuMilliseconds() {
    FILETIME ignored;
    FILETIME kernel;
    FILETIME user;
    if (!::GetProcessTimes(::GetCurrentProcess(), &ignored, &ignored, &kernel, &user))
        driver::FailCall("GetProcessTimes", ::GetLastError());
    return (kernel.dwLowDateTime + user.dwLowDateTime) / 10'000.0;
}

void RunInterpreter(const wchar_t* interpreter, File file, WORD show) {
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESHOWWINDOW;
    startup.wShowWindow = show;
    startup.lpTitle = file.title.data();
    PROCESS_INFORMATION process = {};
    if (!::CreateProcessW(interpreter, file.arguments.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                          &startup, &process)) {
        driver::FailCall("CreateProcessW", ::GetLastError());
    }
    ::WaitForSingleObject(process.hProcess, INFINITE);
    DWORD exitCode = 1;
    ::GetExitCodeProcess(process.hProcess, &exitCode);
    ::CloseHandle(process.hProcess);
    ::CloseHandle(process.hThread);
    if (exitCode != 0) throw driver::Failure("the interpreter ended with " + std::to_string(exitCode));
}

struct Batch {
    std::vector<File> files;
    WORD show = SW_SHOW;
    std::wstring resultFile;
    HWND dialog = nullptr;  // null: nothing is shown
};

void Run(const Batch& batch) {
    wchar_t interpreter[MAX_PATH] = {};
    ::GetSystemDirectoryW(interpreter, MAX_PATH);
    ::lstrcatW(interpreter, L"\\cmd.exe");
    const BatchDisplay display(batch.dialog);
    const double cpuBefore = OwnCpuMilliseconds();
    const Stopwatch stopwatch;
    int row = 0;
    for (const File& file : batch.files) {
        if (batch.dialog) display.ShowStart(row, file.path);
        RunInterpreter(interpreter, file, batch.show);
        if (batch.dialog) display.ShowEnd(row);
        ++row;
    }
    const double wall = stopwatch.Milliseconds();
    const double cpu = OwnCpuMilliseconds() - cpuBefore;
    driver::WriteFileBytes(batch.resultFile, std::to_string(wall) + ' ' + std::to_string(cpu));
}

// A batch that fails leaves no result, and is noticed by that.
DWORD WINAPI RunBesideWindow(void* parameter) {
    const auto& batch = *static_cast<const Batch*>(parameter);
    try {
        Run(batch);
    } catch (const std::exception&) {
    }
    ::Sleep(kLastQuestionMs);
    ::PostMessageW(batch.dialog, WM_CLOSE, 0, 0);
    return 0;
}

UINT_PTR CALLBACK CancelWhenReady(HWND hook, UINT message, WPARAM, LPARAM lParam) {
    if (message == WM_NOTIFY && reinterpret_cast<const NMHDR*>(lParam)->code == CDN_INITDONE)
        ::PostMessageW(::GetParent(hook), WM_COMMAND, IDCANCEL, 0);
    return 0;
}

void OpenAndCancelFileDialog(HWND owner) {
    wchar_t path[MAX_PATH] = {};
    OPENFILENAMEW dialog = {};
    dialog.lStructSize = sizeof dialog;
    dialog.hwndOwner = owner;
    dialog.lpstrFile = path;
    dialog.nMaxFile = MAX_PATH;
    dialog.Flags = OFN_EXPLORER | OFN_ENABLEHOOK;
    dialog.lpfnHook = &CancelWhenReady;
    if (::GetOpenFileNameW(&dialog)) throw driver::Failure("the dialog for files was not cancelled");
}

void RunWithWindow(Batch batch, HINSTANCE instance) {
    ::InitCommonControls();
    batch.dialog = CreateBareDialog(instance);
    const BatchDisplay display(batch.dialog);
    for (std::size_t i = 0; i < batch.files.size(); ++i) {
        display.AddRow(static_cast<int>(i), batch.files[i].path);
    }
    display.FitColumns();
    ::ShowWindow(batch.dialog, SW_SHOW);
    OpenAndCancelFileDialog(batch.dialog);
    ::RedrawWindow(batch.dialog, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
    const UniqueHandle thread(::CreateThread(nullptr, 0, &RunBesideWindow, &batch, 0, nullptr));
    RunBareDialog(batch.dialog);
    ::WaitForSingleObject(thread.Get(), INFINITE);
}

}  // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, LPWSTR, int) {
    if (__argc != 5) return 2;
    try {
        Batch batch;
        batch.files = ReadFiles(__wargv[1]);
        batch.show = std::wstring(__wargv[2]) == L"hidden" ? SW_HIDE : SW_SHOW;
        batch.resultFile = __wargv[4];
        if (std::wstring(__wargv[3]) == L"window") {
            RunWithWindow(std::move(batch), instance);
        } else {
            Run(batch);
        }
    } catch (const std::exception&) {
        return 1;
    }
    return 0;
}
