// Holds a lock of the system for a scope.
#pragma once

#include <windows.h>

class SystemLockHold {
public:
    explicit SystemLockHold(SRWLOCK& lock) noexcept : m_lock(lock) { ::AcquireSRWLockExclusive(&m_lock); }
    SystemLockHold(const SystemLockHold&) = delete;
    SystemLockHold& operator=(const SystemLockHold&) = delete;
    ~SystemLockHold() { ::ReleaseSRWLockExclusive(&m_lock); }

private:
    SRWLOCK& m_lock;
};
