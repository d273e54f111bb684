// One copy of the program at a time: the second one ends by itself, unseen.
#include "tests/app/app_fixture.h"

#include <chrono>

#include "tests/app/real_input.h"
#include "tests/app/served_window.h"

namespace {

// A window of another program, namely of this one. An edit takes the focus when it is in front.
HWND CreateOtherWindow() {
    return ::CreateWindowExW(0, L"Edit", L"", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 50, 50, 300, 200, nullptr,
                             nullptr, nullptr, nullptr);
}

// Brings a window to the front to stay. On an X display a window that has just been shown gets the focus
// later, by messages: it must have been in front for a while.
bool ComesToStayInFront(HWND window) {
    using std::chrono::steady_clock;
    auto since = steady_clock::now();
    return driver::WaitUntil(
        [&] {
            if (::GetForegroundWindow() != window) {
                input::BringToFront(window);
                since = steady_clock::now();
            }
            return steady_clock::now() - since > std::chrono::milliseconds(500);
        },
        kSoon);
}

class SecondCopy : public AppTest, public testing::WithParamInterface<bool> {};

TEST_P(SecondCopy, EndsWith0ShowsNothingAndBringsNothingForward) {
    const bool isMinimised = GetParam();
    Start();
    if (isMinimised) {
        ::ShowWindow(Window().Window(), SW_MINIMIZE);
        ASSERT_TRUE(Comes([&] { return ::IsIconic(Window().Window()) != FALSE; }));
    }
    // Which window comes forward when one is minimised, and when, is the system's affair: another is put
    // there.
    const ServedWindow other(&CreateOtherWindow);
    const HWND inFront = other.Window();
    ASSERT_TRUE(ComesToStayInFront(inFront));
    const driver::Program second(installed.Program());
    bool shown = false;
    const auto over = [&] {
        shown = shown || !driver::Dialogs(second).empty();
        return second.HasEnded();
    };
    ASSERT_TRUE(Comes(over)) << "the second copy stays";
    EXPECT_FALSE(shown);
    EXPECT_EQ(second.WaitForExit(kSoon), 0u);
    EXPECT_EQ(::GetForegroundWindow(), inFront);
    EXPECT_EQ(::IsIconic(Window().Window()) != FALSE, isMinimised);
    EXPECT_EQ(Window().Quit(), 2u) << "the first copy is not what it was";
}

INSTANTIATE_TEST_SUITE_P(BesideOneThatIs, SecondCopy, testing::Bool(),
                         [](const auto& copy) { return copy.param ? "Minimised" : "Open"; });

}  // namespace
