#include "engine/console_request.h"

#include <string_view>

namespace {

struct Search {
    DWORD processId;
    ConsoleAnswer answer;
};

// Where a terminal shows the console (the default of Windows 11), the interpreter has a hidden window for
// old programs' sake that does not serve WM_SYSCOMMAND.
bool BelongsToTerminal(HWND window) noexcept {
    wchar_t name[32] = {};
    ::GetClassNameW(window, name, ARRAYSIZE(name));
    return name == std::wstring_view(L"PseudoConsoleWindow");
}

BOOL CALLBACK CloseWindowOfProcess(HWND window, LPARAM parameter) {
    auto& search = *reinterpret_cast<Search*>(parameter);
    DWORD owner = 0;
    ::GetWindowThreadProcessId(window, &owner);
    if (owner != search.processId) return TRUE;
    // Sent, but without waiting: a console that hangs must not take our window with it.
    ::SendNotifyMessageW(window, WM_SYSCOMMAND, SC_CLOSE, 0);
    if (!BelongsToTerminal(window)) search.answer = ConsoleAnswer::Asked;
    return FALSE;
}

}  // namespace

ConsoleAnswer AskConsoleToClose(DWORD processId) noexcept {
    Search search = {processId, ConsoleAnswer::NoWindow};
    ::EnumWindows(&CloseWindowOfProcess, reinterpret_cast<LPARAM>(&search));
    return search.answer;
}
