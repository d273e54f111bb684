// The one way tests and tools wait: for a condition, with a deadline. Probing is cheap next to what is waited
// for (another process), so the probe interval is short and fixed.
#pragma once
#include <windows.h>

#include <chrono>
#include <string>

#include "tests/equipment/failure.h"

namespace driver {

using Milliseconds = std::chrono::milliseconds;

// How long anything may take that a person does not wait for: generous, for the machine may be busy.
constexpr Milliseconds kSoon{20'000};

// True as soon as the condition holds; false when it still does not at the deadline.
[[nodiscard]] bool WaitUntil(auto&& condition, Milliseconds limit = kSoon) {
    constexpr DWORD kProbeIntervalMs = 5;
    const auto deadline = std::chrono::steady_clock::now() + limit;
    while (!condition()) {
        if (std::chrono::steady_clock::now() >= deadline) return condition();
        ::Sleep(kProbeIntervalMs);
    }
    return true;
}

// Throws Failure when it does not.
void Await(const std::string& what, auto&& condition, Milliseconds limit = kSoon) {
    if (!WaitUntil(condition, limit)) throw Failure("waited in vain until " + what);
}

}  // namespace driver
