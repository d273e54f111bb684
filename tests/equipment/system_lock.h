// A lock that takes nothing from the import table. The library's mutex waits by WaitForSingleObject, which
// tests replace by functions that need a lock themselves.
#pragma once

#include <windows.h>

class SystemLock {
public:
    SystemLock() = default;
    SystemLock(const SystemLock&) = delete;
    SystemLock& operator=(const SystemLock&) = delete;

    // Named as std::lock_guard calls them.
    void lock() { ::AcquireSRWLockExclusive(&m_lock); }
    void unlock() { ::ReleaseSRWLockExclusive(&m_lock); }

private:
    SRWLOCK m_lock = SRWLOCK_INIT;
};
