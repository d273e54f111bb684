#include "benchmarks/support/linux_process.h"

#include "tests/equipment/failure.h"
#include "tests/equipment/text.h"

#include <windows.h>

#include <cwctype>
#include <optional>
#include <sstream>

namespace {

// Wine shows the Linux file system below this name.
constexpr wchar_t kProc[] = L"\\\\?\\unix\\proc";

// Files of /proc have no size before they are read. Nothing when there is none: processes and threads end.
std::optional<std::string> ReadProcFile(const std::wstring& path) {
    const HANDLE file =
        ::CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) return std::nullopt;
    std::string content;
    char part[4096];
    DWORD read = 0;
    while (::ReadFile(file, part, sizeof part, &read, nullptr) && read > 0) content.append(part, read);
    ::CloseHandle(file);
    return content;
}

std::string MustReadProcFile(const std::wstring& path) {
    if (auto content = ReadProcFile(path)) return *std::move(content);
    throw driver::Failure(L"cannot read " + path);
}

// The entries of a folder of /proc that are numbers: processes, or threads.
std::vector<std::wstring> NumberedEntries(const std::wstring& folder) {
    std::vector<std::wstring> entries;
    WIN32_FIND_DATAW entry = {};
    const HANDLE search = ::FindFirstFileW((folder + L"\\*").c_str(), &entry);
    if (search == INVALID_HANDLE_VALUE) driver::FailCall("FindFirstFileW(/proc)", ::GetLastError());
    do {
        if (std::iswdigit(static_cast<wint_t>(entry.cFileName[0]))) entries.emplace_back(entry.cFileName);
    } while (::FindNextFileW(search, &entry));
    ::FindClose(search);
    return entries;
}

// The number behind a name, as in "Private_Dirty:   7012 kB".
std::uint64_t NumberAfter(const std::string& content, const std::string& name) {
    const std::size_t at = content.find(name);
    if (at == std::string::npos) throw driver::Failure("/proc says nothing of " + name);
    std::uint64_t number = 0;
    std::istringstream(content.substr(at + name.size())) >> number;
    return number;
}

}  // namespace

LinuxProcess::LinuxProcess(const std::wstring& programPath) {
    const std::string wanted = driver::ToUtf8(programPath);
    for (const std::wstring& process : NumberedEntries(kProc)) {
        const std::wstring folder = std::wstring(kProc) + L'\\' + process;
        const auto commandLine = ReadProcFile(folder + L"\\cmdline");
        // The first argument: up to the first null.
        if (!commandLine || std::string(commandLine->c_str()) != wanted) continue;
        if (!m_folder.empty()) throw driver::Failure("started twice: " + wanted);
        m_folder = folder;
    }
    if (m_folder.empty()) throw driver::Failure("no such process: " + wanted);
}

std::uint64_t LinuxProcess::ContextSwitches() const {
    std::uint64_t switches = 0;
    for (const std::wstring& thread : NumberedEntries(m_folder + L"\\task")) {
        const auto status = ReadProcFile(m_folder + L"\\task\\" + thread + L"\\status");
        if (!status) continue;
        switches += NumberAfter(*status, "\nvoluntary_ctxt_switches:");
        switches += NumberAfter(*status, "\nnonvoluntary_ctxt_switches:");
    }
    return switches;
}

std::uint64_t LinuxProcess::CpuTicks() const {
    const std::string stat = MustReadProcFile(m_folder + L"\\stat");
    // Behind the name in brackets, which may hold anything: fields 3 to 13, then the two times.
    std::istringstream fields(stat.substr(stat.rfind(')') + 1));
    std::string skipped;
    for (int field = 3; field <= 13; ++field) fields >> skipped;
    std::uint64_t user = 0;
    std::uint64_t system = 0;
    fields >> user >> system;
    return user + system;
}

std::uint64_t LinuxProcess::PrivateKilobytes() const {
    const std::string memory = MustReadProcFile(m_folder + L"\\smaps_rollup");
    return NumberAfter(memory, "Private_Dirty:") + NumberAfter(memory, "\nSwap:");
}
