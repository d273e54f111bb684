// Stands in for the command interpreter: tests put it in cmd.exe's place in the Wine session's system folder
// (see system_program_swap.h). It owns a hidden top-level window, as a console does on Windows, where the
// real interpreter's console belongs to another process under Wine; so the close request of a stop reaches
// it. It never runs a converter. The PDF's name, which is the title of the run, says what it does:
//
//   wait500    runs for 500 ms; for 200 unless something else is said
//   ignore     a request to close is written down, and the run goes on
//
// What is written down begins like the stand-in converter's (command, program, directory), once the window is
// there to be closed, and ends, when the run does, with:
//
//   closed=0|1                whether SC_CLOSE arrived; written at once when it is ignored
//   ended=<exit code>         3 when it was closed, else 0
#include <windows.h>
#include <imm.h>

#include <string>

#include "tests/equipment/stand_in.h"

namespace {

constexpr UINT_PTR kEndTimerId = 1;
constexpr DWORD kUsualRunMs = 200;
constexpr int kClosed = 3;
constexpr int kNoWindow = 98;

bool closeArrived = false;

std::wstring Title() {
    STARTUPINFOW startup = {};
    ::GetStartupInfoW(&startup);
    return startup.lpTitle ? startup.lpTitle : L"";
}

void OnCloseRequest() {
    closeArrived = true;
    if (Title().find(L"ignore") == std::wstring::npos) {
        ::PostQuitMessage(kClosed);
    } else if (!stand_in::AppendRecord(L"closed=1\n")) {
        ::PostQuitMessage(stand_in::kCannotRecord);
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

HWND CreateHiddenWindow(HINSTANCE instance) {
    WNDCLASSW windowClass = {};
    windowClass.lpfnWndProc = WindowProcedure;
    windowClass.hInstance = instance;
    windowClass.lpszClassName = L"StandInInterpreter";
    if (!::RegisterClassW(&windowClass)) return nullptr;
    return ::CreateWindowExW(0, windowClass.lpszClassName, L"", WS_OVERLAPPEDWINDOW, 0, 0, 9, 9, nullptr,
                             nullptr, instance, nullptr);
}

}  // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, LPWSTR, int) {
    // The input method's own hidden window would now and then be found before ours: 2 of 20 stop requests
    // went there, with it disabled 0 of 60.
    ::ImmDisableIME(0);
    const HWND window = CreateHiddenWindow(instance);
    const DWORD runMs = stand_in::NumberIn(Title(), L"wait", kUsualRunMs);
    if (!window || !::SetTimer(window, kEndTimerId, runMs, nullptr)) return kNoWindow;
    if (!stand_in::AppendRecord(stand_in::DescribeStart())) return stand_in::kCannotRecord;

    MSG message;
    while (::GetMessageW(&message, nullptr, 0, 0) > 0) ::DispatchMessageW(&message);

    const auto code = static_cast<int>(message.wParam);
    const std::wstring end =
        std::wstring(L"closed=") + (closeArrived ? L"1" : L"0") + L"\nended=" + std::to_wstring(code) + L'\n';
    return stand_in::AppendRecord(end) ? code : stand_in::kCannotRecord;
}
