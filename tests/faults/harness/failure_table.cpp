#include "tests/faults/harness/failure_table.h"

#include "tests/faults/harness/function_groups.h"

#include <windows.h>
#include <commctrl.h>
#include <shlobj.h>

#include <cerrno>

namespace {

constexpr std::uint64_t kNothing = 0;  // FALSE, null, no characters, no handle
constexpr std::uint64_t kMinusOne = static_cast<std::uint64_t>(-1);
constexpr std::uint64_t kMinusOne32 = 0xFFFFFFFF;  // WAIT_FAILED, INVALID_SET_FILE_POINTER, an int of -1

// The joined path is emptied when it cannot be made.
BOOL WINAPI CannotAppend(LPWSTR path, LPCWSTR /*more*/) {
    path[0] = L'\0';
    ::SetLastError(ERROR_INSUFFICIENT_BUFFER);
    return FALSE;
}

HRESULT WINAPI NoFolder(HWND /*owner*/, int /*folder*/, HANDLE /*token*/, DWORD /*flags*/, LPWSTR path) {
    path[0] = L'\0';
    return E_FAIL;
}

void* __cdecl NoMemory(std::size_t /*size*/) {
    errno = ENOMEM;
    return nullptr;
}

std::uintptr_t __cdecl NoThread(void (* /*start*/)(void*), unsigned /*stack*/, void* /*argument*/) {
    errno = EAGAIN;
    return static_cast<std::uintptr_t>(-1);
}

// A message that a control cannot serve, or that does not arrive. Some have a value of their own for that.
LRESULT WINAPI NoAnswer(HWND /*window*/, UINT message, WPARAM /*wParam*/, LPARAM /*lParam*/) {
    ::SetLastError(ERROR_INVALID_WINDOW_HANDLE);
    const bool givesAnIndex =
        message == LVM_INSERTITEMW || message == LVM_INSERTCOLUMNW || message == LVM_GETNEXTITEM;
    return givesAnIndex ? -1 : 0;
}

template <class Function>
void* Address(Function* function) {
    return reinterpret_cast<void*>(function);
}

// The last error is the system's own where the program looks at it, and elsewhere any.
const Failure kFailures[] = {
    {"CreateProcessW", kNothing, ERROR_FILE_NOT_FOUND},
    {"ShellExecuteExW", kNothing, ERROR_NO_ASSOCIATION},
    {"AdjustTokenPrivileges AssignProcessToJobObject Beep CheckDlgButton CloseHandle CompareStringOrdinal "
     "CreateDialogParamW CreateJobObjectW CreateMutexW CreateWindowExW DeleteFileW DestroyIcon "
     "DestroyWindow DragAcceptFiles DragQueryFileW EnableWindow EndDialog EnumWindows FindResourceExW "
     "FindWindowW FormatMessageW FreeLibrary GetActiveWindow GetClassNameW GetClientRect GetDlgItem "
     "GetExitCodeProcess GetFileVersionInfoSizeW GetFileVersionInfoW GetFocus GetLocaleInfoW "
     "GetModuleFileNameW GetModuleHandleW GetMonitorInfoW GetOpenFileNameW GetParent GetProcAddress "
     "GetSystemDirectoryW GetSystemMetrics GetSystemWindowsDirectoryW GetWindow GetWindowLongPtrW "
     "GetWindowRect GetWindowTextLengthW GetWindowTextW GetWindowThreadProcessId HeapAlloc HeapFree "
     "ImageList_Create InitCommonControlsEx InitiateSystemShutdownW InvalidateRect IsDialogMessageW "
     "IsDlgButtonChecked IsIconic IsWindowEnabled IsWindowVisible KillTimer LoadCursorW LoadIconW "
     "LoadImageW LoadLibraryW LoadResource LoadStringW LockResource LookupPrivilegeValueW lstrlenA "
     "MessageBoxW MonitorFromWindow OpenProcess OpenProcessToken PathFileExistsW PathIsDirectoryW "
     "PathRemoveFileSpecW PathRenameExtensionW PeekMessageW PostMessageW ScreenToClient SearchPathW "
     "SendNotifyMessageW SetCursor SetDefaultDllDirectories SetFocus SetForegroundWindow "
     "SetThreadExecutionState SetTimer SetWindowLongPtrW SetWindowPos SetWindowTextW SHBrowseForFolderW "
     "SHGetPathFromIDListW ShowWindow SystemParametersInfoW TerminateJobObject UpdateWindow "
     "VerifyVersionInfoW VerQueryValueW WideCharToMultiByte WriteFile",
     kNothing, ERROR_GEN_FAILURE},
    {"CreateFileW DialogBoxParamW", kMinusOne, ERROR_GEN_FAILURE},
    {"GetMessageW ImageList_ReplaceIcon SetFilePointer WaitForSingleObject", kMinusOne32, ERROR_GEN_FAILURE},
    {"CoCreateInstance CoInitialize IAccPropServices::ClearHwndProps IAccPropServices::SetHwndPropStr "
     "ITaskbarList3::HrInit ITaskbarList3::SetProgressState ITaskbarList3::SetProgressValue",
     static_cast<std::uint32_t>(E_FAIL), ERROR_GEN_FAILURE},
    {"_beginthread", 0, 0, Address(&NoThread)},
    {"malloc", 0, 0, Address(&NoMemory)},
    {"PathAppendW", 0, 0, Address(&CannotAppend)},
    {"SHGetFolderPathW", 0, 0, Address(&NoFolder)},
    {"SendMessageW", 0, 0, Address(&NoAnswer)},
};

// Functions that are not made to fail, and why.
struct Reason {
    const char* functions;
    const char* why;
};

const Reason kReasons[] = {
    {"AddVectoredExceptionHandler",
     "is called only while the program is being ended, which goes on without it"},
    {"CallWindowProcW DispatchMessageW",
     "returns what the called window procedure returns; there is no failure of its own"},
    {"CoTaskMemFree free", "returns nothing: a block that is freed is gone"},
    {"CoUninitialize", "returns nothing: undoes CoInitialize"},
    {"DefWindowProcW", "returns the result of the message; there is no failure of its own"},
    {"DeleteCriticalSection EnterCriticalSection InitializeCriticalSection LeaveCriticalSection",
     "has no failure: returns nothing and needs no memory on any supported system"},
    {"ExitProcess TerminateProcess abort exit", "ends the program and does not return"},
    {"GetCurrentProcess GetCurrentThreadId GetLastError GetProcessHeap GetTickCount",
     "returns a value of the process or thread that is always there"},
    {"GetLocalTime", "returns nothing: there always is a time"},
    {"GetStartupInfoW SetUnhandledExceptionFilter Sleep TlsGetValue VirtualProtect VirtualQuery "
     "__C_specific_handler __iob_func __set_app_type __setusermatherr __wgetmainargs __winitenv _amsg_exit "
     "_cexit _commode _fmode _initterm _wcmdln calloc fprintf fwrite signal vfprintf",
     "called by the run-time library only, before or after all code of the program"},
    {"PathFindExtensionW PathRemoveExtensionW PathStripPathW PtInRect memcpy memmove strlen strncmp wcslen",
     "works on memory of the caller, asks the system for nothing"},
    {"PostQuitMessage", "returns nothing: sets a mark of the calling thread"},
    {"TranslateMessage", "says whether a character message was posted, which is no failure"},
    {"VerSetConditionMask", "computes a value from its arguments"},
    {"_onexit", "fails only when memory runs out before the program's first own call"},
};

}  // namespace

const Failure* FindFailure(const std::string& function) {
    return FindGroup(kFailures, function);
}

const char* WhyNotFailed(const std::string& function) {
    const Reason* const reason = FindGroup(kReasons, function);
    return reason ? reason->why : nullptr;
}
