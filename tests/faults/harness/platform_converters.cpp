// Answers in the system's place: converters, their consoles, and the threads that wait for them.
#include "tests/faults/harness/doubles.h"

#include <process.h>
#include <shlwapi.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>

namespace {

// Windows that are only talked about: of somebody else, and of the converter's console.
const auto kForeignWindow = reinterpret_cast<HWND>(0x7F01);
constexpr std::uintptr_t kFirstConsole = 0x800'0000;  // that of converter 0, which there is not
constexpr DWORD kForeignProcess = 4;
constexpr DWORD kFirstProcess = 4242;  // as with the consoles
constexpr DWORD kConversionMs = 7000;
constexpr DWORD kClosedByUser = 3;

HWND ConsoleOf(int number) {
    return reinterpret_cast<HWND>(kFirstConsole + static_cast<std::uintptr_t>(number));
}

// As the system: what is not there cannot be started, nor in a folder that is not there.
DWORD WhyNotStarted(const ConverterPlan& plan, const wchar_t* program, const wchar_t* folder) {
    if (plan.startError != 0) return plan.startError;
    if (!::PathFileExistsW(program)) return ERROR_FILE_NOT_FOUND;
    return ::PathIsDirectoryW(folder) ? ERROR_SUCCESS : ERROR_DIRECTORY;
}

BOOL Refuse(DWORD error) {
    ::SetLastError(error);
    return FALSE;
}

struct WorkerStart {
    void (*start)(void*);
    void* argument;
    std::atomic<int>& workers;
};

void __cdecl RunWorker(void* parameter) {
    const std::unique_ptr<WorkerStart> worker(static_cast<WorkerStart*>(parameter));
    CurrentHost().Watch().Happens("worker starts");
    worker->start(worker->argument);
    --worker->workers;
}

}  // namespace

Platform::WindowOfConverter Platform::FindConsole(HWND window) {
    const SystemLockHold lock = Lock();
    for (const auto& [number, converter] : m_converters) {
        if (ConsoleOf(number) == window) return {number, converter.console};
    }
    return {};
}

