// Calls as short texts, the same in every run: "GetDlgItem main 1003", "SendMessageW 1040 LVM_SETITEMW".
#pragma once

#include "tests/faults/harness/import_thunks.h"

#include <windows.h>

#include <string>

// A control by its id, a dialog of the program as main, about or countdown, others as "other" or "none".
[[nodiscard]] std::string WindowLabel(HWND window);

// The function and what its first arguments say about the call. Addresses and sizes are left out.
[[nodiscard]] std::string CallLabel(const std::string& function, const CallArguments& arguments);
