// Numbers as decimal text, without the printf family, which would double the size of the program.
#pragma once

#include <charconv>
#include <cstdint>
#include <string>

// Appends `value` in base 10 with leading zeros up to `minimumDigits`; more digits are written where needed.
inline void AppendDecimal(std::wstring& text, std::uint32_t value, int minimumDigits = 1) {
    char digits[10];  // 2^32 - 1 has ten
    const char* const end = std::to_chars(digits, digits + sizeof digits, value).ptr;
    for (auto count = end - digits; count < minimumDigits; ++count) text += L'0';
    text.append(static_cast<const char*>(digits), end);
}
