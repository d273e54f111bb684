// The functions that answer in the system's place. Called by the program's code on any of its threads.

#include "tests/faults/harness/lock_hold.h"
#include "tests/faults/harness/platform.h"
#include "tests/faults/harness/program_host.h"
#include "tests/support/utf8.h"

#include <windows.h>
#include <commdlg.h>
#include <objbase.h>
#include <process.h>
#include <shellapi.h>
#include <shlobj.h>
#include <shlwapi.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <memory>

namespace {

// Windows that are only talked about: of somebody else, and of the converter's console.
const auto kForeignWindow = reinterpret_cast<HWND>(0x7F01);
const auto kConsole = reinterpret_cast<HWND>(0x7F02);
constexpr DWORD kForeignProcess = 4;
constexpr DWORD kConverterProcess = 4242;
constexpr DWORD kConversionMs = 7000;
constexpr DWORD kClosedByUser = 3;

std::string Text(const wchar_t* text) {
    return text ? Utf8(text) : "";
}

const char* Picture(UINT type) {
    switch (type & MB_ICONMASK) {
    case MB_ICONERROR: return "error ";
    case MB_ICONINFORMATION: return "information ";
    case MB_ICONQUESTION: return "question ";
    default: return "plain ";
    }
}

}  // namespace

struct PlatformDoubles {
    using Request = Platform::Request;

    static Platform& Current() { return CurrentHost().ThePlatform(); }

    // Windows and sounds

    static int WINAPI MessageBoxW(HWND owner, LPCWSTR text, LPCWSTR caption, UINT type) {
        Platform& self = Current();
        self.Note(Request::Box, Picture(type) + std::string(owner ? "main " : "none ") + Text(text) +
                                    (Text(caption) == "Talvenor" ? "" : " caption=" + Text(caption)));
        if (self.realBoxes) return ::MessageBoxW(owner, text, caption, type);
        return (type & MB_TYPEMASK) == MB_YESNO ? self.answerToQuestions.load() : IDOK;
    }

    static BOOL WINAPI Beep(DWORD frequency, DWORD duration) {
        Current().Note(Request::Beep, std::to_string(frequency) + ' ' + std::to_string(duration));
        return TRUE;
    }

    static HANDLE WINAPI LoadImageW(HINSTANCE module, LPCWSTR name, UINT type, int width, int height,
                                   UINT flags) {
        const HANDLE image = ::LoadImageW(module, name, type, width, height, flags);
        Platform& self = Current();
        const SystemLockHold lock(self.m_lock);
        if (image) self.m_icons.insert(image);
        return image;
    }

    static BOOL WINAPI DestroyIcon(HICON icon) {
        {
            Platform& self = Current();
            const SystemLockHold lock(self.m_lock);
            self.m_icons.erase(icon);
        }
        return ::DestroyIcon(icon);
    }

    // The program as it is installed

    static HANDLE WINAPI CreateMutexW(LPSECURITY_ATTRIBUTES security, BOOL owned, LPCWSTR /*name*/) {
        const HANDLE mutex = ::CreateMutexW(security, owned, nullptr);  // of nobody else's concern
        ::SetLastError(Current().anotherCopyRuns ? ERROR_ALREADY_EXISTS : ERROR_SUCCESS);
        return mutex;
    }

    static DWORD WINAPI GetModuleFileNameW(HMODULE /*module*/, LPWSTR path, DWORD size) {
        const std::wstring program = Current().File(L"Talvenor.exe");
        ::lstrcpynW(path, program.c_str(), static_cast<int>(size));
        return static_cast<DWORD>(program.size());
    }

    static BOOL WINAPI SetDefaultDllDirectories(DWORD /*flags*/) { return TRUE; }  // ours stay as they are

    static FARPROC WINAPI GetProcAddress(HMODULE module, LPCSTR name) {
        const FARPROC found = ::GetProcAddress(module, name);
        void* const real = reinterpret_cast<void*>(found);
        return found ? reinterpret_cast<FARPROC>(CurrentHost().WrapFoundFunction(name, real)) : found;
    }

