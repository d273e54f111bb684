// What the programs that stand in for others have in common. A test says what one does by the name of the
// PDF, and where it writes down its runs by a variable; both reach it through Talvenor and the command
// interpreter untouched.
#pragma once
#include <windows.h>

#include <cwchar>
#include <filesystem>
#include <string>

#include "tests/equipment/failure.h"
#include "tests/equipment/file_bytes.h"
#include "tests/equipment/text.h"

namespace stand_in {

constexpr int kCannotRecord = 97;  // exit code

// The first number that follows the word.
inline DWORD NumberIn(const std::wstring& pdfName, const std::wstring& word, DWORD otherwise) {
    for (std::size_t at = pdfName.find(word); at != std::wstring::npos; at = pdfName.find(word, at + 1)) {
        const wchar_t* const digits = pdfName.c_str() + at + word.size();
        if (*digits >= L'0' && *digits <= L'9') return static_cast<DWORD>(std::wcstoul(digits, nullptr, 10));
    }
    return otherwise;
}

// Appends the text, as UTF-8 and in one write, to the file that TALVENOR_STANDIN_OUT names; without the
// variable nothing is recorded. False when the record could not be written.
[[nodiscard]] inline bool AppendRecord(const std::wstring& record) {
    wchar_t path[1024] = {};
    if (::GetEnvironmentVariableW(L"TALVENOR_STANDIN_OUT", path, ARRAYSIZE(path)) == 0) return true;
    try {
        driver::AppendFileBytes(path, driver::ToUtf8(record));
    } catch (const driver::Failure&) {
        return false;
    }
    return true;
}

// The lines that every stand-in records about its start: the command line as received, its own file, and the
// current directory.
inline std::wstring DescribeStart() {
    return std::wstring(L"command=") + ::GetCommandLineW() + L"\nprogram=" + driver::OwnPath().wstring() +
           L"\ndirectory=" + std::filesystem::current_path().wstring() + L'\n';
}

}  // namespace stand_in
