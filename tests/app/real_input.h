// Keys and clicks as a person makes them: injected into the system's input, so they go to whichever window is
// in front and has the focus, and through everything on the way that posted messages leave out.
#pragma once
#include <windows.h>

#include <initializer_list>
#include <string>
#include <vector>

namespace input {

// Brings a window to the front and waits until the keyboard is its own. Throws driver::Failure when it
// cannot.
void BringToFront(HWND window);

// The control of the window's thread that has the focus, or null.
HWND Focus(HWND window);

// Presses a key while others are held, and lets all go.
void Press(WORD key, const std::vector<WORD>& held = {});
void PressAll(std::initializer_list<WORD> keys);  // one after another
// Types characters that the keyboard has.
void Type(const std::wstring& text);

// Moves the pointer into the middle of a window, or to a place in it, in pixels.
void PointAt(HWND window);
void PointAt(HWND window, int x, int y);
void Click();
void ClickOn(HWND window);

// Puts a text on the clipboard.
void CopyToClipboard(const std::wstring& text);

}  // namespace input
