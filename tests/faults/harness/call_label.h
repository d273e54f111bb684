// Calls as short texts, the same in every run: "GetDlgItem main ADD",
// "SendMessageW FILE_LIST LVM_SETITEMW".
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

// The first four arguments of a call, which came in registers.
using SavedRegisters = const std::uint64_t*;

// Numbers with the names that code has for them.
using Names = std::vector<std::pair<std::int64_t, std::string>>;

// The controls of the main window by their ids, which are named without "IDC_" or "ID".
[[nodiscard]] const Names& Controls();

// A control by its name, one of the system's by its number, a dialog of the program as main, about or
// countdown, others as "other" or "none".
[[nodiscard]] std::string WindowLabel(HWND window);

// The function and what its first arguments say about the call. Addresses and sizes are left out.
[[nodiscard]] std::string CallLabel(const std::string& function, SavedRegisters registers);
