// For the files that answer in the system's place.
#pragma once

#include "tests/faults/harness/platform.h"
#include "tests/faults/harness/program_host.h"
#include "tests/support/utf8.h"

#include <windows.h>

#include <string>
#include <type_traits>

// The address of a lambda that answers in the place of a function of this type, which is named only: this
// program does not import it.
template <class Function>
[[nodiscard]] void* Answer(std::type_identity_t<Function>* answer) {
    return reinterpret_cast<void*>(answer);
}

[[nodiscard]] inline std::string TextOf(const wchar_t* text) {
    return text ? Utf8(text) : "";
}
