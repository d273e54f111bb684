// Ends the test program when one test takes longer than any may, and names it. What the test had started ends
// with it: the job that holds it is closed.
#pragma once

#include <gtest/gtest.h>

#include <windows.h>

#include <atomic>
#include <cstdio>

class Watchdog : public testing::EmptyTestEventListener {
public:
    explicit Watchdog(DWORD longestTestMs) : m_longestTestMs(longestTestMs) {
        ::CloseHandle(::CreateThread(nullptr, 0, &Watch, this, 0, nullptr));
    }

    void OnTestStart(const testing::TestInfo& test) override {
        m_suite = test.test_suite_name();
        m_name = test.name();
        m_startedAt = ::GetTickCount64();
    }
    void OnTestEnd(const testing::TestInfo& /*test*/) override { m_startedAt = 0; }

private:
    static DWORD WINAPI Watch(void* self) {
        const auto& watchdog = *static_cast<const Watchdog*>(self);
        for (;;) {
            ::Sleep(1000);  // how often the watch is looked at; nothing waits for it
            const ULONGLONG startedAt = watchdog.m_startedAt;
            if (startedAt == 0 || ::GetTickCount64() - startedAt < watchdog.m_longestTestMs) continue;
            std::printf("[  HANGING ] %s.%s\n", watchdog.m_suite.load(), watchdog.m_name.load());
            std::fflush(stdout);
            ::TerminateProcess(::GetCurrentProcess(), 124);
        }
    }

    const DWORD m_longestTestMs;
    std::atomic<const char*> m_suite{""};
    std::atomic<const char*> m_name{""};
    std::atomic<ULONGLONG> m_startedAt{0};  // 0: no test is running
};
