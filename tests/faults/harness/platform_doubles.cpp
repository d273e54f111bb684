// Which function answers in the place of which of the system's. They are called by the program's code on any
// of its threads.
#include "tests/faults/harness/com_doubles.h"
#include "tests/faults/harness/converter_doubles.h"
#include "tests/faults/harness/desktop_doubles.h"
#include "tests/faults/harness/platform.h"
#include "tests/faults/harness/process_doubles.h"

#include <algorithm>
#include <iterator>
#include <string>

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
    static const Double kDoubles[] = {
        Answers("AdjustTokenPrivileges", &ProcessDoubles::AdjustTokenPrivileges),
        Answers("AssignProcessToJobObject", &ConverterDoubles::AssignProcessToJobObject),
        Answers("Beep", &DesktopDoubles::Beep),
        Answers("CloseHandle", &ConverterDoubles::CloseHandle),
        Answers("CoCreateInstance", &ComDoubles::CoCreateInstance),
        Answers("CreateDialogParamW", &DesktopDoubles::CreateDialogParamW),
        Answers("CreateMutexW", &ProcessDoubles::CreateMutexW),
        Answers("CreateProcessW", &ConverterDoubles::CreateProcessW),
        Answers("DestroyIcon", &DesktopDoubles::DestroyIcon),
        Answers("DispatchMessageW", &DesktopDoubles::DispatchMessageW),
        Answers("EnumWindows", &ConverterDoubles::EnumWindows),
        Answers("ExitProcess", &ProcessDoubles::ExitProcess),
        Answers("GetClassNameW", &ConverterDoubles::GetClassNameW),
        Answers("GetExitCodeProcess", &ConverterDoubles::GetExitCodeProcess),
        Answers("GetLocalTime", &DesktopDoubles::GetLocalTime),
        Answers("GetLocaleInfoW", &DesktopDoubles::GetLocaleInfoW),
        Answers("GetModuleFileNameW", &ProcessDoubles::GetModuleFileNameW),
        Answers("GetOpenFileNameW", &DesktopDoubles::GetOpenFileNameW),
        Answers("GetProcAddress", &ProcessDoubles::GetProcAddress),
        Answers("GetTickCount", &DesktopDoubles::GetTickCount),
        Answers("GetWindowThreadProcessId", &ConverterDoubles::GetWindowThreadProcessId),
        Answers("HeapAlloc", &ProcessDoubles::AllocateOnHeap),
        Answers("HeapFree", &ProcessDoubles::FreeOnHeap),
        Answers("InitiateSystemShutdownW", &ProcessDoubles::InitiateSystemShutdownW),
        Answers("KillTimer", &DesktopDoubles::KillTimer),
        Answers("LoadImageW", &DesktopDoubles::LoadImageW),
        Answers("LookupPrivilegeValueW", &ProcessDoubles::LookupPrivilegeValueW),
        Answers("MessageBoxW", &DesktopDoubles::MessageBoxW),
        Answers("OpenProcess", &ConverterDoubles::OpenProcess),
        Answers("OpenProcessToken", &ProcessDoubles::OpenProcessToken),
        Answers("SHBrowseForFolderW", &DesktopDoubles::SHBrowseForFolderW),
        Answers("SearchPathW", &DesktopDoubles::SearchPathW),
        Answers("SendNotifyMessageW", &ConverterDoubles::SendNotifyMessageW),
        Answers("SetDefaultDllDirectories", &ProcessDoubles::SetDefaultDllDirectories),
        Answers("SetThreadExecutionState", &DesktopDoubles::SetThreadExecutionState),
        Answers("SetTimer", &DesktopDoubles::SetTimer),
        Answers("ShellExecuteExW", &DesktopDoubles::ShellExecuteExW),
        Answers("SystemParametersInfoW", &DesktopDoubles::SystemParametersInfoW),
        Answers("TerminateJobObject", &ConverterDoubles::TerminateJobObject),
        Answers("WaitForSingleObject", &ConverterDoubles::WaitForSingleObject),
        Answers("_beginthread", &ConverterDoubles::BeginThread),
        Answers("free", &ProcessDoubles::Free),
        Answers("malloc", &ProcessDoubles::Allocate),
    };
    const auto* const found = std::find_if(std::begin(kDoubles), std::end(kDoubles),
                                           [&](const Double& one) { return one.function == function; });
    return found != std::end(kDoubles) ? found->answer : nullptr;
}
