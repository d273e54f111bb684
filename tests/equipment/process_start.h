// Starting a process for a test, on a system that now and then loses a new one.
#pragma once

#include "tests/equipment/failure.h"

#include <windows.h>

#include <cstdio>
#include <string>

namespace driver {

// Has `create` call CreateProcessW for `program`, a name for messages, and throws Failure when that fails.
// Wine has been seen to lose a new process on its way, before anything of it had run: it is told, and tried
// once more.
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

}  // namespace driver
