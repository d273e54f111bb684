// Answers in the system's place: converters, their consoles, and the threads that wait for them.
#pragma once

#include "tests/faults/harness/doubles_base.h"

#include <windows.h>
#include <process.h>
#include <shlwapi.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

struct ConverterDoubles : DoublesBase {
    // Windows that are only talked about: of somebody else, and of the converter's console.
    static inline const auto kForeignWindow = reinterpret_cast<HWND>(0x7F01);
    static constexpr std::uintptr_t kFirstConsole = 0x800'0000;  // that of converter 0, which there is not
    static constexpr DWORD kForeignProcess = 4;
    static constexpr DWORD kFirstProcess = 4242;  // as with the consoles
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
            std::wstring line = self.realConverter;
            return ::CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                                    startup, process);
        }
        const HANDLE ended = ::CreateEventW(nullptr, TRUE, !plan.held, nullptr);
        Platform::Converter converter{number + 1, plan.exitCode, nullptr, plan.console, {ended}};
        if (plan.held) {
            const HANDLE own = ::GetCurrentProcess();
            ::DuplicateHandle(own, ended, own, &converter.ended, 0, FALSE, DUPLICATE_SAME_ACCESS);
        }
        process->hProcess = ended;
        process->hThread = ::CreateEventW(nullptr, TRUE, FALSE, nullptr);
        process->dwProcessId = kFirstProcess + static_cast<DWORD>(number + 1);
        process->dwThreadId = 0;
        self.m_tick += kConversionMs;
        const SystemLockHold lock(self.m_lock);
        self.m_converters[number + 1] = converter;
        return TRUE;
    }

    static DWORD WINAPI WaitForSingleObject(HANDLE process, DWORD limit) {
        ++Current().m_started;
        return ::WaitForSingleObject(process, limit);
    }

    static BOOL WINAPI GetExitCodeProcess(HANDLE process, LPDWORD code) {
        Platform& self = Current();
        if (!self.realConverter.empty()) return ::GetExitCodeProcess(process, code);
        const SystemLockHold lock(self.m_lock);
        const Platform::Converter* const converter = self.FindConverter(process);
        if (!converter) {
            ::SetLastError(ERROR_INVALID_HANDLE);
            return FALSE;
        }
        *code = converter->ended ? STILL_ACTIVE : converter->exitCode;
        return TRUE;
    }

    // As the system: a process can be opened as long as it runs or somebody holds it.
    static HANDLE WINAPI OpenProcess(DWORD access, BOOL inherit, DWORD processId) {
        Platform& self = Current();
        if (!self.realConverter.empty()) return ::OpenProcess(access, inherit, processId);
        const SystemLockHold lock(self.m_lock);
        const auto found = self.m_converters.find(static_cast<int>(processId - kFirstProcess));
        if (found == self.m_converters.end() || (!found->second.ended && found->second.held.empty())) {
            ::SetLastError(ERROR_INVALID_PARAMETER);
            return nullptr;
        }
        return *found->second.held.insert(::CreateEventW(nullptr, TRUE, FALSE, nullptr)).first;
    }

    static BOOL WINAPI CloseHandle(HANDLE handle) {
        {
            Platform& self = Current();
            const SystemLockHold lock(self.m_lock);
            if (Platform::Converter* const converter = self.FindConverter(handle)) {
                converter->held.erase(handle);
            }
        }
        return ::CloseHandle(handle);
    }

    // Consoles

    static std::string WhoIsHeld(Platform& self) {
        const SystemLockHold lock(self.m_lock);
        std::string numbers;
        for (const auto& [number, converter] : self.m_converters) {
            if (!converter.held.empty())
                numbers.append(numbers.empty() ? "" : " ").append(std::to_string(number));
        }
        return numbers.empty() ? "nobody" : numbers;
    }

    static HWND ConsoleOf(int number) {
        return reinterpret_cast<HWND>(kFirstConsole + static_cast<std::uintptr_t>(number));
    }

    // The console that this window is; none when it is another window.
    static Console KindOf(HWND window, int* number = nullptr) {
        Platform& self = Current();
        const SystemLockHold lock(self.m_lock);
        for (const auto& [own, converter] : self.m_converters) {
            if (ConsoleOf(own) != window) continue;
            if (number) *number = own;
            return converter.console;
        }
        return Console::None;
    }

    static BOOL WINAPI EnumWindows(WNDENUMPROC callback, LPARAM parameter) {
        Platform& self = Current();
        self.Note(Request::Search, WhoIsHeld(self));
        std::vector<HWND> windows = {kForeignWindow};
        {
            const SystemLockHold lock(self.m_lock);
            for (const auto& [number, converter] : self.m_converters) {
                if (converter.ended && converter.console != Console::None)
                    windows.push_back(ConsoleOf(number));
            }
        }
        return std::all_of(windows.begin(), windows.end(),
                           [&](HWND window) { return callback(window, parameter) != FALSE; });
    }

    static DWORD WINAPI GetWindowThreadProcessId(HWND window, LPDWORD processId) {
        int number = 0;
        *processId = KindOf(window, &number) != Console::None ? kFirstProcess + static_cast<DWORD>(number)
                                                              : kForeignProcess;
        return 1;
    }

    static int WINAPI GetClassNameW(HWND window, LPWSTR name, int size) {
        const Console kind = KindOf(window);
        if (kind == Console::None) return ::GetClassNameW(window, name, size);
        ::lstrcpynW(name, kind == Console::Terminal ? L"PseudoConsoleWindow" : L"ConsoleWindowClass", size);
        return ::lstrlenW(name);
    }

    static BOOL WINAPI SendNotifyMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        int number = 0;
        const Console kind = KindOf(window, &number);
        if (kind == Console::None && window != kForeignWindow) {
            return ::SendNotifyMessageW(window, message, wParam, lParam);
        }
        Platform& self = Current();
        const bool closes = kind != Console::None && message == WM_SYSCOMMAND && wParam == SC_CLOSE;
        const std::string name =
            (kind == Console::Terminal ? "terminal " : "console ") + std::to_string(number);
        self.Note(Request::Close, closes ? name : "something else");
        if (closes && kind == Console::Window && !self.consolesIgnoreClosing) {
            self.EndConverters(kClosedByUser, number);
        }
        return TRUE;
    }

    // The job, which is a real one that real processes are put into.

    static BOOL WINAPI AssignProcessToJobObject(HANDLE job, HANDLE process) {
        Platform& self = Current();
        if (!self.realConverter.empty()) return ::AssignProcessToJobObject(job, process);
        const SystemLockHold lock(self.m_lock);
        Platform::Converter* const converter = self.FindConverter(process);
        if (!job || !converter) {
            ::SetLastError(ERROR_INVALID_HANDLE);
            return FALSE;
        }
        converter->isInJob = true;
        return TRUE;
    }

    static BOOL WINAPI TerminateJobObject(HANDLE job, UINT exitCode) {
        Platform& self = Current();
        std::array<char, 16> text{};
        ::wsprintfA(text.data(), "%08X:", exitCode);
        std::string ended = text.data();
        {
            const SystemLockHold lock(self.m_lock);
            for (auto& [number, converter] : self.m_converters) {
                if (!converter.isInJob || !converter.ended) continue;
                ended.append(" ").append(std::to_string(number));
                Platform::End(converter, exitCode);
            }
        }
        self.Note(Request::Job, ended);
        return self.realConverter.empty() || ::TerminateJobObject(job, exitCode);
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
