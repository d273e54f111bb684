// How a second copy of the program finds out that it is one.
#pragma once

#include "base/unique_resource.h"

#include <windows.h>

inline constexpr wchar_t kInstanceMutexName[] = L"{6E2F0C41-93B7-4D58-A1C6-2B7E95D0F384}";

// The named mutex that lasts as long as the process.
class InstanceMutex {
public:
    InstanceMutex() noexcept
        : m_mutex(::CreateMutexW(nullptr, FALSE, kInstanceMutexName)), m_error(::GetLastError()) {}

    // False also when the mutex could not be created: better two copies than none.
    [[nodiscard]] bool AnotherCopyRuns() const noexcept { return m_error == ERROR_ALREADY_EXISTS; }

private:
    UniqueHandle m_mutex;
    const DWORD m_error;  // of the creation
};
