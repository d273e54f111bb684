// Asks a window again and again whether it still answers, from a thread of its own.
#pragma once

#include <windows.h>

#include <algorithm>
#include <atomic>

class Pulse {
public:
    explicit Pulse(HWND window)
        : m_window(window), m_thread(::CreateThread(nullptr, 0, &Run, this, 0, nullptr)) {}
    Pulse(const Pulse&) = delete;
    Pulse& operator=(const Pulse&) = delete;
    ~Pulse() {
        static_cast<void>(Stop());
        ::CloseHandle(m_thread);
        ::CloseHandle(m_over);
    }

    // Ends the asking. False when an answer was missing.
    [[nodiscard]] bool Stop() {
        ::SetEvent(m_over);
        ::WaitForSingleObject(m_thread, INFINITE);
        return !m_missing;
    }
    [[nodiscard]] int Answers() const { return m_answers; }
    [[nodiscard]] ULONGLONG SlowestMs() const { return m_slowestMs; }

private:
    static constexpr DWORD kIntervalMs = 10;
    // What anybody would call hanging, on a machine that is busy with other tests.
    static constexpr UINT kLimitMs = 5000;

    static DWORD WINAPI Run(void* pulse) {
        auto& self = *static_cast<Pulse*>(pulse);
        do {
            self.Ask();
        } while (::WaitForSingleObject(self.m_over, kIntervalMs) == WAIT_TIMEOUT);
        return 0;
    }

    void Ask() {
        const ULONGLONG began = ::GetTickCount64();
        DWORD_PTR answer = 0;
        if (!::SendMessageTimeoutW(m_window, WM_NULL, 0, 0, SMTO_NORMAL, kLimitMs, &answer)) {
            m_missing = true;
            return;
        }
        ++m_answers;
        m_slowestMs = std::max<ULONGLONG>(m_slowestMs, ::GetTickCount64() - began);
    }

    const HWND m_window;
    const HANDLE m_over = ::CreateEventW(nullptr, TRUE, FALSE, nullptr);
    std::atomic<int> m_answers{0};
    std::atomic<bool> m_missing{false};
    std::atomic<ULONGLONG> m_slowestMs{0};
    HANDLE m_thread;
};
