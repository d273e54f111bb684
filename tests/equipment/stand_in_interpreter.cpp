// Stands in for the command interpreter: tests put it in cmd.exe's place in the Wine session's system folder
// (see interpreter_swap.h). It owns a hidden top-level window, as a console does on Windows, where the real
// interpreter's console belongs to another process under Wine; so the close request of a stop reaches it.
// It never runs a converter. What can be set:
//
//   TALVENOR_INTERPRETER_OUT  file that one block a run is appended to
//   TALVENOR_INTERPRETER_MS   how long to run, milliseconds (200)
//   TALVENOR_INTERPRETER_RC   exit code of a run that nobody closed (0)
//
// The block begins like the stand-in converter's (command, directory, title, show), is written once the
// window is there to be closed, and ends, when the run does, with:
//
//   closed=0|1                whether SC_CLOSE arrived
//   ended=<exit code>         3 when it did
#include <windows.h>
#include <imm.h>

#include <string>

#include "tests/equipment/stand_in_settings.h"

namespace {

constexpr wchar_t kRecordVariable[] = L"TALVENOR_INTERPRETER_OUT";
constexpr wchar_t kClassName[] = L"StandInInterpreter";
constexpr UINT_PTR kEndTimerId = 1;
constexpr DWORD kUsualRunMs = 200;
constexpr int kClosed = 3;
constexpr int kCannotRecord = 97;
constexpr int kNoWindow = 98;

bool closeArrived = false;

LRESULT CALLBACK WindowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    // The low four bits of a system command are the system's own.
    if (message == WM_SYSCOMMAND && (wParam & 0xFFF0) == SC_CLOSE) {
        closeArrived = true;
        ::PostQuitMessage(0);
        return 0;
    }
    if (message == WM_TIMER) {
        ::PostQuitMessage(0);
        return 0;
    }
    return ::DefWindowProcW(window, message, wParam, lParam);
}

HWND CreateHiddenWindow(HINSTANCE instance) {
    WNDCLASSW windowClass = {};
    windowClass.lpfnWndProc = WindowProcedure;
    windowClass.hInstance = instance;
    windowClass.lpszClassName = kClassName;
    if (!::RegisterClassW(&windowClass)) return nullptr;
    return ::CreateWindowExW(0, kClassName, L"", WS_OVERLAPPEDWINDOW, 0, 0, 9, 9, nullptr, nullptr, instance,
                             nullptr);
}

}  // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, LPWSTR, int) {
    // The input method's own hidden window would now and then be found before ours: 2 of 20 stop requests
    // went there, with it disabled 0 of 60.
    ::ImmDisableIME(0);
    const HWND window = CreateHiddenWindow(instance);
    if (!window) return kNoWindow;
    const DWORD runMs = stand_in::NumberSetting(L"TALVENOR_INTERPRETER_MS", kUsualRunMs);
    if (!::SetTimer(window, kEndTimerId, runMs, nullptr)) return kNoWindow;
    if (!stand_in::AppendRecord(kRecordVariable, stand_in::DescribeStart())) return kCannotRecord;

    MSG message;
    while (::GetMessageW(&message, nullptr, 0, 0) > 0) ::DispatchMessageW(&message);

    const int code =
        closeArrived ? kClosed : static_cast<int>(stand_in::NumberSetting(L"TALVENOR_INTERPRETER_RC", 0));
    const std::wstring end =
        std::wstring(L"closed=") + (closeArrived ? L"1" : L"0") + L"\nended=" + std::to_wstring(code) + L'\n';
    return stand_in::AppendRecord(kRecordVariable, end) ? code : kCannotRecord;
}
