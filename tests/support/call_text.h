// How records write a call down: its name and its arguments, with blanks between them.
#pragma once

#include "tests/support/utf8.h"

#include <windows.h>

#include <concepts>
#include <cstdio>
#include <string>
#include <string_view>

// A control goes by its id, a dialog by "main", no window by "none".
[[nodiscard]] inline std::string WindowName(HWND window) {
    if (!window) return "none";
    // Not GetDlgCtrlID: it returns a top-level window's menu.
    if (::GetWindowLongPtrW(window, GWL_STYLE) & WS_CHILD) {
        return std::to_string(static_cast<int>(::GetWindowLongPtrW(window, GWLP_ID)));
    }
    wchar_t name[64] = {};
    ::GetClassNameW(window, name, ARRAYSIZE(name));
    return name == std::wstring_view(L"#32770") ? "main" : Utf8(name);
}

[[nodiscard]] inline std::string Quoted(const wchar_t* text) {
    return text ? '"' + Utf8(text) + '"' : "(null)";
}

[[nodiscard]] inline std::string Hex(unsigned number) {
    char text[16];
    std::snprintf(text, sizeof text, "0x%X", number);
    return text;
}

template <class Argument>
[[nodiscard]] std::string ArgumentText(const Argument& argument) {
    if constexpr (std::same_as<Argument, HWND>) {
        return WindowName(argument);
    } else if constexpr (std::convertible_to<Argument, const wchar_t*>) {
        return Quoted(argument);
    } else if constexpr (std::integral<Argument>) {
        return std::to_string(argument);
    } else {
        return std::string(argument);
    }
}

// "SetTimer main 2 1000".
template <class... Arguments>
[[nodiscard]] std::string CallText(const std::string& name, const Arguments&... arguments) {
    return (name + ... + (' ' + ArgumentText(arguments)));
}