void Platform::AddConverters(Doubles& doubles) {
    doubles["CreateProcessW"] = Answer<decltype(::CreateProcessW)>(
        [](LPCWSTR program, LPWSTR arguments, LPSECURITY_ATTRIBUTES, LPSECURITY_ATTRIBUTES, BOOL, DWORD,
           LPVOID, LPCWSTR folder, LPSTARTUPINFOW startup, LPPROCESS_INFORMATION process) {
            Platform& self = Current();
            self.Note("starts", (startup->wShowWindow == SW_HIDE ? "hidden " : "visible ") +
                                    TextOf(startup->lpTitle) + " in " + TextOf(folder) + ": " +
                                    TextOf(arguments));
            const int number = ++self.m_requested;
            const auto last = static_cast<int>(self.converters.size());
            const ConverterPlan plan = self.converters[static_cast<std::size_t>(std::min(number, last)) - 1];
            if (const DWORD error = WhyNotStarted(plan, program, folder); error != ERROR_SUCCESS) {
                ++self.m_started;
                return Refuse(error);
            }
            if (!self.realConverter.empty()) {
                std::wstring line = self.realConverter;
                return ::CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                                        startup, process);
            }
            const HANDLE ended = ::CreateEventW(nullptr, TRUE, !plan.held, nullptr);
            Converter converter{plan.exitCode, nullptr, plan.console, {ended}};
            if (plan.held) {
                const HANDLE own = ::GetCurrentProcess();
                ::DuplicateHandle(own, ended, own, &converter.ended, 0, FALSE, DUPLICATE_SAME_ACCESS);
            }
            process->hProcess = ended;
            process->hThread = ::CreateEventW(nullptr, TRUE, FALSE, nullptr);
            process->dwProcessId = kFirstProcess + static_cast<DWORD>(number);
            process->dwThreadId = 0;
            self.m_tick += kConversionMs;
            const SystemLockHold lock = self.Lock();
            self.m_converters[number] = converter;
            return TRUE;
        });
    doubles["WaitForSingleObject"] = Answer<decltype(::WaitForSingleObject)>([](HANDLE process, DWORD limit) {
        ++Current().m_started;
        return ::WaitForSingleObject(process, limit);
    });
    doubles["GetExitCodeProcess"] = Answer<decltype(::GetExitCodeProcess)>([](HANDLE process, LPDWORD code) {
        Platform& self = Current();
        if (!self.realConverter.empty()) return ::GetExitCodeProcess(process, code);
        const SystemLockHold lock = self.Lock();
        const Converter* const converter = self.FindConverter(process);
        if (!converter) return Refuse(ERROR_INVALID_HANDLE);
        *code = converter->ended ? STILL_ACTIVE : converter->exitCode;
        return TRUE;
    });
    // As the system: a process can be opened as long as it runs or somebody holds it.
    doubles["OpenProcess"] =
        Answer<decltype(::OpenProcess)>([](DWORD access, BOOL inherit, DWORD processId) -> HANDLE {
            Platform& self = Current();
            if (!self.realConverter.empty()) return ::OpenProcess(access, inherit, processId);
            const SystemLockHold lock = self.Lock();
            const auto found = self.m_converters.find(static_cast<int>(processId - kFirstProcess));
            if (found == self.m_converters.end() || (!found->second.ended && found->second.held.empty())) {
                ::SetLastError(ERROR_INVALID_PARAMETER);
                return nullptr;
            }
            return *found->second.held.insert(::CreateEventW(nullptr, TRUE, FALSE, nullptr)).first;
        });
    doubles["CloseHandle"] = Answer<decltype(::CloseHandle)>([](HANDLE handle) {
        Platform& self = Current();
        {
            const SystemLockHold lock = self.Lock();
            if (Converter* const converter = self.FindConverter(handle)) converter->held.erase(handle);
        }
        return ::CloseHandle(handle);
    });

    // Consoles

    doubles["EnumWindows"] =
        Answer<decltype(::EnumWindows)>([](WNDENUMPROC callback, LPARAM parameter) -> BOOL {
            Platform& self = Current();
            std::vector<HWND> windows = {kForeignWindow};
            std::vector<std::string> held;
            {
                const SystemLockHold lock = self.Lock();
                for (const auto& [number, converter] : self.m_converters) {
                    if (!converter.held.empty()) held.push_back(std::to_string(number));
                    if (converter.ended && converter.console != Console::None)
                        windows.push_back(ConsoleOf(number));
                }
            }
            self.Note("searches", held.empty() ? "nobody" : Lines(held, ' '));
            return std::all_of(windows.begin(), windows.end(),
                               [&](HWND window) { return callback(window, parameter) != FALSE; });
        });
    doubles["GetWindowThreadProcessId"] =
        Answer<decltype(::GetWindowThreadProcessId)>([](HWND window, LPDWORD processId) -> DWORD {
            const WindowOfConverter found = Current().FindConsole(window);
            const bool isConsole = found.kind != Console::None;
            *processId = isConsole ? kFirstProcess + static_cast<DWORD>(found.number) : kForeignProcess;
            return 1;
        });
    doubles["GetClassNameW"] = Answer<decltype(::GetClassNameW)>([](HWND window, LPWSTR name, int size) {
        const Console kind = Current().FindConsole(window).kind;
        if (kind == Console::None) return ::GetClassNameW(window, name, size);
        ::lstrcpynW(name, kind == Console::Terminal ? L"PseudoConsoleWindow" : L"ConsoleWindowClass", size);
        return ::lstrlenW(name);
    });
    doubles["SendNotifyMessageW"] =
        Answer<decltype(::SendNotifyMessageW)>([](HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
            Platform& self = Current();
            const auto [number, kind] = self.FindConsole(window);
            if (kind == Console::None && window != kForeignWindow) {
                return ::SendNotifyMessageW(window, message, wParam, lParam);
            }
            const bool closes = kind != Console::None && message == WM_SYSCOMMAND && wParam == SC_CLOSE;
            const std::string name = kind == Console::Terminal ? "terminal " : "console ";
            self.Note("closing", closes ? name + std::to_string(number) : "something else");
            if (closes && kind == Console::Window && !self.consolesIgnoreClosing) {
                self.EndConverters(kClosedByUser, number);
            }
            return TRUE;
        });

    // The job, which is a real one that real processes are put into.

    doubles["AssignProcessToJobObject"] =
        Answer<decltype(::AssignProcessToJobObject)>([](HANDLE job, HANDLE process) {
            Platform& self = Current();
            if (!self.realConverter.empty()) return ::AssignProcessToJobObject(job, process);
            const SystemLockHold lock = self.Lock();
            Converter* const converter = self.FindConverter(process);
            if (!job || !converter) return Refuse(ERROR_INVALID_HANDLE);
            converter->isInJob = true;
            return TRUE;
        });
    doubles["TerminateJobObject"] =
        Answer<decltype(::TerminateJobObject)>([](HANDLE job, UINT exitCode) -> BOOL {
            Platform& self = Current();
            std::array<char, 16> text{};
            ::wsprintfA(text.data(), "%08X:", exitCode);
            std::string ended = text.data();
            {
                const SystemLockHold lock = self.Lock();
                for (auto& [number, converter] : self.m_converters) {
                    if (!converter.isInJob || !converter.ended) continue;
                    ended.append(" ").append(std::to_string(number));
                    End(converter, exitCode);
                }
            }
            self.Note("jobs", ended);
            return self.realConverter.empty() || ::TerminateJobObject(job, exitCode);
        });

    doubles["_beginthread"] =
        Answer<decltype(::_beginthread)>([](void(__cdecl * start)(void*), unsigned stack, void* argument) {
            Platform& self = Current();
            ++self.m_workers;
            return ::_beginthread(&RunWorker, stack, new WorkerStart{start, argument, self.m_workers});
        });
}
