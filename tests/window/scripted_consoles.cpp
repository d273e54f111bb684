#include "tests/window/scripted_consoles.h"

#include <cstdio>

namespace {

std::string Hex(unsigned number) {
    char text[16];
    std::snprintf(text, sizeof text, "0x%X", number);
    return text;
}

}  // namespace

ScriptedConsoles::ScriptedConsoles(WorkerCalls& worker) : m_worker(worker) {
    s_current = this;
}

std::size_t ScriptedConsoles::NumberOf(HWND window) {
    const std::size_t number = reinterpret_cast<ULONG_PTR>(window) - 0x990000;
    return number >= 1 && number <= s_current->windows.size() ? number : 0;
}

BOOL WINAPI ScriptedConsoles::Assign(HANDLE job, HANDLE process) {
    s_current->m_worker.Note("AssignProcessToJobObject " +
                             (job ? s_current->m_worker.HandleName(process) : "without a job"));
    return TRUE;
}

BOOL WINAPI ScriptedConsoles::Terminate(HANDLE job, UINT exitCode) {
    s_current->requests.Add("TerminateJobObject " + (job ? Hex(exitCode) : "without a job"));
    return TRUE;
}

HANDLE WINAPI ScriptedConsoles::Open(DWORD access, BOOL inherits, DWORD processId) {
    s_current->requests.Add("OpenProcess " + std::to_string(processId) + " access=" + Hex(access) +
                            (inherits ? " inherited" : ""));
    if (s_current->whenOpened) s_current->whenOpened();
    return s_current->canOpenProcesses ? ::CreateEventW(nullptr, TRUE, FALSE, nullptr) : nullptr;
}

BOOL WINAPI ScriptedConsoles::Enumerate(WNDENUMPROC callback, LPARAM parameter) {
    for (std::size_t number = 1; number <= s_current->windows.size(); ++number) {
        s_current->requests.Add("window " + std::to_string(number));
        if (!callback(Handle(number), parameter)) return FALSE;
    }
    return TRUE;
}

DWORD WINAPI ScriptedConsoles::Owner(HWND window, LPDWORD processId) {
    const std::size_t number = NumberOf(window);
    if (number == 0)
        return s_current->m_owner.Original<decltype(::GetWindowThreadProcessId)>()(window, processId);
    if (processId) *processId = s_current->windows[number - 1].processId;
    return 1;
}

int WINAPI ScriptedConsoles::ClassName(HWND window, LPWSTR name, int size) {
    const std::size_t number = NumberOf(window);
    if (number == 0) return s_current->m_className.Original<decltype(::GetClassNameW)>()(window, name, size);
    if (!s_current->tellsClassNames) return 0;
    ::lstrcpynW(name, s_current->windows[number - 1].className.c_str(), size);
    return ::lstrlenW(name);
}

BOOL WINAPI ScriptedConsoles::Notify(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const std::size_t number = NumberOf(window);
    if (number == 0) {
        return s_current->m_notify.Original<decltype(::SendNotifyMessageW)>()(window, message, wParam,
                                                                              lParam);
    }
    const bool closes = message == WM_SYSCOMMAND && wParam == SC_CLOSE && lParam == 0;
    s_current->requests.Add((closes ? "WM_SYSCOMMAND SC_CLOSE to " : "message " + Hex(message) + " to ") +
                            std::to_string(number));
    return TRUE;
}
