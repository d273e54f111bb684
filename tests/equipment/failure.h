// How the driver says that something did not go as it must: an exception with a text for the person who reads
// the test's output. Under GoogleTest it fails the test; in a tool it ends the program with that text.
#pragma once
#include <windows.h>

#include <stdexcept>
#include <string>
#include <string_view>

#include "tests/equipment/text.h"

namespace driver {

class Failure : public std::runtime_error {
public:
    explicit Failure(const std::string& what) : std::runtime_error(what) {}
    explicit Failure(std::wstring_view what) : std::runtime_error(ToUtf8(what)) {}
};

// Names the call and the system's error number. Read the last error first: building the text may change it.
[[noreturn]] inline void FailCall(std::string_view call, DWORD error) {
    throw Failure(std::string(call) + " failed with error " + std::to_string(error));
}

}  // namespace driver
