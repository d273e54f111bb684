// The window answers at any moment of a batch: people move it, read it and press "Arrêter" while it works.
#include "tests/app/app_fixture.h"

#include <algorithm>
#include <chrono>
#include <cstdio>

#include "tests/equipment/failure.h"

namespace {

using testing::Each;
using testing::StartsWith;
using Clock = std::chrono::steady_clock;

constexpr int kFiles = 100;
constexpr driver::Milliseconds kLongestAnswer{100};
constexpr driver::Milliseconds kBetweenQuestions{50};

class Responsiveness : public AppTest {
protected:
    // The longest that the window took for an answer, asked from now on until the batch's message is there.
    [[nodiscard]] driver::Milliseconds LongestAnswerUntilTheEnd() {
        Clock::duration longest{};
        const auto deadline = Clock::now() + std::chrono::seconds(150);
        while (!Window().OpenBox()) {
            if (Clock::now() > deadline) throw driver::Failure("the batch does not end");
            const auto asked = Clock::now();
            driver::Ask(Window().Window(), WM_NULL);
            longest = std::max(longest, Clock::now() - asked);
            ++questions;
            // The pace of the questions, as a person's hand would ask them; nothing is waited for here.
            ::Sleep(static_cast<DWORD>(kBetweenQuestions.count()));
        }
        return std::chrono::duration_cast<driver::Milliseconds>(longest);
    }

    int questions = 0;
};

TEST_F(Responsiveness, WindowAnswersWithin100MillisecondsThroughoutABatchOf100Files) {
    // Each takes so long that there is time for a question even where processes start at once.
    std::vector<std::wstring> paths;
    for (int i = 0; i < kFiles; ++i)
        paths.push_back(installed.MakePdf(L"Document " + std::to_wstring(i) + L" wait60.pdf"));
    Start();
    AddForConversion(paths);
    Window().Tick(id::kHideOutput);
    Window().StartBatch();
    const auto longest = LongestAnswerUntilTheEnd();
    CompleteBatch();
    std::printf("longest answer of %d: %d ms\n", questions, static_cast<int>(longest.count()));
    RecordProperty("LongestAnswerMs", static_cast<int>(longest.count()));
    EXPECT_LE(longest, kLongestAnswer);
    EXPECT_GE(questions, kFiles) << "the batch was over too soon to be asked";
    EXPECT_EQ(Runs().size(), static_cast<std::size_t>(kFiles));
    EXPECT_THAT(Durations(), Each(StartsWith(L"00:00:")));
}

}  // namespace
