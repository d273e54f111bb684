// Time as a person would feel it, in milliseconds.
#pragma once

#include <chrono>

class Stopwatch {
public:
    // Since this object was made.
    [[nodiscard]] double Milliseconds() const {
        return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - m_start).count();
    }

private:
    const std::chrono::steady_clock::time_point m_start = std::chrono::steady_clock::now();
};
