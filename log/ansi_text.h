// Text in the system's ANSI code page, for the one file that is written in it.
#pragma once

#include <windows.h>

#include <memory>
#include <string>

// `text` up to its first null as ANSI bytes. Characters that the code page lacks become its default
// character.
class AnsiText {
public:
    explicit AnsiText(const std::wstring& text);

    // Terminated; empty when the conversion failed.
    [[nodiscard]] const char* Bytes() const noexcept { return m_grown ? m_grown.get() : m_inPlace; }

private:
    char m_inPlace[128] = {};  // enough for the shorter records
    std::unique_ptr<char[]> m_grown;
};
