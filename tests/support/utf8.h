// UTF-16 as UTF-8, for the records and messages of tests.
#pragma once

#include "tests/equipment/text.h"

#include <string>
#include <string_view>

inline std::string Utf8(std::wstring_view text) {
    return driver::ToUtf8(text);
}
