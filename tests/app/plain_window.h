// A window with nothing behind it, on a thread of its own: how late it answers is up to the machine alone.
// What a window of the program is measured against.
#pragma once
#include <windows.h>

#include "tests/equipment/handle.h"

class PlainWindow {
public:
    // Shows the window.
    PlainWindow();
    PlainWindow(const PlainWindow&) = delete;
    PlainWindow& operator=(const PlainWindow&) = delete;
    // Destroys it and ends the thread.
    ~PlainWindow();

    [[nodiscard]] HWND Window() const noexcept { return m_window; }

    // The window draws another number before it answers, as one that shows progress does all the time.
    static constexpr UINT kShowNextNumber = WM_APP;

private:
    static DWORD WINAPI Run(void* self);
    static LRESULT CALLBACK WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    driver::UniqueHandle m_created;  // an event: the window is there, or cannot be created
    driver::UniqueHandle m_thread;
    HWND m_window = nullptr;
};
