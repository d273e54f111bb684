// One copy of the program at a time: the second one ends by itself, unseen.
#include "tests/app/app_fixture.h"

namespace {

using SecondCopy = AppTest;

// The window that it looks for would be restored.
TEST_F(SecondCopy, EndsWith0ShowsNothingAndFindsNoWindowToBringForward) {
    Start();
    ::ShowWindow(Window().Window(), SW_MINIMIZE);
    ASSERT_TRUE(Comes([&] { return ::IsIconic(Window().Window()) != FALSE; }));
    const driver::Program second(installed.Program());
    bool shown = false;
    const auto over = [&] {
        shown = shown || !driver::Dialogs(second).empty();
        return second.HasEnded();
    };
    ASSERT_TRUE(Comes(over)) << "the second copy stays";
    EXPECT_FALSE(shown);
    EXPECT_EQ(second.WaitForExit(), 0u);
    EXPECT_TRUE(::IsIconic(Window().Window()));
    EXPECT_EQ(Window().Quit(), 2u) << "the first copy is not what it was";
}

}  // namespace
