// What a process under Wine holds, counted from outside. The usual functions (GetProcessHandleCount,
// GetGuiResources) always give 0 there.
#pragma once

#include <windows.h>

// Kernel handles.
[[nodiscard]] int CountHandles(DWORD processId);

// Fonts, brushes, bitmaps, device contexts. Read from the table that the system keeps in each process.
[[nodiscard]] int CountGdiObjects(HANDLE process);
