// Runs the window tests. A test that hangs is named and ends the program: a window that waits for a click would
// otherwise wait for ever.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <windows.h>
#include <commctrl.h>
#include <objbase.h>

#include <atomic>
#include <cstdio>

namespace {

constexpr DWORD kLongestTestMs = 60'000;

// Ends the program when one test takes longer than any may.
class Watchdog : public testing::EmptyTestEventListener {
public:
    Watchdog() { ::CloseHandle(::CreateThread(nullptr, 0, &Watch, this, 0, nullptr)); }

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
            if (startedAt == 0 || ::GetTickCount64() - startedAt < kLongestTestMs) continue;
            std::printf("[  HANGING ] %s.%s\n", watchdog.m_suite.load(), watchdog.m_name.load());
            std::fflush(stdout);
            ::TerminateProcess(::GetCurrentProcess(), 124);
        }
    }

    std::atomic<const char*> m_suite{""};
    std::atomic<const char*> m_name{""};
    std::atomic<ULONGLONG> m_startedAt{0};  // 0: no test is running
};

}  // namespace

int main(int argc, char** argv) {
    testing::InitGoogleMock(&argc, argv);
    static_cast<void>(::CoInitialize(nullptr));
    const INITCOMMONCONTROLSEX controls = {sizeof controls, ICC_BAR_CLASSES};
    ::InitCommonControlsEx(&controls);
    testing::UnitTest::GetInstance()->listeners().Append(new Watchdog);
    const int result = RUN_ALL_TESTS();
    ::CoUninitialize();
    return result;
}
