// Files that stand beside the program: its converter and its log.
#pragma once

#include <string>

// Full path of the running program as the system gives it, cut at 260 characters.
[[nodiscard]] std::wstring ProgramPath();

// The folder of the running program.
[[nodiscard]] std::wstring ProgramFolder();

// Full path of `name` in the program's folder.
[[nodiscard]] std::wstring FileInProgramFolder(const wchar_t* name);

// The same, for the callers that take the program's extension off before its name.
[[nodiscard]] std::wstring FileBesideProgram(const wchar_t* name);

// Full path of the conversion log.
[[nodiscard]] std::wstring LogPath();
