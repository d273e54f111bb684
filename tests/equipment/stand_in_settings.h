// How a test sets what a stand-in program does: by environment variables, which reach it through Talvenor
// and the command interpreter untouched.
#pragma once
#include <windows.h>

#include <cwchar>
#include <string>

#include "tests/equipment/failure.h"
#include "tests/equipment/file_bytes.h"
#include "tests/equipment/text.h"

namespace stand_in {

// Empty: not set.
inline std::wstring Setting(const wchar_t* name) {
    wchar_t value[1024] = {};
    ::GetEnvironmentVariableW(name, value, ARRAYSIZE(value));
    return value;
}

// The first number that follows the word.
inline DWORD NumberIn(const std::wstring& text, const std::wstring& word, DWORD otherwise) {
    for (std::size_t at = text.find(word); at != std::wstring::npos; at = text.find(word, at + 1)) {
        const wchar_t* const digits = text.c_str() + at + word.size();
        if (*digits >= L'0' && *digits <= L'9') return static_cast<DWORD>(std::wcstoul(digits, nullptr, 10));
    }
    return otherwise;
}

// How long to run: as the name of the PDF says, or the variable.
inline DWORD RunMs(const std::wstring& pdfName, const wchar_t* variable, DWORD usual) {
    return NumberIn(pdfName, L"wait", NumberIn(Setting(variable), L"", usual));
}

// Appends the text, as UTF-8 and in one write, to the file that the variable names; without the variable
// nothing is recorded. False when the record could not be written.
[[nodiscard]] inline bool AppendRecord(const wchar_t* variable, const std::wstring& record) {
    const std::wstring path = Setting(variable);
    if (path.empty()) return true;
    try {
        driver::AppendFileBytes(path, driver::ToUtf8(record));
    } catch (const driver::Failure&) {
        return false;
    }
    return true;
}

// The lines that every stand-in records about its start: the command line as received, and the current
// directory.
inline std::wstring DescribeStart() {
    std::wstring directory(::GetCurrentDirectoryW(0, nullptr), L'\0');
    directory.resize(::GetCurrentDirectoryW(static_cast<DWORD>(directory.size()), directory.data()));
    return std::wstring(L"command=") + ::GetCommandLineW() + L"\ndirectory=" + directory + L'\n';
}

}  // namespace stand_in
