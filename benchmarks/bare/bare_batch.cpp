// A batch with nothing around it: starts the interpreter with each line of a file and waits for it. With
// "window" the bare dialog is shown meanwhile, and another thread runs the batch, as in Talvenor; a process
// with windows costs more to start others from.
//
//   bare_batch LINES hidden|visible alone|window RESULT
//
// LINES is UTF-16: for each file the interpreter's arguments, then its window's title, a line each. The result
// is the wall time and this program's own processor time, in milliseconds.
#include "tests/equipment/failure.h"
#include "tests/equipment/file_bytes.h"
#include "tests/equipment/handle.h"

#include "benchmarks/bare/bare_dialog.h"
#include "benchmarks/support/stopwatch.h"

#include <windows.h>
#include <commctrl.h>

#include <string>
#include <vector>

namespace {

std::vector<std::wstring> ReadLines(const std::wstring& path) {
    const std::string bytes = driver::ReadFileBytes(path);
    const std::wstring text(reinterpret_cast<const wchar_t*>(bytes.data()), bytes.size() / sizeof(wchar_t));
    std::vector<std::wstring> lines;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = text.find(L'\n', at);
        lines.push_back(text.substr(at, end - at));
        at = end + 1;
    }
    return lines;
}

double OwnCpuMilliseconds() {
    FILETIME ignored;
    FILETIME kernel;
    FILETIME user;
    if (!::GetProcessTimes(::GetCurrentProcess(), &ignored, &ignored, &kernel, &user))
        driver::FailCall("GetProcessTimes", ::GetLastError());
    return (kernel.dwLowDateTime + user.dwLowDateTime) / 10'000.0;
}

void RunInterpreter(const wchar_t* interpreter, std::wstring arguments, std::wstring title, WORD show) {
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESHOWWINDOW;
    startup.wShowWindow = show;
    startup.lpTitle = title.data();
    PROCESS_INFORMATION process = {};
    if (!::CreateProcessW(interpreter, arguments.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup,
                          &process)) {
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
    std::vector<std::wstring> lines;
    WORD show;
    std::wstring resultFile;
};

void Run(const Batch& batch) {
    wchar_t interpreter[MAX_PATH] = {};
    ::GetSystemDirectoryW(interpreter, MAX_PATH);
    ::lstrcatW(interpreter, L"\\cmd.exe");
    const double cpuBefore = OwnCpuMilliseconds();
    const Stopwatch stopwatch;
    for (std::size_t i = 0; i + 1 < batch.lines.size(); i += 2) {
        RunInterpreter(interpreter, batch.lines[i], batch.lines[i + 1], batch.show);
    }
    const double wall = stopwatch.Milliseconds();
    const double cpu = OwnCpuMilliseconds() - cpuBefore;
    driver::WriteFileBytes(batch.resultFile, std::to_string(wall) + ' ' + std::to_string(cpu));
}

struct WindowBatch {
    Batch batch;
    HWND dialog;
};

// A batch that fails leaves no result, and is noticed by that.
DWORD WINAPI RunBesideWindow(void* parameter) {
    const auto& [batch, dialog] = *static_cast<const WindowBatch*>(parameter);
    try {
        Run(batch);
    } catch (const std::exception&) {
    }
    ::PostMessageW(dialog, WM_CLOSE, 0, 0);
    return 0;
}

void RunWithWindow(Batch batch, HINSTANCE instance) {
    ::InitCommonControls();
    WindowBatch both{std::move(batch), CreateBareDialog(instance)};
    ::ShowWindow(both.dialog, SW_SHOW);
    const driver::UniqueHandle thread(::CreateThread(nullptr, 0, &RunBesideWindow, &both, 0, nullptr));
    RunBareDialog(both.dialog);
    ::WaitForSingleObject(thread.Get(), INFINITE);
}

}  // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, LPWSTR, int) {
    if (__argc != 5) return 2;
    try {
        const bool hidden = std::wstring(__wargv[2]) == L"hidden";
        Batch batch{ReadLines(__wargv[1]), static_cast<WORD>(hidden ? SW_HIDE : SW_SHOW), __wargv[4]};
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
