// Starting a process for a test, on a system that now and then loses a new one.
#pragma once

#include "tests/equipment/failure.h"
#include "tests/equipment/handle.h"

#include <windows.h>

#include <cstdio>
#include <string>

namespace driver {

constexpr UINT kEndedByDriver = 0xDEAD;

// A process with all that it starts.
struct ProcessTree {
    UniqueHandle job;  // ends its members when closed; declared first, so closed last
    UniqueHandle process;
    DWORD id = 0;

    // How many of them run.
    [[nodiscard]] int Running() const {
        JOBOBJECT_BASIC_ACCOUNTING_INFORMATION counts = {};
        if (!::QueryInformationJobObject(job.Get(), JobObjectBasicAccountingInformation, &counts,
                                         sizeof counts, nullptr))
            FailCall("QueryInformationJobObject", ::GetLastError());
        return static_cast<int>(counts.ActiveProcesses);
    }
    // Ends them at once.
    void End() const {
        if (!::TerminateJobObject(job.Get(), kEndedByDriver))
            FailCall("TerminateJobObject", ::GetLastError());
    }
};

inline UniqueHandle CreateKillingJob() {
    UniqueHandle job(::CreateJobObjectW(nullptr, nullptr));
    if (!job) FailCall("CreateJobObjectW", ::GetLastError());
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits = {};
    limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
    if (!::SetInformationJobObject(job.Get(), JobObjectExtendedLimitInformation, &limits, sizeof limits))
        FailCall("SetInformationJobObject", ::GetLastError());
    return job;
}

// Has `create` call CreateProcessW for `program`, a name for messages, suspended; it then runs in a job of
// its own. Throws Failure when it cannot be started. Wine has been seen to lose a new process on its way,
// before anything of it had run: this is reported, and tried once more.
template <class Create>
ProcessTree StartProcessTree(const std::string& program, Create&& create) {
    ProcessTree tree{CreateKillingJob(), {}};
    PROCESS_INFORMATION started = {};
    BOOL isCreated = create(&started);
    DWORD error = ::GetLastError();
    if (!isCreated && error == ERROR_INTERNAL_ERROR) {
        std::printf("[ ATTENTION] CreateProcessW(%s) failed with an internal error: trying once more\n",
                    program.c_str());
        isCreated = create(&started);
        error = ::GetLastError();
    }
    if (!isCreated) FailCall("CreateProcessW(" + program + ")", error);
    tree.process = UniqueHandle(started.hProcess);
    tree.id = started.dwProcessId;
    const UniqueHandle thread(started.hThread);
    if (!::AssignProcessToJobObject(tree.job.Get(), tree.process.Get())) {
        error = ::GetLastError();
        ::TerminateProcess(tree.process.Get(), kEndedByDriver);
        FailCall("AssignProcessToJobObject", error);
    }
    if (::ResumeThread(thread.Get()) == static_cast<DWORD>(-1)) FailCall("ResumeThread", ::GetLastError());
    return tree;
}

}  // namespace driver
