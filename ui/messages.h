// Message boxes by string id.
#pragma once

#include <windows.h>

// Shows a message box and returns the button pressed. `text` and `caption` are each a text or, made with
// MAKEINTRESOURCEW, a string id; a caption of 0 is none. `type` is that of MessageBoxW. `owner`, which may be
// null, is disabled while the box is open, whichever thread shows it. 0 when the box could not be shown.
int ShowMessage(HWND owner, const wchar_t* text, const wchar_t* caption, UINT type);
