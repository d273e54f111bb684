#include "ui/framework/fatal_error.h"

#include <windows.h>

// Not by an exception: most of our code is called by the system, from a window's procedure, and some systems
// swallow what leaves one.
void EndByFatalError() noexcept {
    constexpr UINT kStatusNoMemory = 0xC0000017;
    ::TerminateProcess(::GetCurrentProcess(), kStatusNoMemory);
    __builtin_trap();
}
