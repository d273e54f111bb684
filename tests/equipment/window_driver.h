// Reads and works the windows of another process as a person would: by clicks, keys and dropped files, with
// no help from the program. Every question has a time limit, so a hung program fails a test and never hangs
// it.
#pragma once
#include <windows.h>

#include <string>
#include <vector>

#include "tests/equipment/program.h"
#include "tests/equipment/wait_until.h"

namespace driver {

// How long a window may take to answer a message before it counts as hung.
constexpr Milliseconds kAnswerLimit{10'000};

// Sends a message and returns its result; throws Failure when no answer comes within the limit.
LRESULT Ask(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0);

// Finding windows.
std::vector<HWND> TopLevelWindows();                // of all programs, top one first
HWND FindControl(HWND dialog, int id);              // null when there is none, also while the dialog closes
HWND Control(HWND dialog, int id);                  // throws Failure when there is none
std::vector<HWND> Dialogs(const Program& program);  // its visible dialogs and message boxes, top one first

// Reading.
GUITHREADINFO GuiThread(HWND window);  // what of the window's thread is active, has the focus, is in a menu
std::wstring Text(HWND window);
std::wstring AllText(HWND dialog);  // its title and the texts of its controls, a line each
bool IsChecked(HWND checkBox);
bool IsEnabled(HWND window);
bool IsVisible(HWND window);

// Acting. Clicks and keys are posted: what they open (a message box, the open dialog) would otherwise keep us
// inside the call until somebody closes it.
void Click(HWND button);
void PressKey(HWND window, WORD virtualKey);
void TypeText(HWND edit, const std::wstring& text);
void SetText(HWND edit, const std::wstring& text);
// On Windows the button of a message box that has no other is IDCANCEL, whatever it reads, for it closes by
// Escape, too: IDOK presses it in a box without an IDOK.
void PressDialogButton(HWND dialog, int id);
void AnswerDialog(HWND dialog, int id);  // the same, then waits until the dialog is gone
void DropFiles(HWND target, const std::vector<std::wstring>& paths);
void RepaintNow(HWND window);

}  // namespace driver
