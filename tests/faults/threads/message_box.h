// Message boxes that are really shown, on whichever thread, and answered as a person does.
#pragma once

#include <windows.h>

#include <string>

// Waits for the box of this process whose text contains `part`.
[[nodiscard]] HWND WaitForMessageBox(const std::wstring& part);
// Presses a button and waits until the box is gone. A box with one button has only IDOK to press.
void AnswerMessageBox(HWND box, int buttonId);
