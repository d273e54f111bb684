// The modules that dialogs, strings and icons are loaded from.
#pragma once

#include <windows.h>

#include <vector>

// In the order in which strings are looked up in them. Changed only before the first window is created and
// after the last one is destroyed: any thread may read.
[[nodiscard]] const std::vector<HINSTANCE>& ResourceModules() noexcept;

// The first module: dialogs and icons are loaded from it. Null, the running program, when there is none.
[[nodiscard]] HINSTANCE ResourceInstance() noexcept;

void AddResourceModule(HINSTANCE module);
void ForgetResourceModules() noexcept;
