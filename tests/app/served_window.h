// A window of this process on a thread of its own, which serves it.
#pragma once
#include <gtest/gtest.h>

#include <windows.h>

#include <atomic>

#include "tests/equipment/handle.h"
#include "tests/equipment/wait_until.h"

class ServedWindow {
public:
    explicit ServedWindow(HWND (*create)())
        : m_create(create), m_thread(::CreateThread(nullptr, 0, &Serve, this, 0, nullptr)) {
        EXPECT_TRUE(driver::WaitUntil([&] { return m_window.load() != nullptr; }, kLimit));
    }
    ~ServedWindow() {
        ::PostMessageW(m_window, WM_CLOSE, 0, 0);
        EXPECT_EQ(::WaitForSingleObject(m_thread.Get(), static_cast<DWORD>(kLimit.count())), WAIT_OBJECT_0);
    }
    ServedWindow(const ServedWindow&) = delete;
    ServedWindow& operator=(const ServedWindow&) = delete;

    // Null when it cannot be created.
    [[nodiscard]] HWND Window() const { return m_window; }

private:
    static constexpr driver::Milliseconds kLimit{20'000};

    static DWORD WINAPI Serve(void* parameter) {
        auto& self = *static_cast<ServedWindow*>(parameter);
        const HWND window = self.m_create();
        self.m_window = window;
        MSG message;
        while (::IsWindow(window) && ::GetMessageW(&message, nullptr, 0, 0) > 0) ::DispatchMessageW(&message);
        return 0;
    }

    HWND (*m_create)();
    std::atomic<HWND> m_window{nullptr};
    const driver::UniqueHandle m_thread;
};
