// CreateMutexW as a test answers it.
#pragma once

#include "tests/support/utf8.h"

#include <windows.h>

#include <string>
#include <vector>

struct ScriptedMutex {
    struct Answer {
        bool created;
        DWORD error;  // what the call leaves, created or not
    };
    static inline Answer answer = {true, ERROR_SUCCESS};
    // What was asked for: security, owner and name.
    static inline std::vector<std::string> asked;

    static HANDLE WINAPI Create(LPSECURITY_ATTRIBUTES security, BOOL owned, LPCWSTR name) {
        asked.push_back(std::string(security ? "secured" : "default") + (owned ? " owned " : " unowned ") +
                        Utf8(name));
        const HANDLE handle = answer.created ? ::CreateEventW(nullptr, TRUE, FALSE, nullptr) : nullptr;
        ::SetLastError(answer.error);
        return handle;
    }
};