    static void WINAPI ExitProcess(UINT code) { CurrentHost().ProcessEnds(code); }

    // Files, folders, the shell

    static BOOL WINAPI GetOpenFileNameW(LPOPENFILENAMEW dialog) {
        const std::wstring& chosen = Current().chosenFiles;
        if (chosen.empty()) return FALSE;
        std::copy(chosen.begin(), chosen.end(), dialog->lpstrFile);
        dialog->lpstrFile[chosen.size()] = L'\0';
        dialog->lpstrFile[chosen.size() + 1] = L'\0';
        return TRUE;
    }

    static PIDLIST_ABSOLUTE WINAPI SHBrowseForFolderW(LPBROWSEINFOW /*browser*/) {
        const std::wstring& chosen = Current().chosenFolder;
        return chosen.empty() ? nullptr : ::ILCreateFromPathW(chosen.c_str());
    }

    static BOOL WINAPI ShellExecuteExW(LPSHELLEXECUTEINFOW request) {
        Platform& self = Current();
        self.Note(Request::Shell, Text(request->lpFile) + ' ' + Text(request->lpParameters));
        if (self.shellError == 0) return TRUE;
        ::SetLastError(self.shellError);
        return FALSE;
    }

    // Time

    static DWORD WINAPI GetTickCount() { return Current().m_tick; }

    static void WINAPI GetLocalTime(LPSYSTEMTIME time) { *time = {2026, 11, 1, 16, 14, 5, 9, 0}; }

    static int WINAPI GetLocaleInfoW(LCID /*locale*/, LCTYPE /*type*/, LPWSTR data, int /*size*/) {
        *reinterpret_cast<DWORD*>(data) = 1;  // day, month, year
        return 2;
    }

    static UINT_PTR WINAPI SetTimer(HWND /*window*/, UINT_PTR id, UINT /*period*/, TIMERPROC /*callback*/) {
        Platform& self = Current();
        const SystemLockHold lock(self.m_lock);
        self.m_timers.insert(id);
        return id;
    }

    static BOOL WINAPI KillTimer(HWND /*window*/, UINT_PTR id) {
        Platform& self = Current();
        const SystemLockHold lock(self.m_lock);
        return self.m_timers.erase(id) != 0;
    }

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
            return ::CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, startup,
                                    process);
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

    // Threads and memory

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

    static void* __cdecl Allocate(std::size_t size) {
        void* const block = std::malloc(size);
        Platform& self = Current();
        const SystemLockHold lock(self.m_lock);
        if (block) self.m_blocks.insert(block);
        return block;
    }

    static void __cdecl Free(void* block) {
        {
            Platform& self = Current();
            const SystemLockHold lock(self.m_lock);
            self.m_blocks.erase(block);
        }
        std::free(block);
    }

    static void* WINAPI AllocateOnHeap(HANDLE heap, DWORD flags, SIZE_T size) {
        void* const block = ::HeapAlloc(heap, flags, size);
        Platform& self = Current();
        const SystemLockHold lock(self.m_lock);
        if (block) self.m_blocks.insert(block);
        return block;
    }

    static BOOL WINAPI FreeOnHeap(HANDLE heap, DWORD flags, LPVOID block) {
        {
            Platform& self = Current();
            const SystemLockHold lock(self.m_lock);
            self.m_blocks.erase(block);
        }
        return ::HeapFree(heap, flags, block);
    }

    // The four calls that end in the machine going down. None of them is ever passed on.

    static BOOL WINAPI OpenProcessToken(HANDLE /*process*/, DWORD /*access*/, PHANDLE token) {
        Current().Note(Request::Shutdown, "open token");
        *token = reinterpret_cast<HANDLE>(0x7001);
        return TRUE;
    }

    static BOOL WINAPI LookupPrivilegeValueW(LPCWSTR /*system*/, LPCWSTR name, PLUID luid) {
        Current().Note(Request::Shutdown, "look up " + Text(name));
        luid->HighPart = 0;
        luid->LowPart = 19;
        return TRUE;
    }

    // As the system: a success that adjusts nothing leaves an error.
    static BOOL WINAPI AdjustTokenPrivileges(HANDLE /*token*/, BOOL /*all*/, PTOKEN_PRIVILEGES privileges,
                                             DWORD /*size*/, PTOKEN_PRIVILEGES /*previous*/,
                                             PDWORD /*needed*/) {
        const LUID_AND_ATTRIBUTES& entry = privileges->Privileges[0];
        Current().Note(Request::Shutdown, entry.Attributes == SE_PRIVILEGE_ENABLED ? "enable" : "disable");
        ::SetLastError(entry.Luid.LowPart == 19 ? ERROR_SUCCESS : ERROR_NOT_ALL_ASSIGNED);
        return TRUE;
    }

    static BOOL WINAPI InitiateSystemShutdownW(LPWSTR, LPWSTR, DWORD /*seconds*/, BOOL force, BOOL reboot) {
        Current().Note(Request::Shutdown, force || reboot ? "request of another kind" : "request");
        return TRUE;
    }
};

