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

bool TextReader::Take(std::wstring_view text) {
    if (!m_rest.starts_with(text)) return false;
    m_rest.remove_prefix(text.size());
    return true;
}

std::uint64_t TextReader::TakeNumber(std::size_t minimumDigits) {
    const std::size_t digits = std::min(m_rest.find_first_not_of(L"0123456789"), m_rest.size());
    Require(digits >= minimumDigits && digits >= 1, "a number with too few digits");
    Require(digits <= minimumDigits || digits == 1 || m_rest[0] != L'0', "a number with needless zeros");
    Require(digits <= 18, "a number with too many digits");
    std::uint64_t value = 0;
    for (const wchar_t digit : m_rest.substr(0, digits)) {
        value = value * 10 + static_cast<std::uint64_t>(digit - L'0');
    }
    m_rest.remove_prefix(digits);
    return value;
}

void Require(bool holds, const char* what) {
    if (!holds) throw std::logic_error(what);
}
