// Asks a window again and again whether it still answers, from a thread of its own.
#pragma once

#include <windows.h>

#include <atomic>

class Pulse {
public:
    explicit Pulse(HWND window);
    Pulse(const Pulse&) = delete;
    Pulse& operator=(const Pulse&) = delete;
    ~Pulse();

    // Ends the asking. False when an answer was missing.
    [[nodiscard]] bool Stop();
    [[nodiscard]] int Answers() const { return m_answers; }
    [[nodiscard]] ULONGLONG SlowestMs() const { return m_slowestMs; }

private:
    static DWORD WINAPI Run(void* pulse);
    void Ask();

    const HWND m_window;
    const HANDLE m_over = ::CreateEventW(nullptr, TRUE, FALSE, nullptr);
    std::atomic<int> m_answers{0};
    std::atomic<bool> m_missing{false};
    std::atomic<ULONGLONG> m_slowestMs{0};
    HANDLE m_thread;
};
