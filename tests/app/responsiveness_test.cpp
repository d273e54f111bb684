// The window answers at any moment of a batch: people move it, read it and press "Arrêter" while it works.
#include "tests/app/app_fixture.h"

#include <algorithm>
#include <chrono>
#include <cstdio>

#include "tests/app/served_window.h"
#include "tests/equipment/failure.h"

namespace {

using testing::Each;
using testing::StartsWith;
using Clock = std::chrono::steady_clock;

// The same batch several times: what the program itself makes a person wait occurs in each of them. What
// the machine does on its own, as in a moment when all its processors are busy, does not.
constexpr int kBatches = 5;
constexpr int kFiles = 20;
constexpr driver::Milliseconds kLongestBatch{120'000};
// By how much the program's longest answer of a batch may exceed the longest of a plain window, which was
// asked in turn with it.
constexpr driver::Milliseconds kLongestOfItsOwn{100};
constexpr driver::Milliseconds kBetweenQuestions{25};

// A window with nothing behind it, on a thread of its own: how late it answers is up to the machine alone.
// What a window of the program is measured against. It draws a text before it answers, as one that shows
// progress does all the time.
HWND CreatePlainWindow() {
    return ::CreateWindowExW(0, L"Static", L"", WS_POPUP | WS_VISIBLE, 0, 0, 200, 100, nullptr, nullptr,
                             nullptr, nullptr);
}

struct LongestAnswers {
    driver::Milliseconds program{0};
    driver::Milliseconds plain{0};

    [[nodiscard]] driver::Milliseconds OfItsOwn() const { return program - plain; }
};

class Responsiveness : public AppTest {
protected:
    // Starts a batch and asks both windows in turn, from the first moment on, until its message is there.
    [[nodiscard]] LongestAnswers AskThroughoutABatch() {
        LongestAnswers longest;
        const auto deadline = Clock::now() + kLongestBatch;
        driver::Click(Control(IDOK));
        while (!Window().OpenDialog()) {
            if (Clock::now() > deadline) throw driver::Failure("the batch does not end");
            longest.program =
                std::max(longest.program, TimeOf([&] { driver::Ask(Window().Window(), WM_NULL); }));
            longest.plain = std::max(
                longest.plain, TimeOf([&] { driver::SetText(plain.Window(), std::to_wstring(questions)); }));
            ++questions;
        }
        return longest;
    }

    int questions = 0;

    const ServedWindow plain{&CreatePlainWindow};

private:
    template <class Question>
    [[nodiscard]] static driver::Milliseconds TimeOf(Question&& question) {
        const auto asked = Clock::now();
        question();
        const auto took = Clock::now() - asked;
        // The pace of the questions, as a person's hand would ask them; nothing is waited for here.
        ::Sleep(static_cast<DWORD>(kBetweenQuestions.count()));
        return std::chrono::duration_cast<driver::Milliseconds>(took);
    }
};

TEST_F(Responsiveness, WindowAnswersAtMost100MillisecondsLaterThanAPlainOneInABatch) {
    // Each takes so long that there is time for a question even where processes start at once.
    std::vector<std::wstring> paths;
    for (int i = 0; i < kFiles; ++i)
        paths.push_back(installed.MakePdf(L"Document " + std::to_wstring(i) + L" wait60.pdf"));
    ASSERT_NE(plain.Window(), nullptr);
    StartWith(paths);
    Window().Check(IDC_HIDE_OUTPUT);
    auto shortest = driver::Milliseconds::max();
    for (int i = 0; i < kBatches; ++i) {
        const LongestAnswers longest = AskThroughoutABatch();
        CompleteBatch();
        std::printf("longest answer: %d ms, of a plain window %d ms\n",
                    static_cast<int>(longest.program.count()), static_cast<int>(longest.plain.count()));
        shortest = std::min(shortest, longest.OfItsOwn());
    }
    RecordProperty("LongestOfItsOwnMs", static_cast<int>(shortest.count()));
    EXPECT_LE(shortest, kLongestOfItsOwn) << "in every batch";
    EXPECT_GE(questions, kBatches * kFiles) << "the batches were over too soon to be asked";
    EXPECT_EQ(Runs().size(), static_cast<std::size_t>(kBatches * kFiles));
    EXPECT_THAT(Durations(), Each(StartsWith(L"00:00:")));
}

}  // namespace
