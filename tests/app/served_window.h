// A window of this process on a thread of its own, which serves it.
#pragma once
#include <gtest/gtest.h>

#include <windows.h>

#include <atomic>
#include <thread>

#include "tests/equipment/wait_until.h"

class ServedWindow {
public:
    explicit ServedWindow(HWND (*create)()) : m_thread([this, create] { Serve(create()); }) {
        EXPECT_TRUE(
            driver::WaitUntil([&] { return m_window.load() != nullptr; }, driver::Milliseconds(20'000)));
    }
    ~ServedWindow() {
        ::PostMessageW(m_window, WM_CLOSE, 0, 0);
        m_thread.join();
    }
    ServedWindow(const ServedWindow&) = delete;
    ServedWindow& operator=(const ServedWindow&) = delete;

    // Null when it cannot be created.
    [[nodiscard]] HWND Window() const { return m_window; }

private:
    void Serve(HWND window) {
        m_window = window;
        MSG message;
        while (::IsWindow(window) && ::GetMessageW(&message, nullptr, 0, 0) > 0) ::DispatchMessageW(&message);
    }

    std::atomic<HWND> m_window{nullptr};
    std::thread m_thread;
};
