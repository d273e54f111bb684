// A process of the tests' own, from the folder of this program.
#pragma once

#include "tests/equipment/file_bytes.h"
#include "tests/equipment/program.h"

#include <windows.h>

#include <chrono>
#include <filesystem>
#include <string>

// Runs `program`, of this folder, and returns its exit code. One that does not end in time is ended. Its
// temporary folder is `folder` unless that is empty.
inline constexpr DWORD kEndedForTime = 124;
[[nodiscard]] inline DWORD RunChildProcess(const char* program, const std::wstring& arguments,
                                           std::chrono::milliseconds limit,
                                           const std::filesystem::path& folder = {}) {
    driver::StartOptions options;
    if (!folder.empty()) options.environment[L"TMP"] = folder.wstring();
    options.arguments = arguments;
    const driver::Program process((driver::OwnPath().parent_path() / program).wstring(), options);
    return process.WaitForExit(limit).value_or(kEndedForTime);
}
