#include "tests/faults/harness/failure_table.h"

#include <windows.h>
#include <commctrl.h>
#include <shlobj.h>

#include <algorithm>
#include <cerrno>
#include <iterator>

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
    // Kernel and run-time library
    {"AssignProcessToJobObject", kNothing, ERROR_ACCESS_DENIED},
    {"Beep", kNothing, ERROR_GEN_FAILURE},
    {"CloseHandle", kNothing, ERROR_INVALID_HANDLE},
    {"CompareStringOrdinal", kNothing, ERROR_INVALID_PARAMETER},
    {"CreateFileW", kMinusOne, ERROR_SHARING_VIOLATION},
    {"CreateJobObjectW", kNothing, ERROR_NOT_ENOUGH_MEMORY},
    {"CreateMutexW", kNothing, ERROR_ACCESS_DENIED},
    {"CreateProcessW", kNothing, ERROR_FILE_NOT_FOUND},
    {"DeleteFileW", kNothing, ERROR_ACCESS_DENIED},
    {"FindResourceExW", kNothing, ERROR_RESOURCE_NAME_NOT_FOUND},
    {"FormatMessageW", kNothing, ERROR_MR_MID_NOT_FOUND},
    {"FreeLibrary", kNothing, ERROR_INVALID_HANDLE},
    {"GetExitCodeProcess", kNothing, ERROR_ACCESS_DENIED},
    {"GetLocaleInfoW", kNothing, ERROR_INVALID_PARAMETER},
    {"GetModuleFileNameW", kNothing, ERROR_GEN_FAILURE},
    {"GetModuleHandleW", kNothing, ERROR_MOD_NOT_FOUND},
    {"GetProcAddress", kNothing, ERROR_PROC_NOT_FOUND},
    {"GetSystemDirectoryW", kNothing, ERROR_GEN_FAILURE},
    {"GetSystemWindowsDirectoryW", kNothing, ERROR_GEN_FAILURE},
    {"HeapAlloc", kNothing, ERROR_SUCCESS},  // sets none
    {"HeapFree", kNothing, ERROR_INVALID_PARAMETER},
    {"LoadLibraryW", kNothing, ERROR_MOD_NOT_FOUND},
    {"LoadResource", kNothing, ERROR_RESOURCE_DATA_NOT_FOUND},
    {"LockResource", kNothing, ERROR_SUCCESS},  // sets none
    {"OpenProcess", kNothing, ERROR_ACCESS_DENIED},
    {"SearchPathW", kNothing, ERROR_FILE_NOT_FOUND},
    {"SetFilePointer", kMinusOne32, ERROR_INVALID_HANDLE},
    {"SetThreadExecutionState", kNothing, ERROR_SUCCESS},  // sets none
    {"TerminateJobObject", kNothing, ERROR_ACCESS_DENIED},
    {"VerifyVersionInfoW", kNothing, ERROR_OLD_WIN_VERSION},
    {"WaitForSingleObject", kMinusOne32, ERROR_INVALID_HANDLE},
    {"WideCharToMultiByte", kNothing, ERROR_INSUFFICIENT_BUFFER},
    {"WriteFile", kNothing, ERROR_DISK_FULL},
    {"lstrlenA", kNothing, ERROR_SUCCESS},  // gives 0 for what it cannot read
    {"_beginthread", kMinusOne, ERROR_NOT_ENOUGH_MEMORY, Address(&NoThread)},
    {"malloc", kNothing, ERROR_NOT_ENOUGH_MEMORY, Address(&NoMemory)},
    // Found at run time
    {"GetFileVersionInfoSizeW", kNothing, ERROR_RESOURCE_DATA_NOT_FOUND},
    {"GetFileVersionInfoW", kNothing, ERROR_RESOURCE_DATA_NOT_FOUND},
    {"SetDefaultDllDirectories", kNothing, ERROR_INVALID_PARAMETER},
    {"VerQueryValueW", kNothing, ERROR_RESOURCE_TYPE_NOT_FOUND},
    // Privileges and shutdown
    {"AdjustTokenPrivileges", kNothing, ERROR_INVALID_HANDLE},
    {"InitiateSystemShutdownW", kNothing, ERROR_SHUTDOWN_IN_PROGRESS},
    {"LookupPrivilegeValueW", kNothing, ERROR_NO_SUCH_PRIVILEGE},
    {"OpenProcessToken", kNothing, ERROR_ACCESS_DENIED},
    // Shell, common controls and dialogs, COM
    {"CoCreateInstance", static_cast<std::uint32_t>(REGDB_E_CLASSNOTREG), ERROR_SUCCESS},
    {"CoInitialize", static_cast<std::uint32_t>(E_OUTOFMEMORY), ERROR_SUCCESS},
    {"DragAcceptFiles", kNothing, ERROR_INVALID_WINDOW_HANDLE},  // reports nothing: has no effect
    {"DragQueryFileW", kNothing, ERROR_INVALID_HANDLE},
    {"GetOpenFileNameW", kNothing, ERROR_NOT_ENOUGH_MEMORY},
    {"IAccPropServices::ClearHwndProps", static_cast<std::uint32_t>(E_FAIL), ERROR_SUCCESS},
    {"IAccPropServices::SetHwndPropStr", static_cast<std::uint32_t>(E_FAIL), ERROR_SUCCESS},
    {"ITaskbarList3::HrInit", static_cast<std::uint32_t>(E_FAIL), ERROR_SUCCESS},
    {"ITaskbarList3::SetProgressState", static_cast<std::uint32_t>(E_FAIL), ERROR_SUCCESS},
    {"ITaskbarList3::SetProgressValue", static_cast<std::uint32_t>(E_FAIL), ERROR_SUCCESS},
    {"ImageList_Create", kNothing, ERROR_NOT_ENOUGH_MEMORY},
    {"ImageList_ReplaceIcon", kMinusOne32, ERROR_INVALID_PARAMETER},
    {"InitCommonControlsEx", kNothing, ERROR_INVALID_PARAMETER},
    {"PathAppendW", kNothing, ERROR_INSUFFICIENT_BUFFER, Address(&CannotAppend)},
    {"PathFileExistsW", kNothing, ERROR_ACCESS_DENIED},
    {"PathIsDirectoryW", kNothing, ERROR_ACCESS_DENIED},
    {"PathRemoveFileSpecW", kNothing, ERROR_SUCCESS},
    {"PathRenameExtensionW", kNothing, ERROR_INSUFFICIENT_BUFFER},
    {"SHBrowseForFolderW", kNothing, ERROR_NOT_ENOUGH_MEMORY},
    {"SHGetFolderPathW", static_cast<std::uint32_t>(E_FAIL), ERROR_SUCCESS, Address(&NoFolder)},
    {"SHGetPathFromIDListW", kNothing, ERROR_INVALID_PARAMETER},
    {"ShellExecuteExW", kNothing, ERROR_NO_ASSOCIATION},
    // Windows
    {"CheckDlgButton", kNothing, ERROR_CONTROL_ID_NOT_FOUND},
    {"CreateDialogParamW", kNothing, ERROR_NOT_ENOUGH_MEMORY},
    {"CreateWindowExW", kNothing, ERROR_NOT_ENOUGH_MEMORY},
    {"DestroyIcon", kNothing, ERROR_INVALID_CURSOR_HANDLE},
    {"DestroyWindow", kNothing, ERROR_ACCESS_DENIED},
    {"DialogBoxParamW", kMinusOne, ERROR_NOT_ENOUGH_MEMORY},
    {"EnableWindow", kNothing, ERROR_INVALID_WINDOW_HANDLE},
    {"EndDialog", kNothing, ERROR_INVALID_WINDOW_HANDLE},
    {"EnumWindows", kNothing, ERROR_NOT_ENOUGH_MEMORY},
    {"FindWindowW", kNothing, ERROR_ACCESS_DENIED},
    {"GetActiveWindow", kNothing, ERROR_SUCCESS},
    {"GetClassNameW", kNothing, ERROR_INVALID_WINDOW_HANDLE},
    {"GetClientRect", kNothing, ERROR_INVALID_WINDOW_HANDLE},
    {"GetDlgItem", kNothing, ERROR_CONTROL_ID_NOT_FOUND},
    {"GetFocus", kNothing, ERROR_SUCCESS},
    {"GetMessageW", kMinusOne32, ERROR_INVALID_WINDOW_HANDLE},
    {"GetMonitorInfoW", kNothing, ERROR_INVALID_MONITOR_HANDLE},
    {"GetParent", kNothing, ERROR_INVALID_WINDOW_HANDLE},
    {"GetSystemMetrics", kNothing, ERROR_SUCCESS},
    {"GetWindow", kNothing, ERROR_INVALID_WINDOW_HANDLE},
    {"GetWindowLongPtrW", kNothing, ERROR_INVALID_WINDOW_HANDLE},
    {"GetWindowRect", kNothing, ERROR_INVALID_WINDOW_HANDLE},
    {"GetWindowTextLengthW", kNothing, ERROR_INVALID_WINDOW_HANDLE},
    {"GetWindowTextW", kNothing, ERROR_INVALID_WINDOW_HANDLE},
    {"GetWindowThreadProcessId", kNothing, ERROR_INVALID_WINDOW_HANDLE},
    {"InvalidateRect", kNothing, ERROR_INVALID_WINDOW_HANDLE},
    {"IsDialogMessageW", kNothing, ERROR_INVALID_WINDOW_HANDLE},
    {"IsDlgButtonChecked", kNothing, ERROR_CONTROL_ID_NOT_FOUND},
    {"IsIconic", kNothing, ERROR_INVALID_WINDOW_HANDLE},
    {"IsWindowEnabled", kNothing, ERROR_INVALID_WINDOW_HANDLE},
    {"IsWindowVisible", kNothing, ERROR_INVALID_WINDOW_HANDLE},
    {"KillTimer", kNothing, ERROR_INVALID_PARAMETER},
    {"LoadCursorW", kNothing, ERROR_RESOURCE_NAME_NOT_FOUND},
    {"LoadIconW", kNothing, ERROR_RESOURCE_NAME_NOT_FOUND},
    {"LoadImageW", kNothing, ERROR_RESOURCE_NAME_NOT_FOUND},
    {"LoadStringW", kNothing, ERROR_RESOURCE_NAME_NOT_FOUND},
    {"MessageBoxW", kNothing, ERROR_NOT_ENOUGH_MEMORY},
    {"MonitorFromWindow", kNothing, ERROR_INVALID_WINDOW_HANDLE},
    {"PeekMessageW", kNothing, ERROR_INVALID_WINDOW_HANDLE},
    {"PostMessageW", kNothing, ERROR_NOT_ENOUGH_QUOTA},
    {"ScreenToClient", kNothing, ERROR_INVALID_WINDOW_HANDLE},
    {"SendMessageW", kNothing, ERROR_INVALID_WINDOW_HANDLE, Address(&NoAnswer)},
    {"SendNotifyMessageW", kNothing, ERROR_INVALID_WINDOW_HANDLE},
    {"SetCursor", kNothing, ERROR_INVALID_CURSOR_HANDLE},
    {"SetFocus", kNothing, ERROR_INVALID_WINDOW_HANDLE},
    {"SetForegroundWindow", kNothing, ERROR_INVALID_WINDOW_HANDLE},
    {"SetTimer", kNothing, ERROR_NO_SYSTEM_RESOURCES},
    {"SetWindowLongPtrW", kNothing, ERROR_INVALID_WINDOW_HANDLE},
    {"SetWindowPos", kNothing, ERROR_INVALID_WINDOW_HANDLE},
    {"SetWindowTextW", kNothing, ERROR_INVALID_WINDOW_HANDLE},
    {"ShowWindow", kNothing, ERROR_INVALID_WINDOW_HANDLE},
    {"SystemParametersInfoW", kNothing, ERROR_INVALID_PARAMETER},
    {"UpdateWindow", kNothing, ERROR_INVALID_WINDOW_HANDLE},
};

