#include "engine/stop_request.h"

#include "base/unique_resource.h"

#include <string_view>

namespace {

// Whether the request has reached a window that serves it.
enum class ConsoleAnswer {
    Asked,    // an ordinary window, which ends the conversion or has a reason not to
    NoWindow  // there is none, or one that takes no requests
};

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

// The first top-level window of the process is asked, shown or hidden.
ConsoleAnswer AskConsoleToClose(DWORD processId) noexcept {
    Search search = {processId, ConsoleAnswer::NoWindow};
    ::EnumWindows(&CloseWindowOfProcess, reinterpret_cast<LPARAM>(&search));
    return search.answer;
}

}  // namespace

void RequestConverterClose(const std::atomic<DWORD>& processId, const ConverterJob& job) noexcept {
    UniqueHandle process;  // as long as it is held, the id belongs to no other program
    DWORD found = 0;
    do {
        found = processId;
        if (found == 0) return;
        process.Reset(::OpenProcess(SYNCHRONIZE, FALSE, found));
        // The worker held it up to now, if the id is still the same: what was opened is the interpreter.
    } while (processId != found);
    if (AskConsoleToClose(found) == ConsoleAnswer::NoWindow) job.End();
}
