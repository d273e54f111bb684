// What the targets share: values taken from the fuzzer's bytes, and what oracles are made of.
//
// An input is lines of text, one value a line, so that a corpus file can be read and written by hand. Lines
// that are not there are empty.
#pragma once

#include <algorithm>
#include <clocale>
#include <cstdint>
#include <cwchar>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

// Ends the target with `what` unless `holds`.
inline void Require(bool holds, const char* what) {
    if (!holds) throw std::logic_error(what);
}

class FuzzInput {
public:
    explicit FuzzInput(std::string_view bytes) : m_rest(bytes) {
        static const bool s_takesUtf8 = std::setlocale(LC_CTYPE, "C.UTF-8") != nullptr;
        Require(s_takesUtf8, "the system has no locale for UTF-8");
    }

    [[nodiscard]] bool AtEnd() const { return m_rest.empty(); }

    std::string_view Line() {
        const std::string_view line = m_rest.substr(0, m_rest.find('\n'));
        m_rest.remove_prefix(line.size() < m_rest.size() ? line.size() + 1 : line.size());
        return line;
    }
    // UTF-8; a byte that is no UTF-8 stands for the character of its number.
    std::wstring Text() {
        std::wstring text;
        for (std::string_view line = Line(); !line.empty();) {
            wchar_t character = 0;
            std::mbstate_t state = {};
            const std::size_t read = std::mbrtowc(&character, line.data(), line.size(), &state);
            const bool isUtf8 = read > 0 && read <= line.size();
            text += isUtf8 ? character : static_cast<wchar_t>(static_cast<unsigned char>(line.front()));
            line.remove_prefix(isUtf8 ? read : 1);
        }
        return text;
    }
    // The decimal digits of the line, modulo 2^32; other characters count for nothing.
    std::uint32_t Number() {
        std::uint32_t value = 0;
        for (const char character : Line()) {
            if (character < '0' || character > '9') continue;
            value = value * 10 + static_cast<std::uint32_t>(character - '0');
        }
        return value;
    }

private:
    std::string_view m_rest;
};

// A text in memory that ends where the text ends: the address sanitizer sees whoever looks for a terminator.
class UnterminatedText {
public:
    explicit UnterminatedText(std::wstring_view text) : m_characters(text.begin(), text.end()) {}

    [[nodiscard]] std::wstring_view View() const { return {m_characters.data(), m_characters.size()}; }

private:
    std::vector<wchar_t> m_characters;
};

// The number in decimal digits, with zeros in front up to so many.
inline std::wstring Digits(std::uint64_t number, std::size_t minimum) {
    const std::wstring digits = std::to_wstring(number);
    return std::wstring(minimum - std::min(minimum, digits.size()), L'0') + digits;
}
