// The least that shows Talvenor's main window: its dialog template with the icons and the list's columns, and
// nothing behind the controls. What a start, a list and a process are measured against.
#pragma once

#include <windows.h>

// Creates the dialog, hidden. Null when that fails.
HWND CreateBareDialog(HINSTANCE instance);

// Runs the messages of the calling thread until the dialog is closed.
void RunBareDialog(HWND dialog);
