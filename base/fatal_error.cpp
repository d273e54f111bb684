#include "base/fatal_error.h"

#include <windows.h>

// Not by an exception: most of our code is called by the system, from a window's procedure, and Wine and
// 64-bit Windows 7 swallow an exception that leaves one.
void EndByFatalError() noexcept {
    constexpr UINT kStatusNoMemory = 0xC0000017;
    ::TerminateProcess(::GetCurrentProcess(), kStatusNoMemory);
    __builtin_trap();
}
