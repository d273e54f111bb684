// How each function that the program imports fails.
#pragma once

#include <cstdint>
#include <string>

// What a call returns that fails as the system makes it fail.
struct Failure {
    std::string function;
    std::uint64_t value;
    unsigned long error;      // the last error that it leaves
    void* instead = nullptr;  // of the function's own type, when it also leaves something behind
};

// Null for a function that cannot fail or is none of ours.
[[nodiscard]] const Failure* FindFailure(const std::string& function);

// Why a call of this function is not made to fail; null when there is no reason.
[[nodiscard]] const char* WhyNotFailed(const std::string& function);