struct Reason {
    const char* function;
    const char* why;
};

constexpr char kStartUp[] = "called by the run-time library only, before or after all code of the program";
constexpr char kMemory[] = "works on memory of the caller, asks the system for nothing";
constexpr char kLock[] = "has no failure: gives nothing back and needs no memory on any supported system";
constexpr char kOwnValue[] = "gives a value of the process or thread that is always there";
constexpr char kGivesUpFirst[] = "is called only while the program is being ended, which goes on without it";
constexpr char kGivesUp[] = "ends the program and does not come back";

const Reason kReasons[] = {
    {"AddVectoredExceptionHandler", kGivesUpFirst},
    {"CallWindowProcW", "gives what the called window procedure gives; there is no failure of its own"},
    {"CoTaskMemFree", "gives nothing back: a block that is freed is gone"},
    {"CoUninitialize", "gives nothing back: undoes CoInitialize"},
    {"DefWindowProcW", "gives what the message has as its result; there is no failure of its own"},
    {"DeleteCriticalSection", kLock},
    {"DispatchMessageW", "gives what the called window procedure gives; there is no failure of its own"},
    {"EnterCriticalSection", kLock},
    {"ExitProcess", kGivesUp},
    {"GetCurrentProcess", kOwnValue},
    {"GetCurrentThreadId", kOwnValue},
    {"GetLastError", kOwnValue},
    {"GetLocalTime", "gives nothing back: there always is a time"},
    {"GetProcessHeap", kOwnValue},
    {"GetStartupInfoW", kStartUp},
    {"GetTickCount", kOwnValue},
    {"InitializeCriticalSection", kLock},
    {"LeaveCriticalSection", kLock},
    {"PathFindExtensionW", kMemory},
    {"PathRemoveExtensionW", kMemory},
    {"PathStripPathW", kMemory},
    {"PostQuitMessage", "gives nothing back: sets a mark of the calling thread"},
    {"PtInRect", kMemory},
    {"SetUnhandledExceptionFilter", kStartUp},
    {"Sleep", kStartUp},
    {"TerminateProcess", kGivesUp},
    {"TlsGetValue", kStartUp},
    {"TranslateMessage", "says whether a character message was posted, which is no failure"},
    {"VerSetConditionMask", "computes a value from its arguments"},
    {"VirtualProtect", kStartUp},
    {"VirtualQuery", kStartUp},
    {"__C_specific_handler", kStartUp},
    {"__iob_func", kStartUp},
    {"__set_app_type", kStartUp},
    {"__setusermatherr", kStartUp},
    {"__wgetmainargs", kStartUp},
    {"__winitenv", kStartUp},
    {"_amsg_exit", kStartUp},
    {"_cexit", kStartUp},
    {"_commode", kStartUp},
    {"_fmode", kStartUp},
    {"_initterm", kStartUp},
    {"_onexit", "fails only when memory runs out before the program's first own call"},
    {"_wcmdln", kStartUp},
    {"abort", kGivesUp},
    {"calloc", kStartUp},
    {"exit", kGivesUp},
    {"fprintf", kStartUp},
    {"free", "gives nothing back: a block that is freed is gone"},
    {"fwrite", kStartUp},
    {"memcpy", kMemory},
    {"memmove", kMemory},
    {"signal", kStartUp},
    {"strlen", kMemory},
    {"strncmp", kMemory},
    {"vfprintf", kStartUp},
    {"wcslen", kMemory},
};

}  // namespace

const Failure* FindFailure(const std::string& function) {
    const auto* const found = std::find_if(std::begin(kFailures), std::end(kFailures),
                                           [&](const Failure& one) { return one.function == function; });
    return found != std::end(kFailures) ? found : nullptr;
}

const char* WhyNotFailed(const std::string& function) {
    const auto* const found = std::find_if(std::begin(kReasons), std::end(kReasons),
                                           [&](const Reason& one) { return one.function == function; });
    return found != std::end(kReasons) ? found->why : nullptr;
}
