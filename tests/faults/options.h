// What the command line asks of the tests.
#pragma once

#include <windows.h>

#include <string_view>

// Everything instead of a short form: "--full".
[[nodiscard]] inline bool IsFull() {
    return std::wstring_view(::GetCommandLineW()).find(L"--full") != std::wstring_view::npos;
}
