// A program under test, running in a process of its own: watched, and ended with everything it started when
// its owner gives up.
#pragma once
#include <windows.h>

#include <cstdio>
#include <map>
#include <optional>
#include <string>
#include <utility>

#include "base/unique_resource.h"
#include "tests/equipment/failure.h"
#include "tests/equipment/file_bytes.h"
#include "tests/equipment/wait_until.h"

namespace driver {

constexpr UINT kEndedByDriver = 0xDEAD;

using Variables = std::map<std::wstring, std::wstring>;  // of an environment; an empty value: there is none

struct StartOptions {
    std::wstring arguments{};    // as they follow the program's name, quotes included
    std::wstring directory{};    // empty: the directory of the starting process
    Variables environment{};     // in place of the inherited ones
    std::optional<WORD> show{};  // how the program is asked to show its window
    // Where it writes what it prints. Null: nowhere, as when the file explorer starts it.
    HANDLE output = nullptr;
};

// While one lives, this process has other variables: what it starts inherits them.
class ExchangedVariables {
public:
    explicit ExchangedVariables(Variables variables) : m_others(std::move(variables)) { Exchange(); }
    ~ExchangedVariables() { Exchange(); }
    ExchangedVariables(const ExchangedVariables&) = delete;
    ExchangedVariables& operator=(const ExchangedVariables&) = delete;

private:
    void Exchange() {
        for (auto& [name, value] : m_others) {
            std::wstring before(::GetEnvironmentVariableW(name.c_str(), nullptr, 0), L'\0');
            before.resize(
                ::GetEnvironmentVariableW(name.c_str(), before.data(), static_cast<DWORD>(before.size())));
            ::SetEnvironmentVariableW(name.c_str(), value.empty() ? nullptr : value.c_str());
            value = before;
        }
    }

    Variables m_others;
};

class Program {
public:
    // Throws Failure when the program cannot be started.
    explicit Program(const std::wstring& path, const StartOptions& options = {}) {
        JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits = {};
        limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
        if (!::SetInformationJobObject(m_job.Get(), JobObjectExtendedLimitInformation, &limits,
                                       sizeof limits))
            FailCall("SetInformationJobObject", ::GetLastError());
        const PROCESS_INFORMATION started = CreateSuspended(path, options);
        m_process = UniqueHandle(started.hProcess);
        m_id = started.dwProcessId;
        const UniqueHandle thread(started.hThread);
        if (!::AssignProcessToJobObject(m_job.Get(), Process())) {
            const DWORD error = ::GetLastError();
            ::TerminateProcess(Process(), kEndedByDriver);
            FailCall("AssignProcessToJobObject", error);
        }
        if (::ResumeThread(thread.Get()) == static_cast<DWORD>(-1))
            FailCall("ResumeThread", ::GetLastError());
    }
    // Ends the whole process tree: no converter outlives the test that started it.
    ~Program() = default;
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    [[nodiscard]] DWORD Id() const noexcept { return m_id; }
    [[nodiscard]] HANDLE Process() const noexcept { return m_process.Get(); }
    [[nodiscard]] bool HasEnded() const noexcept {
        return ::WaitForSingleObject(Process(), 0) == WAIT_OBJECT_0;
    }

    // The exit code, or nothing when the program still runs at the deadline.
    [[nodiscard]] std::optional<DWORD> WaitForExit(Milliseconds limit = kSoon) const {
        // The handle decides, not the code: 259 is one like any other, although it also reads STILL_ACTIVE.
        const DWORD answer = ::WaitForSingleObject(Process(), static_cast<DWORD>(limit.count()));
        if (answer == WAIT_TIMEOUT) return std::nullopt;
        if (answer != WAIT_OBJECT_0) FailCall("WaitForSingleObject", ::GetLastError());
        DWORD code = 0;
        if (!::GetExitCodeProcess(Process(), &code)) FailCall("GetExitCodeProcess", ::GetLastError());
        return code;
    }

    // How many processes run: the program itself and what it has started.
    [[nodiscard]] int Running() const {
        JOBOBJECT_BASIC_ACCOUNTING_INFORMATION counts = {};
        if (!::QueryInformationJobObject(m_job.Get(), JobObjectBasicAccountingInformation, &counts,
                                         sizeof counts, nullptr))
            FailCall("QueryInformationJobObject", ::GetLastError());
        return static_cast<int>(counts.ActiveProcesses);
    }
    // Ends all of them, at once.
    void EndTree() const {
        if (!::TerminateJobObject(m_job.Get(), kEndedByDriver))
            FailCall("TerminateJobObject", ::GetLastError());
    }

private:
    static PROCESS_INFORMATION CreateSuspended(const std::wstring& path, const StartOptions& options) {
        std::wstring commandLine = L'"' + path + L'"';
        if (!options.arguments.empty()) commandLine += L' ' + options.arguments;
        const wchar_t* const directory = options.directory.empty() ? nullptr : options.directory.c_str();
        STARTUPINFOW startup = {};
        startup.cb = sizeof startup;
        if (options.show) {
            startup.dwFlags |= STARTF_USESHOWWINDOW;
            startup.wShowWindow = *options.show;
        }
        // Detached: with a console to inherit, every converter would write into ours instead of opening its
        // own.
        DWORD flags = CREATE_SUSPENDED | DETACHED_PROCESS;
        UniqueHandle noInput;
        if (options.output) {
            flags = CREATE_SUSPENDED;
            noInput = OpenShared(L"NUL", GENERIC_READ, OPEN_EXISTING);
            startup.dwFlags |= STARTF_USESTDHANDLES;
            startup.hStdInput = noInput.Get();
            startup.hStdOutput = startup.hStdError = options.output;
            for (const HANDLE inherited : {noInput.Get(), options.output})
                ::SetHandleInformation(inherited, HANDLE_FLAG_INHERIT, HANDLE_FLAG_INHERIT);
        }
        const ExchangedVariables inherited(options.environment);
        PROCESS_INFORMATION started = {};
        const auto create = [&] {
            return ::CreateProcessW(path.c_str(), commandLine.data(), nullptr, nullptr,
                                    options.output != nullptr, flags, nullptr, directory, &startup, &started);
        };
        // Wine has been seen to lose a new process on its way, before anything of it had run: this is
        // reported, and tried once more.
        if (create()) return started;
        DWORD error = ::GetLastError();
        if (error == ERROR_INTERNAL_ERROR) {
            std::printf("[ ATTENTION] CreateProcessW(%s) failed with an internal error: trying once more\n",
                        ToUtf8(path).c_str());
            if (create()) return started;
            error = ::GetLastError();
        }
        FailCall("CreateProcessW(" + ToUtf8(path) + ")", error);
    }

    // Ends its members when closed; declared first, so closed last.
    const UniqueHandle m_job{::CreateJobObjectW(nullptr, nullptr)};
    UniqueHandle m_process;
    DWORD m_id = 0;
};

}  // namespace driver
