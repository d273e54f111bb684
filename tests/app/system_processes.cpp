#include "tests/app/system_processes.h"

#include <tlhelp32.h>

#include <cwchar>
#include <filesystem>

#include "tests/equipment/failure.h"

namespace {

std::wstring ImagePath(DWORD processId) {
    const driver::UniqueHandle process(::OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, processId));
    wchar_t path[MAX_PATH] = {};
    DWORD length = MAX_PATH;
    if (!process || !::QueryFullProcessImageNameW(process.Get(), 0, path, &length)) return std::wstring();
    return path;
}

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

std::vector<std::wstring> ChildrenOf(DWORD parent, const std::wstring& fileName) {
    const HANDLE snapshot = ::CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    if (snapshot == INVALID_HANDLE_VALUE) driver::FailCall("CreateToolhelp32Snapshot", ::GetLastError());
    const driver::UniqueHandle owner(snapshot);
    std::vector<std::wstring> paths;
    PROCESSENTRY32W entry = {};
    entry.dwSize = sizeof entry;
    for (BOOL more = ::Process32FirstW(snapshot, &entry); more; more = ::Process32NextW(snapshot, &entry)) {
        if (entry.th32ParentProcessID == parent && ::_wcsicmp(entry.szExeFile, fileName.c_str()) == 0)
            paths.push_back(ImagePath(entry.th32ProcessID));
    }
    return paths;
}

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
