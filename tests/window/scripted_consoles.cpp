#include "tests/window/scripted_consoles.h"

#include <cstdio>

namespace {

std::string Hex(unsigned number) {
    char text[16];
    std::snprintf(text, sizeof text, "0x%X", number);
    return text;
}

constexpr ULONG_PTR kBeforeFirst = 0x990000;

HWND HandleOf(std::size_t number) {
    return reinterpret_cast<HWND>(kBeforeFirst + number);
}

}  // namespace

ScriptedConsoles::ScriptedConsoles(WorkerCalls& worker) {
    // Counted from 1; 0 for a window that is none of these.
    const auto numberOf = [this](HWND window) {
        const std::size_t number = reinterpret_cast<ULONG_PTR>(window) - kBeforeFirst;
        return number >= 1 && number <= windows.size() ? number : 0;
    };
    m_replaced.push_back(Replace<decltype(::AssignProcessToJobObject)>(
        "AssignProcessToJobObject", [&worker](HANDLE job, HANDLE process) {
            worker.Note("AssignProcessToJobObject " + (job ? worker.HandleName(process) : "without a job"));
            return TRUE;
        }));
    m_replaced.push_back(
        Replace<decltype(::TerminateJobObject)>("TerminateJobObject", [this](HANDLE job, UINT exitCode) {
            requests.Add("TerminateJobObject " + (job ? Hex(exitCode) : "without a job"));
            return TRUE;
        }));
    m_replaced.push_back(
        Replace<decltype(::OpenProcess)>("OpenProcess", [this](DWORD access, BOOL inherits, DWORD processId) {
            requests.Add("OpenProcess " + std::to_string(processId) + " access=" + Hex(access) +
                         (inherits ? " inherited" : ""));
            if (whenOpened) whenOpened();
            return canOpenProcesses ? ::CreateEventW(nullptr, TRUE, FALSE, nullptr) : nullptr;
        }));
    m_replaced.push_back(
        Replace<decltype(::EnumWindows)>("EnumWindows", [this](WNDENUMPROC callback, LPARAM parameter) {
            for (std::size_t number = 1; number <= windows.size(); ++number) {
                requests.Add("window " + std::to_string(number));
                if (!callback(HandleOf(number), parameter)) return FALSE;
            }
            return TRUE;
        }));
    m_replaced.push_back(Replace<decltype(::GetWindowThreadProcessId)>(
        "GetWindowThreadProcessId", [=, this](auto original, HWND window, LPDWORD processId) -> DWORD {
            const std::size_t number = numberOf(window);
            if (number == 0) return original(window, processId);
            if (processId) *processId = windows[number - 1].processId;
            return 1;
        }));
    m_replaced.push_back(Replace<decltype(::GetClassNameW)>(
        "GetClassNameW", [=, this](auto original, HWND window, LPWSTR name, int size) {
            const std::size_t number = numberOf(window);
            if (number == 0) return original(window, name, size);
            if (!reportsClassNames) return 0;
            ::lstrcpynW(name, windows[number - 1].className.c_str(), size);
            return ::lstrlenW(name);
        }));
    m_replaced.push_back(Replace<decltype(::SendNotifyMessageW)>(
        "SendNotifyMessageW",
        [=, this](auto original, HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
            const std::size_t number = numberOf(window);
            if (number == 0) return original(window, message, wParam, lParam);
            const bool closes = message == WM_SYSCOMMAND && wParam == SC_CLOSE && lParam == 0;
            requests.Add((closes ? "WM_SYSCOMMAND SC_CLOSE to " : "message " + Hex(message) + " to ") +
                         std::to_string(number));
            return TRUE;
        }));
}
