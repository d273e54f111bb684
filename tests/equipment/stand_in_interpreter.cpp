// Stands in for the command interpreter: tests put it in cmd.exe's place in the Wine session's system folder
// (see system_program_swap.h). It owns a hidden top-level window, as a console does on Windows, where the
// real interpreter's console belongs to another process under Wine; so the close request of a stop reaches
// it. It never runs a converter. What can be set:
//
//   TALVENOR_INTERPRETER_OUT     file that one block a run is appended to
//   TALVENOR_INTERPRETER_MS      how long to run, milliseconds (200)
//   TALVENOR_INTERPRETER_IGNORE  1: a request to close is written down, and the run goes on
//   TALVENOR_INTERPRETER_CLASS   class of the window (StandInInterpreter)
//
// A PDF's own name, which is the title of the run, goes before the time: in "wait500.pdf" it runs for 500 ms.
//
// The block begins like the stand-in converter's (command, directory), is written once the
// window is there to be closed, and ends, when the run does, with:
//
//   closed=0|1                whether SC_CLOSE arrived; written at once when it is ignored
//   ended=<exit code>         3 when it was closed, else 0
#include <windows.h>
#include <imm.h>

#include <string>

#include "tests/equipment/stand_in_settings.h"

namespace {

constexpr wchar_t kRecordVariable[] = L"TALVENOR_INTERPRETER_OUT";
constexpr UINT_PTR kEndTimerId = 1;
constexpr DWORD kUsualRunMs = 200;
constexpr int kClosed = 3;
constexpr int kCannotRecord = 97;
constexpr int kNoWindow = 98;

bool closeArrived = false;

void OnCloseRequest() {
    closeArrived = true;
    if (stand_in::Setting(L"TALVENOR_INTERPRETER_IGNORE") != L"1") {
        ::PostQuitMessage(kClosed);
    } else if (!stand_in::AppendRecord(kRecordVariable, L"closed=1\n")) {
        ::PostQuitMessage(kCannotRecord);
    }
}

LRESULT CALLBACK WindowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    // The low four bits of a system command are the system's own.
    if (message == WM_SYSCOMMAND && (wParam & 0xFFF0) == SC_CLOSE) {
        OnCloseRequest();
        return 0;
    }
    if (message == WM_TIMER) {
        ::PostQuitMessage(0);
        return 0;
    }
    return ::DefWindowProcW(window, message, wParam, lParam);
}

std::wstring ClassName() {
    const std::wstring name = stand_in::Setting(L"TALVENOR_INTERPRETER_CLASS");
    return name.empty() ? L"StandInInterpreter" : name;
}

HWND CreateHiddenWindow(HINSTANCE instance) {
    const std::wstring className = ClassName();
    WNDCLASSW windowClass = {};
    windowClass.lpfnWndProc = WindowProcedure;
    windowClass.hInstance = instance;
    windowClass.lpszClassName = className.c_str();
    if (!::RegisterClassW(&windowClass)) return nullptr;
    return ::CreateWindowExW(0, className.c_str(), L"", WS_OVERLAPPEDWINDOW, 0, 0, 9, 9, nullptr, nullptr,
                             instance, nullptr);
}

DWORD RunMs() {
    STARTUPINFOW startup = {};
    ::GetStartupInfoW(&startup);
    return stand_in::RunMs(startup.lpTitle ? startup.lpTitle : L"", L"TALVENOR_INTERPRETER_MS", kUsualRunMs);
}

}  // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, LPWSTR, int) {
    // The input method's own hidden window would now and then be found before ours: 2 of 20 stop requests
    // went there, with it disabled 0 of 60.
    ::ImmDisableIME(0);
    const HWND window = CreateHiddenWindow(instance);
    if (!window) return kNoWindow;
    if (!::SetTimer(window, kEndTimerId, RunMs(), nullptr)) return kNoWindow;
    if (!stand_in::AppendRecord(kRecordVariable, stand_in::DescribeStart())) return kCannotRecord;

    MSG message;
    while (::GetMessageW(&message, nullptr, 0, 0) > 0) ::DispatchMessageW(&message);

    const auto code = static_cast<int>(message.wParam);
    const std::wstring end =
        std::wstring(L"closed=") + (closeArrived ? L"1" : L"0") + L"\nended=" + std::to_wstring(code) + L'\n';
    return stand_in::AppendRecord(kRecordVariable, end) ? code : kCannotRecord;
}
