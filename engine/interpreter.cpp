#include "engine/interpreter.h"

#include <shlobj.h>

namespace {

std::wstring InterpreterPath() {
    wchar_t systemFolder[MAX_PATH] = {};
    ::SHGetFolderPathW(nullptr, CSIDL_SYSTEM, nullptr, SHGFP_TYPE_DEFAULT, systemFolder);
    return std::wstring(systemFolder) + L"\\cmd.exe";
}

}  // namespace

InterpreterRun::InterpreterRun() : m_path(InterpreterPath()) {}

bool InterpreterRun::Start(std::wstring& arguments, const std::wstring& workingFolder,
                           std::wstring& windowTitle, bool isHidden) noexcept {
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESHOWWINDOW;
    startup.wShowWindow = isHidden ? SW_HIDE : SW_SHOW;
    startup.lpTitle = windowTitle.data();
    PROCESS_INFORMATION started = {};
    if (!::CreateProcessW(m_path.c_str(), arguments.data(), nullptr, nullptr, TRUE, 0, nullptr,
                          workingFolder.c_str(), &startup, &started)) {
        return false;
    }
    m_process.Reset(started.hProcess);
    m_thread.Reset(started.hThread);
    m_processId = started.dwProcessId;
    return true;
}

bool InterpreterRun::WaitForSuccess() const noexcept {
    ::WaitForSingleObject(m_process.Get(), INFINITE);
    DWORD exitCode = STILL_ACTIVE;  // what cannot be read is no success
    ::GetExitCodeProcess(m_process.Get(), &exitCode);
    return exitCode == 0;
}
