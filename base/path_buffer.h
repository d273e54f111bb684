// A text that the shell's path functions may change in place. They write up to 260 characters whatever the
// text's length was, so the buffer is never smaller.
#pragma once

#include <windows.h>

#include <algorithm>
#include <string>
#include <string_view>

class PathBuffer {
public:
    explicit PathBuffer(std::wstring_view text) : m_characters(text) {
        m_characters.resize(std::max<std::size_t>(text.size(), MAX_PATH));
    }

    [[nodiscard]] wchar_t* Data() noexcept { return m_characters.data(); }

    // The text up to its terminator.
    [[nodiscard]] std::wstring Text() const { return m_characters.substr(0, m_characters.find(L'\0')); }

private:
    std::wstring m_characters;  // terminated: what follows the text is zeros
};
