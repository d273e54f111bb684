#include "tests/equipment/program.h"

#include "tests/equipment/failure.h"
#include "tests/equipment/process_start.h"
#include "tests/equipment/text.h"

#include <tlhelp32.h>
#include <winternl.h>

namespace driver {
namespace {

constexpr UINT kEndedByDriver = 0xDEAD;

struct NameLess {
    // Names of environment variables are compared without regard to case, and a block is sorted that way.
    bool operator()(const std::wstring& left, const std::wstring& right) const {
        return ::CompareStringOrdinal(left.c_str(), static_cast<int>(left.size()), right.c_str(),
                                      static_cast<int>(right.size()), TRUE) == CSTR_LESS_THAN;
    }
};
using Environment = std::map<std::wstring, std::wstring, NameLess>;

Environment InheritedEnvironment() {
    Environment environment;
    wchar_t* const block = ::GetEnvironmentStringsW();
    if (!block) FailCall("GetEnvironmentStringsW", ::GetLastError());
    for (const wchar_t* entry = block; *entry;) {
        const std::wstring text(entry);
        // From 1 on: a drive's current directory is kept under a name that begins with "=".
        const std::size_t equals = text.find(L'=', 1);
        if (equals != std::wstring::npos) environment[text.substr(0, equals)] = text.substr(equals + 1);
        entry += text.size() + 1;
    }
    ::FreeEnvironmentStringsW(block);
    return environment;
}

std::wstring EnvironmentBlock(const std::map<std::wstring, std::wstring>& changes) {
    Environment environment = InheritedEnvironment();
    for (const auto& [name, value] : changes) {
        environment.erase(name);
        if (!value.empty()) environment[name] = value;
    }
    std::wstring block;
    for (const auto& [name, value] : environment)
        block.append(name).append(1, L'=').append(value).append(1, L'\0');
    block += L'\0';
    return block;
}

UniqueHandle Snapshot(DWORD content, DWORD processId) {
    const HANDLE snapshot = ::CreateToolhelp32Snapshot(content, processId);
    if (snapshot == INVALID_HANDLE_VALUE) FailCall("CreateToolhelp32Snapshot", ::GetLastError());
    return UniqueHandle(snapshot);
}

// Where a library is in a process; empty when it is not there.
struct AddressRange {
    std::uintptr_t begin = 0;
    std::uintptr_t end = 0;
};
AddressRange RangeOf(const wchar_t* library, DWORD processId) {
    const UniqueHandle snapshot = Snapshot(TH32CS_SNAPMODULE, processId);
    MODULEENTRY32W module = {};
    module.dwSize = sizeof module;
    for (BOOL more = ::Module32FirstW(snapshot.Get(), &module); more;
         more = ::Module32NextW(snapshot.Get(), &module)) {
        const auto begin = reinterpret_cast<std::uintptr_t>(module.modBaseAddr);
        if (::lstrcmpiW(module.szModule, library) == 0) return {begin, begin + module.modBaseSize};
    }
    return {};
}

// Where a thread began; 0 when it has just ended.
std::uintptr_t StartAddress(DWORD threadId) {
    constexpr auto kStartAddress = static_cast<THREADINFOCLASS>(9);  // ThreadQuerySetWin32StartAddress
    const UniqueHandle thread(::OpenThread(THREAD_QUERY_INFORMATION, FALSE, threadId));
    std::uintptr_t address = 0;
    if (!thread || ::NtQueryInformationThread(thread.Get(), kStartAddress, &address, sizeof address, nullptr))
        return 0;
    return address;
}

}  // namespace

Program::Program(const std::wstring& path, const StartOptions& options) : m_job(CreateKillingJob()) {
    std::wstring commandLine = L'"' + path + L'"';
    if (!options.arguments.empty()) commandLine += L' ' + options.arguments;
    std::wstring environment = EnvironmentBlock(options.environment);
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    if (options.show) {
        startup.dwFlags = STARTF_USESHOWWINDOW;
        startup.wShowWindow = *options.show;
    }
    PROCESS_INFORMATION started = {};
    // Detached: with a console to inherit, every converter would write into ours instead of opening its own.
    constexpr DWORD kFlags = DETACHED_PROCESS | CREATE_SUSPENDED | CREATE_UNICODE_ENVIRONMENT;
    const wchar_t* const directory = options.directory.empty() ? nullptr : options.directory.c_str();
    StartProcess(ToUtf8(path), [&] {
        return ::CreateProcessW(path.c_str(), commandLine.data(), nullptr, nullptr, FALSE, kFlags,
                                environment.data(), directory, &startup, &started);
    });
    m_process = UniqueHandle(started.hProcess);
    const UniqueHandle thread(started.hThread);
    m_processId = started.dwProcessId;
    if (!::AssignProcessToJobObject(m_job.Get(), m_process.Get())) {
        const DWORD error = ::GetLastError();
        ::TerminateProcess(m_process.Get(), kEndedByDriver);
        FailCall("AssignProcessToJobObject", error);
    }
    if (::ResumeThread(thread.Get()) == static_cast<DWORD>(-1)) FailCall("ResumeThread", ::GetLastError());
}

bool Program::HasEnded() const noexcept {
    return ::WaitForSingleObject(m_process.Get(), 0) == WAIT_OBJECT_0;
}

std::optional<DWORD> Program::WaitForExit(Milliseconds limit) const {
    // The handle decides, not the code: 259 is a code like any other, although it also reads STILL_ACTIVE.
    const DWORD answer = ::WaitForSingleObject(m_process.Get(), static_cast<DWORD>(limit.count()));
    if (answer == WAIT_TIMEOUT) return std::nullopt;
    if (answer != WAIT_OBJECT_0) FailCall("WaitForSingleObject", ::GetLastError());
    DWORD code = 0;
    if (!::GetExitCodeProcess(m_process.Get(), &code)) FailCall("GetExitCodeProcess", ::GetLastError());
    return code;
}

int Program::RuntimeThreads() const {
    const auto [begin, end] = RangeOf(L"msvcrt.dll", m_processId);
    const UniqueHandle snapshot = Snapshot(TH32CS_SNAPTHREAD, 0);
    int count = 0;
    THREADENTRY32 thread = {};
    thread.dwSize = sizeof thread;
    for (BOOL more = ::Thread32First(snapshot.Get(), &thread); more;
         more = ::Thread32Next(snapshot.Get(), &thread)) {
        if (thread.th32OwnerProcessID != m_processId) continue;
        const std::uintptr_t start = StartAddress(thread.th32ThreadID);
        if (start >= begin && start < end) ++count;
    }
    return count;
}

void Program::EndTree() const {
    if (!::TerminateJobObject(m_job.Get(), kEndedByDriver)) FailCall("TerminateJobObject", ::GetLastError());
}

}  // namespace driver
