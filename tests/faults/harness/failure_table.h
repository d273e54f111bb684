// How each function that the program imports fails.
#pragma once

#include <cstdint>
#include <string>

// What calls return that fail as the system makes them fail.
struct Failure {
    const char* functions;  // by their names between blanks
    // Unless there is a function of their own type to fail in their place:
    std::uint64_t value;
    unsigned long error;  // the last error that they leave
    void* instead = nullptr;
};

// Null for a function that cannot fail or is none of ours.
[[nodiscard]] const Failure* FindFailure(const std::string& function);

// Why a call of this function is not made to fail; null when there is no reason.
[[nodiscard]] const char* WhyNotFailed(const std::string& function);
