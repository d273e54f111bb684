// What the targets share: values taken from the fuzzer's bytes, and what oracles are made of.
//
// An input is lines of text, one value a line, so that a corpus file can be read and written by hand. Lines
// that are not there are empty.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

class FuzzInput {
public:
    explicit FuzzInput(std::string_view bytes) : m_rest(bytes) {}

    [[nodiscard]] bool AtEnd() const { return m_rest.empty(); }

    // UTF-8 as UTF-16; a byte that is no UTF-8 stands for the character of its number.
    std::wstring Text();
    // The decimal digits of the line, modulo 2^32; other characters count for nothing.
    std::uint32_t Number();
    std::string_view Line();

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
std::wstring Digits(std::uint64_t number, std::size_t minimum);

// Ends the target with `what` unless `holds`.
void Require(bool holds, const char* what);
