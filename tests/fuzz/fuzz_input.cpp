#include "tests/fuzz/fuzz_input.h"

#include <algorithm>
#include <stdexcept>

namespace {

// The code point at the front of `bytes`, which is shortened by it.
char32_t TakeCodePoint(std::string_view& bytes) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
    const unsigned char first = byte(0);
    std::size_t size = first >= 0xF0 && first < 0xF8 ? 4 : first >= 0xE0 ? 3 : first >= 0xC0 ? 2 : 1;
    if (first >= 0xF8 || size > bytes.size()) size = 1;
    for (std::size_t i = 1; i < size; ++i) {
        if ((byte(i) & 0xC0u) != 0x80u) size = 1;
    }
    constexpr unsigned kLeadBits[] = {0, 0xFF, 0x1F, 0x0F, 0x07};
    char32_t codePoint = first & kLeadBits[size];
    for (std::size_t i = 1; i < size; ++i) codePoint = codePoint << 6 | (byte(i) & 0x3Fu);
    bytes.remove_prefix(size);
    return codePoint;
}

}  // namespace

std::string_view FuzzInput::Line() {
    const std::string_view line = m_rest.substr(0, m_rest.find('\n'));
    m_rest.remove_prefix(line.size() < m_rest.size() ? line.size() + 1 : line.size());
    return line;
}

std::wstring FuzzInput::Text() {
    std::string_view line = Line();
    std::wstring text;
    while (!line.empty()) {
        const char32_t codePoint = TakeCodePoint(line);
        if (codePoint < 0x10000) {
            text += static_cast<wchar_t>(codePoint);
        } else {
            text += static_cast<wchar_t>(0xD800 + ((codePoint - 0x10000) >> 10 & 0x3FF));
            text += static_cast<wchar_t>(0xDC00 + ((codePoint - 0x10000) & 0x3FF));
        }
    }
    return text;
}

std::uint32_t FuzzInput::Number() {
    std::uint32_t value = 0;
    for (const char character : Line()) {
        if (character < '0' || character > '9') continue;
        value = value * 10 + static_cast<std::uint32_t>(character - '0');
    }
    return value;
}

std::wstring Digits(std::uint64_t number, std::size_t minimum) {
    const std::wstring digits = std::to_wstring(number);
    return std::wstring(minimum - std::min(minimum, digits.size()), L'0') + digits;
}

void Require(bool holds, const char* what) {
    if (!holds) throw std::logic_error(what);
}
