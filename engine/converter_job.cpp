#include "engine/converter_job.h"

void ConverterJob::Add(HANDLE process) const noexcept {
    if (m_job) ::AssignProcessToJobObject(m_job.Get(), process);
}

void ConverterJob::End() const noexcept {
    if (m_job) ::TerminateJobObject(m_job.Get(), STATUS_CONTROL_C_EXIT);
}
