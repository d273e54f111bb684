// One copy of the program at a time: the second one ends by itself, unseen.
#include "tests/app/app_fixture.h"

#include "tests/app/real_input.h"

namespace {

class SingleInstance : public AppTest {};

// The window of some other program, which the system has.
HWND WaitForWindowOf(const driver::Program& program) {
    struct Search {
        DWORD process;
        HWND found;
    } search = {program.Id(), nullptr};
    const auto appeared = [&] {
        ::EnumWindows(
            [](HWND window, LPARAM parameter) -> BOOL {
                auto& [process, found] = *reinterpret_cast<Search*>(parameter);
                DWORD owner = 0;
                ::GetWindowThreadProcessId(window, &owner);
                if (owner == process && ::IsWindowVisible(window)) found = window;
                return TRUE;
            },
            reinterpret_cast<LPARAM>(&search));
        return search.found != nullptr;
    };
    EXPECT_TRUE(driver::WaitUntil(appeared, kSoon));
    return search.found;
}

TEST_F(SingleInstance, SecondCopyEndsWith0AndShowsNothing) {
    Start();
    const driver::Program second(installed.Program());
    bool shown = false;
    const auto over = [&] {
        shown = shown || !driver::Dialogs(second).empty();
        return second.HasEnded();
    };
    ASSERT_TRUE(Comes(over)) << "the second copy stays";
    EXPECT_FALSE(shown);
    EXPECT_EQ(second.WaitForExit(kSoon), 0u);
    EXPECT_EQ(Window().Quit(), 2u) << "the first copy is not what it was";
}

TEST_F(SingleInstance, SecondCopyDoesNotBringTheFirstForward) {
    Start();
    const driver::Program other(L"C:\\windows\\notepad.exe");
    const HWND inFront = WaitForWindowOf(other);
    input::BringToFront(inFront);
    const driver::Program second(installed.Program());
    ASSERT_TRUE(Comes([&] { return ::GetForegroundWindow() != inFront || second.HasEnded(); }));
    ASSERT_EQ(second.WaitForExit(kSoon), 0u);
    EXPECT_EQ(::GetForegroundWindow(), inFront);
}

TEST_F(SingleInstance, SecondCopyLeavesAMinimisedFirstCopyMinimised) {
    Start();
    ::ShowWindow(Window().Window(), SW_MINIMIZE);
    ASSERT_TRUE(Comes([&] { return ::IsIconic(Window().Window()) != FALSE; }));
    const HWND inFrontBefore = ::GetForegroundWindow();
    const driver::Program second(installed.Program());
    ASSERT_EQ(second.WaitForExit(kSoon), 0u);
    EXPECT_TRUE(::IsIconic(Window().Window()));
    EXPECT_EQ(::GetForegroundWindow(), inFrontBefore);
}

TEST_F(SingleInstance, SecondCopyEndsAlsoWithoutAConverterBesideIt) {
    Start();
    const InstalledProgram bare(Converter::None);
    const driver::Program second(bare.Program());
    EXPECT_EQ(second.WaitForExit(kSoon), 0u);
}

TEST_F(SingleInstance, StartsAgainAsSoonAsTheFirstCopyHasEnded) {
    Start();
    ASSERT_EQ(Window().Quit(), 2u);
    Start();
    EXPECT_EQ(Window().Quit(), 2u);
}

}  // namespace