namespace {

struct Double {
    const char* function;
    void* answer;
};

template <class Function>
Double Answers(const char* function, Function* answer) {
    return {function, reinterpret_cast<void*>(answer)};
}

}  // namespace

void* Platform::FindDouble(const std::string& function) {
    using Doubles = PlatformDoubles;
    static const Double kDoubles[] = {
        Answers("AdjustTokenPrivileges", &Doubles::AdjustTokenPrivileges),
        Answers("Beep", &Doubles::Beep),
        Answers("CreateMutexW", &Doubles::CreateMutexW),
        Answers("CreateProcessW", &Doubles::CreateProcessW),
        Answers("DestroyIcon", &Doubles::DestroyIcon),
        Answers("EnumWindows", &Doubles::EnumWindows),
        Answers("ExitProcess", &Doubles::ExitProcess),
        Answers("GetExitCodeProcess", &Doubles::GetExitCodeProcess),
        Answers("GetLocalTime", &Doubles::GetLocalTime),
        Answers("GetLocaleInfoW", &Doubles::GetLocaleInfoW),
        Answers("GetModuleFileNameW", &Doubles::GetModuleFileNameW),
        Answers("GetOpenFileNameW", &Doubles::GetOpenFileNameW),
        Answers("GetProcAddress", &Doubles::GetProcAddress),
        Answers("GetTickCount", &Doubles::GetTickCount),
        Answers("GetWindowThreadProcessId", &Doubles::GetWindowThreadProcessId),
        Answers("HeapAlloc", &Doubles::AllocateOnHeap),
        Answers("HeapFree", &Doubles::FreeOnHeap),
        Answers("InitiateSystemShutdownW", &Doubles::InitiateSystemShutdownW),
        Answers("KillTimer", &Doubles::KillTimer),
        Answers("LoadImageW", &Doubles::LoadImageW),
        Answers("LookupPrivilegeValueW", &Doubles::LookupPrivilegeValueW),
        Answers("MessageBoxW", &Doubles::MessageBoxW),
        Answers("OpenProcessToken", &Doubles::OpenProcessToken),
        Answers("SHBrowseForFolderW", &Doubles::SHBrowseForFolderW),
        Answers("SendNotifyMessageW", &Doubles::SendNotifyMessageW),
        Answers("SetDefaultDllDirectories", &Doubles::SetDefaultDllDirectories),
        Answers("SetTimer", &Doubles::SetTimer),
        Answers("ShellExecuteExW", &Doubles::ShellExecuteExW),
        Answers("_beginthread", &Doubles::BeginThread),
        Answers("free", &Doubles::Free),
        Answers("malloc", &Doubles::Allocate),
    };
    const auto* const found = std::find_if(std::begin(kDoubles), std::end(kDoubles),
                                           [&](const Double& one) { return one.function == function; });
    return found != std::end(kDoubles) ? found->answer : nullptr;
}
