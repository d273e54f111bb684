// How a test sets what a stand-in program does: by environment variables, which reach it through Talvenor
// and the command interpreter untouched.
#pragma once
#include <windows.h>

#include <string>

namespace stand_in {

std::wstring Setting(const wchar_t* name);  // empty: not set
DWORD NumberSetting(const wchar_t* name, DWORD whenNotSet);

// The number that follows the word in a PDF's name, or the other value.
DWORD NumberInName(const std::wstring& name, const std::wstring& word, DWORD whenNotNamed);

// Appends the text, as UTF-8 and in one write, to the file that the variable names; without the variable
// nothing is recorded. False when the record could not be written.
[[nodiscard]] bool AppendRecord(const wchar_t* variable, const std::wstring& record);

// The lines that every stand-in records about its start: the command line as received, and the current
// directory.
std::wstring DescribeStart();

}  // namespace stand_in
