// A window that counts what is sent to it, for what must leave a window alone.
#pragma once

#include <windows.h>

// Never shown; gone with this object. With a child, which is nothing but a window in it.
class WatchedWindow {
public:
    WatchedWindow() {
        WNDCLASSW windowClass = {};
        windowClass.lpfnWndProc = &Count;
        windowClass.hInstance = ::GetModuleHandleW(nullptr);
        windowClass.lpszClassName = kClass;
        ::RegisterClassW(&windowClass);
        m_window = ::CreateWindowExW(0, kClass, L"as it was", WS_OVERLAPPEDWINDOW, 0, 0, 100, 100, nullptr,
                                     nullptr, windowClass.hInstance, nullptr);
        m_child = ::CreateWindowExW(0, kClass, L"", WS_CHILD, 0, 0, 10, 10, m_window, nullptr,
                                    windowClass.hInstance, nullptr);
        s_messages = 0;
    }
    WatchedWindow(const WatchedWindow&) = delete;
    WatchedWindow& operator=(const WatchedWindow&) = delete;
    ~WatchedWindow() {
        ::DestroyWindow(m_window);
        ::UnregisterClassW(kClass, ::GetModuleHandleW(nullptr));
    }

    [[nodiscard]] HWND Window() const { return m_window; }
    [[nodiscard]] HWND Child() const { return m_child; }
    // What both have got since they were made. What was posted is among it.
    [[nodiscard]] int Messages() const {
        MSG message = {};
        for (const HWND window : {m_window, m_child}) {
            while (::PeekMessageW(&message, window, 0, 0, PM_REMOVE)) ++s_messages;
        }
        return s_messages;
    }

private:
    static LRESULT CALLBACK Count(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        ++s_messages;
        return ::DefWindowProcW(window, message, wParam, lParam);
    }

    static constexpr wchar_t kClass[] = L"Talvenor.Tests.Watched";
    static inline int s_messages = 0;
    HWND m_window = nullptr;
    HWND m_child = nullptr;  // goes with the window
};
