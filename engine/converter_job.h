// What ends a converter that has no window to be asked to close.
#pragma once

#include "base/unique_resource.h"

#include <windows.h>

// Holds every interpreter that was started, and with it what it has started in turn. Closing the job, which
// the end of the program does, ends none of them. Any thread: nothing changes after construction.
//
// A system that cannot make a job, or cannot put a process into one, works without: what is not in the job is
// not ended. (Windows 7 knows no job inside another.)
class ConverterJob {
public:
    ConverterJob() noexcept : m_job(::CreateJobObjectW(nullptr, nullptr)) {}

    // Called straight after the start of `process`: what it starts from then on is in the job too.
    void Add(HANDLE process) const noexcept;
    // Ends all that is in the job, with the exit code that a closed console leaves.
    void End() const noexcept;

private:
    const UniqueHandle m_job;
};
