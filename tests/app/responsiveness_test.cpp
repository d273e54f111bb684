// The window answers at any moment of a batch: people move it, read it and press "Arrêter" while it works.
#include "tests/app/app_fixture.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <thread>

namespace {

using driver::Milliseconds;
using Clock = std::chrono::steady_clock;

// The same batch several times: what the program itself makes a person wait occurs in each of them. What
// the machine does on its own, as in a moment when all its processors are busy, does not.
constexpr int kBatches = 5;
constexpr int kFiles = 20;
constexpr Milliseconds kLongestBatch{120'000};
// By how much the program's longest answer of a batch may exceed the longest of a plain window, which was
// asked in turn with it.
constexpr Milliseconds kLongestOfItsOwn{100};
constexpr Milliseconds kBetweenQuestions{25};

// A window with nothing behind it, on a thread of its own: how late it answers is up to the machine alone.
// What a window of the program is measured against. It draws a text before it answers, as one that shows
// progress does all the time.
class PlainWindow {
public:
    PlainWindow() {
        EXPECT_TRUE(driver::WaitUntil([&] { return m_window.load() != nullptr; }));
    }
    ~PlainWindow() {
        ::PostMessageW(m_window, WM_CLOSE, 0, 0);
        m_thread.join();
    }

    [[nodiscard]] HWND Window() const { return m_window; }

private:
    void Serve() {
        const HWND window = ::CreateWindowExW(0, L"Static", L"", WS_POPUP | WS_VISIBLE, 0, 0, 200, 100,
                                              nullptr, nullptr, nullptr, nullptr);
        m_window = window;
        MSG message;
        while (::IsWindow(window) && ::GetMessageW(&message, nullptr, 0, 0) > 0) ::DispatchMessageW(&message);
    }

    std::atomic<HWND> m_window{nullptr};
    std::thread m_thread{[this] { Serve(); }};
};

class Responsiveness : public AppTest {
protected:
    // Starts a batch and asks both windows in turn, from the first moment on, until its message is there.
    // Returns by how much the program's longest answer exceeds the plain window's.
    [[nodiscard]] Milliseconds AskThroughoutABatch() {
        Milliseconds longest{0};
        Milliseconds longestOfPlain{0};
        const auto deadline = Clock::now() + kLongestBatch;
        driver::Click(Control(IDOK));
        while (!Window().OpenDialog()) {
            if (Clock::now() > deadline) throw driver::Failure("the batch does not end");
            longest = std::max(longest, TimeOf([&] { driver::Ask(Window().Window(), WM_NULL); }));
            longestOfPlain =
                std::max(longestOfPlain,
                         TimeOf([&] { driver::SetText(m_plain.Window(), std::to_wstring(questions)); }));
            ++questions;
        }
        std::printf("longest answer: %d ms, of a plain window %d ms\n", static_cast<int>(longest.count()),
                    static_cast<int>(longestOfPlain.count()));
        return longest - longestOfPlain;
    }

    int questions = 0;

private:
    [[nodiscard]] static Milliseconds TimeOf(auto&& question) {
        const auto asked = Clock::now();
        question();
        const auto took = Clock::now() - asked;
        // The pace of the questions, as a person's hand would ask them; nothing is waited for here.
        std::this_thread::sleep_for(kBetweenQuestions);
        return std::chrono::duration_cast<Milliseconds>(took);
    }

    const PlainWindow m_plain;
};

TEST_F(Responsiveness, WindowAnswersAtMost100MillisecondsLaterThanAPlainOneInABatch) {
    // Each takes so long that there is time for a question even where processes start at once.
    std::vector<std::wstring> paths;
    for (int i = 0; i < kFiles; ++i)
        paths.push_back(installed.MakePdf(L"Document " + std::to_wstring(i) + L" wait60.pdf"));
    StartWith(paths);
    Window().Check(IDC_HIDE_OUTPUT);
    auto shortest = Milliseconds::max();
    for (int i = 0; i < kBatches; ++i) {
        shortest = std::min(shortest, AskThroughoutABatch());
        CompleteBatch();
    }
    EXPECT_LE(shortest, kLongestOfItsOwn) << "in every batch";
    EXPECT_GE(questions, kBatches * kFiles) << "the batches were over too soon to be asked";
    EXPECT_EQ(Runs().size(), static_cast<std::size_t>(kBatches * kFiles));
    EXPECT_THAT(Durations(), testing::Each(testing::StartsWith(L"00:00:")));
}

}  // namespace
