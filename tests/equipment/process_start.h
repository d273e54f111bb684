// Starting a process for a test, on a system that now and then loses a new one.
#pragma once

#include "tests/equipment/failure.h"
#include "tests/equipment/handle.h"

#include <windows.h>

#include <cstdio>
#include <string>

namespace driver {

// Has `create` call CreateProcessW for `program`, a name for messages, and throws Failure when that fails.
// Wine has been seen to lose a new process on its way, before anything of it had run: this is reported, and
// tried once more.
template <class Create>
void StartProcess(const std::string& program, Create&& create) {
    if (create()) return;
    DWORD error = ::GetLastError();
    if (error == ERROR_INTERNAL_ERROR) {
        std::printf("[ ATTENTION] CreateProcessW(%s) failed with an internal error: trying once more\n",
                    program.c_str());
        if (create()) return;
        error = ::GetLastError();
    }
    FailCall("CreateProcessW(" + program + ")", error);
}

// A job that ends its members when it is closed.
inline UniqueHandle CreateKillingJob() {
    UniqueHandle job(::CreateJobObjectW(nullptr, nullptr));
    if (!job) FailCall("CreateJobObjectW", ::GetLastError());
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits = {};
    limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
    if (!::SetInformationJobObject(job.Get(), JobObjectExtendedLimitInformation, &limits, sizeof limits))
        FailCall("SetInformationJobObject", ::GetLastError());
    return job;
}

}  // namespace driver
