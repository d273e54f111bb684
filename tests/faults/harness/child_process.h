// A process of the tests' own, from the folder of this program.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

// The folder of this program.
[[nodiscard]] std::wstring TestFolder();

// Starts `program`, of this folder, and returns its exit code. One that does not end in time is ended, with
// kEndedForTime. Throws when it cannot be started.
inline constexpr DWORD kEndedForTime = 124;
[[nodiscard]] DWORD RunChildProcess(const std::string& program, const std::vector<std::string>& arguments,
                                    DWORD limitMs);
