#include "tests/app/system_processes.h"

#include <cwchar>
#include <filesystem>

#include "tests/equipment/failure.h"

namespace {

// A file that says that it has no bytes, as those do that the system makes up when they are read. Empty when
// it is gone.
std::string ReadToTheEnd(const std::wstring& path) {
    const HANDLE file = ::CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                      OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) return std::string();
    const driver::UniqueHandle owner(file);
    std::string bytes;
    char part[4096];
    for (DWORD read = 0; ::ReadFile(file, part, sizeof part, &read, nullptr) && read > 0;)
        bytes.append(part, read);
    return bytes;
}

}  // namespace

driver::UniqueHandle OwnerOfWindow(const wchar_t* className) {
    const HWND window = ::FindWindowW(className, nullptr);
    DWORD processId = 0;
    ::GetWindowThreadProcessId(window, &processId);
    driver::UniqueHandle process(
        ::OpenProcess(SYNCHRONIZE | PROCESS_QUERY_LIMITED_INFORMATION, FALSE, processId));
    if (!window || !process)
        throw driver::Failure(L"no process has a window of class " + std::wstring(className));
    return process;
}

bool NativeConverterRuns(const std::string& text) {
    // Wine shows the files of the system below on this drive; each process is a folder whose name is a
    // number.
    constexpr std::string_view kProgram = "/usr/bin/pdf2djvu";
    bool anyProcess = false;
    std::error_code ignored;
    for (const auto& entry : std::filesystem::directory_iterator(L"Z:\\proc", ignored)) {
        if (std::wcstoul(entry.path().filename().c_str(), nullptr, 10) == 0) continue;
        anyProcess = true;
        const std::string line = ReadToTheEnd(entry.path().wstring() + L"\\cmdline");
        if (line.starts_with(kProgram) && line.find(text) != std::string::npos) return true;
    }
    if (!anyProcess) throw driver::Failure("the processes of the system below Wine cannot be read");
    return false;
}
