// The one way tests and tools wait: for a condition, with a deadline. Probing is cheap next to what is waited
// for (another process), so the probe interval is short and fixed.
#pragma once
#include <windows.h>

#include <chrono>

namespace driver {

using Milliseconds = std::chrono::milliseconds;

// True as soon as the condition holds; false when it still does not at the deadline.
template <class Condition>
[[nodiscard]] bool WaitUntil(Condition&& condition, Milliseconds limit) {
    constexpr DWORD kProbeIntervalMs = 5;
    const auto deadline = std::chrono::steady_clock::now() + limit;
    while (!condition()) {
        if (std::chrono::steady_clock::now() >= deadline) return condition();
        ::Sleep(kProbeIntervalMs);
    }
    return true;
}

}  // namespace driver
