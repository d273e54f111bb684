// Answers in the system's place: converters, their consoles, and the threads that wait for them.
#pragma once

#include "tests/faults/harness/doubles_base.h"

#include <windows.h>
#include <process.h>
#include <shlwapi.h>

#include <algorithm>
#include <memory>
#include <string>

struct ConverterDoubles : DoublesBase {
    // Windows that are only talked about: of somebody else, and of the converter's console.
    static inline const auto kForeignWindow = reinterpret_cast<HWND>(0x7F01);
    static inline const auto kConsole = reinterpret_cast<HWND>(0x7F02);
    static constexpr DWORD kForeignProcess = 4;
    static constexpr DWORD kConverterProcess = 4242;
    static constexpr DWORD kConversionMs = 7000;
    static constexpr DWORD kClosedByUser = 3;

    // Converters

    // As the system: what is not there cannot be started, nor in a folder that is not there.
    static DWORD WhyNotStarted(const ConverterPlan& plan, const wchar_t* program, const wchar_t* folder) {
        if (plan.startError != 0) return plan.startError;
        if (!::PathFileExistsW(program)) return ERROR_FILE_NOT_FOUND;
        return ::PathIsDirectoryW(folder) ? ERROR_SUCCESS : ERROR_DIRECTORY;
    }

    static BOOL WINAPI CreateProcessW(LPCWSTR program, LPWSTR arguments, LPSECURITY_ATTRIBUTES,
                                      LPSECURITY_ATTRIBUTES, BOOL /*inherit*/, DWORD /*flags*/,
                                      LPVOID /*environment*/, LPCWSTR folder, LPSTARTUPINFOW startup,
                                      LPPROCESS_INFORMATION process) {
        Platform& self = Current();
        self.Note(Request::Start, (startup->wShowWindow == SW_HIDE ? "hidden " : "visible ") +
                                      Text(startup->lpTitle) + " in " + Text(folder) + ": " +
                                      Text(arguments));
        const int number = self.m_requested++;
        const auto last = static_cast<int>(self.converters.size()) - 1;
        const ConverterPlan plan = self.converters[static_cast<std::size_t>(std::min(number, last))];
        if (const DWORD error = WhyNotStarted(plan, program, folder); error != ERROR_SUCCESS) {
            ++self.m_started;
            ::SetLastError(error);
            return FALSE;
        }
        if (!self.realConverter.empty()) {
            ++self.m_started;
            std::wstring line = self.realConverter;
            return ::CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                                    startup, process);
        }
        const HANDLE ended = ::CreateEventW(nullptr, TRUE, !plan.held, nullptr);
        Platform::Converter converter{number + 1, plan.exitCode, nullptr};
        if (plan.held) {
            const HANDLE own = ::GetCurrentProcess();
            ::DuplicateHandle(own, ended, own, &converter.ended, 0, FALSE, DUPLICATE_SAME_ACCESS);
        }
        process->hProcess = ended;
        process->hThread = ::CreateEventW(nullptr, TRUE, FALSE, nullptr);
        process->dwProcessId = kConverterProcess;
        process->dwThreadId = 0;
        self.m_tick += kConversionMs;
        const SystemLockHold lock(self.m_lock);
        self.m_running[ended] = converter;
        ++self.m_started;  // from here on it can be ended
        return TRUE;
    }

    static BOOL WINAPI GetExitCodeProcess(HANDLE process, LPDWORD code) {
        Platform& self = Current();
        if (!self.realConverter.empty()) return ::GetExitCodeProcess(process, code);
        const SystemLockHold lock(self.m_lock);
        const Platform::Converter& converter = self.m_running[process];
        *code = converter.ended ? STILL_ACTIVE : converter.exitCode;
        return TRUE;
    }

    static BOOL WINAPI EnumWindows(WNDENUMPROC callback, LPARAM parameter) {
        if (!callback(kForeignWindow, parameter)) return FALSE;
        return Current().ConverterRuns() ? callback(kConsole, parameter) : TRUE;
    }

    static DWORD WINAPI GetWindowThreadProcessId(HWND window, LPDWORD processId) {
        *processId = window == kConsole ? kConverterProcess : kForeignProcess;
        return 1;
    }

    static BOOL WINAPI SendNotifyMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        if (window != kConsole && window != kForeignWindow) {
            return ::SendNotifyMessageW(window, message, wParam, lParam);
        }
        Platform& self = Current();
        const bool closes = window == kConsole && message == WM_SYSCOMMAND && wParam == SC_CLOSE;
        self.Note(Request::Close, closes ? "console" : "something else");
        if (closes && !self.consolesIgnoreClosing) self.EndConverters(kClosedByUser);
        return TRUE;
    }

    // Threads

    struct WorkerStart {
        void (*start)(void*);
        void* argument;
        Platform* platform;
    };

    static void __cdecl RunWorker(void* parameter) {
        const std::unique_ptr<WorkerStart> worker(static_cast<WorkerStart*>(parameter));
        CurrentHost().Watch().Happens("worker starts");
        worker->start(worker->argument);
        --worker->platform->m_workers;
    }

    static std::uintptr_t __cdecl BeginThread(void(__cdecl* start)(void*), unsigned stack, void* argument) {
        Platform& self = Current();
        ++self.m_workers;
        return ::_beginthread(&RunWorker, stack, new WorkerStart{start, argument, &self});
    }
};
