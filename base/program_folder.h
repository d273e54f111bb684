// Files beside the program: its converter and its log.
#pragma once

#include <string>

// Full path of the running program as the system returns it, cut at 260 characters.
struct ProgramPath {
    std::wstring text;
    bool isCut = false;
};
[[nodiscard]] ProgramPath GetProgramPath();

// The folder of the running program.
[[nodiscard]] std::wstring ProgramFolder();

// Full path of `name` in the program's folder.
[[nodiscard]] std::wstring FileInProgramFolder(const wchar_t* name);

// Full path of `name` in the folder of `program`, whose extension is taken off before its name.
[[nodiscard]] std::wstring FileBeside(const ProgramPath& program, const wchar_t* name);
