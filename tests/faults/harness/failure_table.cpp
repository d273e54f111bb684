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

const Failure kFailures[] = {
    {"AssignProcessToJobObject CreateMutexW DeleteFileW GetExitCodeProcess OpenProcess TerminateJobObject "
     "OpenProcessToken PathFileExistsW PathIsDirectoryW DestroyWindow FindWindowW",
     kNothing, ERROR_ACCESS_DENIED},
    {"CheckDlgButton GetDlgItem IsDlgButtonChecked", kNothing, ERROR_CONTROL_ID_NOT_FOUND},
    {"WriteFile", kNothing, ERROR_DISK_FULL},
    {"CreateProcessW SearchPathW", kNothing, ERROR_FILE_NOT_FOUND},
    {"Beep GetModuleFileNameW GetSystemDirectoryW GetSystemWindowsDirectoryW", kNothing, ERROR_GEN_FAILURE},
    {"WideCharToMultiByte PathRenameExtensionW", kNothing, ERROR_INSUFFICIENT_BUFFER},
    {"DestroyIcon SetCursor", kNothing, ERROR_INVALID_CURSOR_HANDLE},
    {"CloseHandle FreeLibrary AdjustTokenPrivileges DragQueryFileW", kNothing, ERROR_INVALID_HANDLE},
    {"GetMonitorInfoW", kNothing, ERROR_INVALID_MONITOR_HANDLE},
    {"CompareStringOrdinal GetLocaleInfoW HeapFree SetDefaultDllDirectories InitCommonControlsEx "
     "SHGetPathFromIDListW KillTimer SystemParametersInfoW",
     kNothing, ERROR_INVALID_PARAMETER},
    {"DragAcceptFiles EnableWindow EndDialog GetClassNameW GetClientRect GetParent GetWindow "
     "GetWindowLongPtrW GetWindowRect GetWindowTextLengthW GetWindowTextW GetWindowThreadProcessId "
     "InvalidateRect IsDialogMessageW IsIconic IsWindowEnabled IsWindowVisible MonitorFromWindow "
     "PeekMessageW "
     "ScreenToClient SendNotifyMessageW SetFocus SetForegroundWindow SetWindowLongPtrW SetWindowPos "
     "SetWindowTextW ShowWindow UpdateWindow",
     kNothing, ERROR_INVALID_WINDOW_HANDLE},
    {"GetModuleHandleW LoadLibraryW", kNothing, ERROR_MOD_NOT_FOUND},
    {"FormatMessageW", kNothing, ERROR_MR_MID_NOT_FOUND},
    {"CreateJobObjectW GetOpenFileNameW ImageList_Create SHBrowseForFolderW CreateDialogParamW "
     "CreateWindowExW EnumWindows MessageBoxW",
     kNothing, ERROR_NOT_ENOUGH_MEMORY},
    {"PostMessageW", kNothing, ERROR_NOT_ENOUGH_QUOTA},
    {"ShellExecuteExW", kNothing, ERROR_NO_ASSOCIATION},
    {"LookupPrivilegeValueW", kNothing, ERROR_NO_SUCH_PRIVILEGE},
    {"SetTimer", kNothing, ERROR_NO_SYSTEM_RESOURCES},
    {"VerifyVersionInfoW", kNothing, ERROR_OLD_WIN_VERSION},
    {"GetProcAddress", kNothing, ERROR_PROC_NOT_FOUND},
    {"LoadResource GetFileVersionInfoSizeW GetFileVersionInfoW", kNothing, ERROR_RESOURCE_DATA_NOT_FOUND},
    {"FindResourceExW LoadCursorW LoadIconW LoadImageW LoadStringW", kNothing, ERROR_RESOURCE_NAME_NOT_FOUND},
    {"VerQueryValueW", kNothing, ERROR_RESOURCE_TYPE_NOT_FOUND},
    {"InitiateSystemShutdownW", kNothing, ERROR_SHUTDOWN_IN_PROGRESS},
    {"HeapAlloc LockResource SetThreadExecutionState lstrlenA PathRemoveFileSpecW GetActiveWindow GetFocus "
     "GetSystemMetrics",
     kNothing, ERROR_SUCCESS},
    {"DialogBoxParamW", kMinusOne, ERROR_NOT_ENOUGH_MEMORY},
    {"CreateFileW", kMinusOne, ERROR_SHARING_VIOLATION},
    {"SetFilePointer WaitForSingleObject", kMinusOne32, ERROR_INVALID_HANDLE},
    {"ImageList_ReplaceIcon", kMinusOne32, ERROR_INVALID_PARAMETER},
    {"GetMessageW", kMinusOne32, ERROR_INVALID_WINDOW_HANDLE},
    {"IAccPropServices::ClearHwndProps IAccPropServices::SetHwndPropStr ITaskbarList3::HrInit "
     "ITaskbarList3::SetProgressState ITaskbarList3::SetProgressValue",
     static_cast<std::uint32_t>(E_FAIL), ERROR_SUCCESS},
    {"CoInitialize", static_cast<std::uint32_t>(E_OUTOFMEMORY), ERROR_SUCCESS},
    {"CoCreateInstance", static_cast<std::uint32_t>(REGDB_E_CLASSNOTREG), ERROR_SUCCESS},
    {"_beginthread", kMinusOne, ERROR_NOT_ENOUGH_MEMORY, Address(&NoThread)},
    {"malloc", kNothing, ERROR_NOT_ENOUGH_MEMORY, Address(&NoMemory)},
    {"PathAppendW", kNothing, ERROR_INSUFFICIENT_BUFFER, Address(&CannotAppend)},
    {"SHGetFolderPathW", static_cast<std::uint32_t>(E_FAIL), ERROR_SUCCESS, Address(&NoFolder)},
    {"SendMessageW", kNothing, ERROR_INVALID_WINDOW_HANDLE, Address(&NoAnswer)},
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
