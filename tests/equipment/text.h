// Text between Windows (UTF-16) and what tools print, record and throw (UTF-8).
#pragma once
#include <windows.h>

#include <string>
#include <string_view>

namespace driver {

inline std::string ToUtf8(std::wstring_view text) {
    const int length = static_cast<int>(text.size());
    const int size = ::WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
    std::string bytes(static_cast<std::size_t>(size), '\0');
    ::WideCharToMultiByte(CP_UTF8, 0, text.data(), length, bytes.data(), size, nullptr, nullptr);
    return bytes;
}

inline std::wstring FromUtf8(std::string_view bytes) {
    const int size = static_cast<int>(bytes.size());
    const int length = ::MultiByteToWideChar(CP_UTF8, 0, bytes.data(), size, nullptr, 0);
    std::wstring text(static_cast<std::size_t>(length), L'\0');
    ::MultiByteToWideChar(CP_UTF8, 0, bytes.data(), size, text.data(), length);
    return text;
}

}  // namespace driver
