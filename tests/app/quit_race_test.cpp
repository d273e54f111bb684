// The program is left while a stopped worker waits for its converter, which ends just then: the worker wakes
// while the process is ending, or just before.
#include "tests/app/app_fixture.h"

#include <chrono>
#include <random>

namespace {

class QuitRace : public AppTest {
protected:
    // Leaves a batch that has been stopped, at the moment when its worker waits, or has just ceased to.
    void QuitAfterStop(int converterMs, int delayMs) {
        StartWith({installed.MakePdf(L"a wait" + std::to_wstring(converterMs) + L".pdf")});
        ::DeleteFileW(installed.Record().c_str());  // nothing of the time before writes to it any more
        Window().StartBatch();
        ASSERT_TRUE(Comes([&] { return driver::FileExists(installed.Record()); }));
        Stop();
        // What is provoked here is a matter of milliseconds.
        const auto end = std::chrono::steady_clock::now() + driver::Milliseconds(delayMs);
        while (std::chrono::steady_clock::now() < end) ::SwitchToThread();
        EXPECT_EQ(Window().Quit(), 2u) << "left after " << delayMs << " ms";
    }
    [[nodiscard]] static int Between(int least, int most) {
        // The same in every run, and others when the tests are repeated.
        static std::mt19937 s_random{20261116};
        return std::uniform_int_distribution(least, most)(s_random);
    }

    static constexpr int kTimes = 4;  // scripts/prove repeats the tests
};

// The interpreter ends at the close request of the stop, so the worker wakes about when the user presses
// again.
TEST_F(QuitRace, ConverterEndsAtTheStop) {
    if (!UnderWine()) GTEST_SKIP() << "a real Windows keeps its interpreter";
    ReplaceInterpreter();
    for (int i = 0; i < kTimes && !HasFailure(); ++i) QuitAfterStop(60'000, Between(0, 40));
}

// The converter does not hear of the stop and ends by itself, somewhere around the end of the program.
TEST_F(QuitRace, ConverterEndsByItself) {
    for (int i = 0; i < kTimes && !HasFailure(); ++i) QuitAfterStop(Between(300, 900), Between(0, 300));
}

}  // namespace
