#include "tests/faults/harness/child_process.h"

#include "tests/equipment/process_start.h"

#include <array>
#include <filesystem>

std::wstring TestFolder() {
    std::array<wchar_t, MAX_PATH> self{};
    ::GetModuleFileNameW(nullptr, self.data(), MAX_PATH);
    return std::filesystem::path(self.data()).parent_path().wstring();
}

DWORD RunChildProcess(const std::string& program, const std::vector<std::string>& arguments, DWORD limitMs) {
    const std::wstring path = TestFolder() + L"\\" + std::filesystem::path(program).wstring();
    std::wstring line = L'"' + path + L'"';
    for (const std::string& argument : arguments) {
        line.append(L" \"").append(std::filesystem::path(argument).wstring()).append(1, L'"');
    }
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process = {};
    driver::StartProcess(program, [&] {
        return ::CreateProcessW(path.c_str(), line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                                &startup, &process);
    });
    ::CloseHandle(process.hThread);
    if (::WaitForSingleObject(process.hProcess, limitMs) != WAIT_OBJECT_0) {
        ::TerminateProcess(process.hProcess, kEndedForTime);
        ::WaitForSingleObject(process.hProcess, INFINITE);
    }
    DWORD code = 0;
    ::GetExitCodeProcess(process.hProcess, &code);
    ::CloseHandle(process.hProcess);
    return code;
}
