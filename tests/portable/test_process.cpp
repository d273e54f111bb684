#include "tests/portable/test_process.h"

#include "tests/equipment/failure.h"
#include "tests/equipment/process_start.h"
#include "tests/equipment/text.h"
#include "tests/portable/interruption.h"

namespace {

constexpr UINT kEndedByUs = 0xDEAD;
// What has been ended takes a moment to be gone.
constexpr driver::Milliseconds kGoneLimit{10'000};
constexpr DWORD kLookIntervalMs = 20;

driver::UniqueHandle OpenNothing() {
    SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
    const HANDLE file = ::CreateFileW(L"NUL", GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited,
                                      OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) driver::FailCall("CreateFileW(NUL)", ::GetLastError());
    return driver::UniqueHandle(file);
}

}  // namespace

TestProcess::TestProcess(const std::wstring& program, const std::vector<std::string>& arguments)
    : m_job(driver::CreateKillingJob()) {
    SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
    HANDLE readEnd = nullptr;
    HANDLE writeEnd = nullptr;
    if (!::CreatePipe(&readEnd, &writeEnd, &inherited, 0)) driver::FailCall("CreatePipe", ::GetLastError());
    m_output = driver::UniqueHandle(readEnd);
    const driver::UniqueHandle output(writeEnd);
    if (!::SetHandleInformation(readEnd, HANDLE_FLAG_INHERIT, 0))
        driver::FailCall("SetHandleInformation", ::GetLastError());
    const driver::UniqueHandle input = OpenNothing();

    // The arguments are names and options of ours: none has a quotation mark in it or ends in a backslash.
    std::wstring line = L'"' + program + L'"';
    for (const std::string& argument : arguments) line += L" \"" + driver::FromUtf8(argument) + L'"';
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = input.Get();
    startup.hStdOutput = output.Get();
    startup.hStdError = output.Get();
    PROCESS_INFORMATION started = {};
    driver::StartProcess(driver::ToUtf8(program), [&] {
        return ::CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, TRUE, CREATE_SUSPENDED,
                                nullptr, nullptr, &startup, &started);
    });
    m_process = driver::UniqueHandle(started.hProcess);
    const driver::UniqueHandle thread(started.hThread);
    if (!::AssignProcessToJobObject(m_job.Get(), m_process.Get())) {
        const DWORD error = ::GetLastError();
        ::TerminateProcess(m_process.Get(), kEndedByUs);
        driver::FailCall("AssignProcessToJobObject", error);
    }
    if (::ResumeThread(thread.Get()) == static_cast<DWORD>(-1))
        driver::FailCall("ResumeThread", ::GetLastError());
}

ProcessEnd TestProcess::Run(driver::Milliseconds limit, const std::function<void(const std::string&)>& take) {
    const ULONGLONG deadline = ::GetTickCount64() + static_cast<ULONGLONG>(limit.count());
    ProcessEnd end;
    // The process decides when it is over and not the pipe, which something left behind may hold open.
    for (;;) {
        const bool over = ::WaitForSingleObject(m_process.Get(), kLookIntervalMs) == WAIT_OBJECT_0;
        ReadLines(take);
        if (over) {
            DWORD code = 0;
            if (!::GetExitCodeProcess(m_process.Get(), &code))
                driver::FailCall("GetExitCodeProcess", ::GetLastError());
            end.code = code;
            break;
        }
        if (::GetTickCount64() >= deadline || IsInterrupted()) break;
    }
    if (end.code && !driver::WaitUntil([&] { return RunningProcesses() == 0; }, kGoneLimit))
        end.leftRunning = RunningProcesses();
    if (!::TerminateJobObject(m_job.Get(), kEndedByUs))
        driver::FailCall("TerminateJobObject", ::GetLastError());
    if (!driver::WaitUntil([&] { return RunningProcesses() == 0; }, kGoneLimit))
        throw driver::Failure("a process of the tests cannot be ended");
    if (!m_unfinished.empty()) take(m_unfinished);
    return end;
}

void TestProcess::ReadLines(const std::function<void(const std::string&)>& take) {
    for (DWORD waiting = 0;
         ::PeekNamedPipe(m_output.Get(), nullptr, 0, nullptr, &waiting, nullptr) && waiting != 0;) {
        std::string bytes(waiting, '\0');
        DWORD read = 0;
        if (!::ReadFile(m_output.Get(), bytes.data(), waiting, &read, nullptr)) return;
        m_unfinished.append(bytes, 0, read);
        for (std::size_t end = 0; (end = m_unfinished.find('\n')) != std::string::npos;) {
            std::string line = m_unfinished.substr(0, end);
            m_unfinished.erase(0, end + 1);
            if (!line.empty() && line.back() == '\r') line.pop_back();
            take(line);
        }
    }
}

int TestProcess::RunningProcesses() const {
    JOBOBJECT_BASIC_ACCOUNTING_INFORMATION counts = {};
    if (!::QueryInformationJobObject(m_job.Get(), JobObjectBasicAccountingInformation, &counts, sizeof counts,
                                     nullptr))
        driver::FailCall("QueryInformationJobObject", ::GetLastError());
    return static_cast<int>(counts.ActiveProcesses);
}
