// The main window and the message loop: the dialog takes part in it from its set-up to its end.
#include "tests/window/control_calls.h"
#include "tests/window/main_window_fixture.h"

#include <memory>
#include <new>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct DialogMessages {
    static inline std::vector<HWND> askedFor;
    static inline MSG* message = nullptr;
    static inline BOOL answer = FALSE;
    static BOOL WINAPI IsDialogMessage(HWND window, LPMSG asked) {
        askedFor.push_back(window);
        message = asked;
        return answer;
    }
};

class SetUpLoopTest : public MainWindowFixture {
protected:
    SetUpLoopTest() { DialogMessages::askedFor.clear(); }

    MSG m_message = {nullptr, WM_APP, 0, 0, 0, {}};
};

TEST_F(SetUpLoopTest, TheDialogFiltersMessagesByIsDialogMessage) {
    Create();
    const ReplacedImport isDialogMessage("IsDialogMessageW", &DialogMessages::IsDialogMessage);
    for (const BOOL answer : {TRUE, FALSE}) {
        DialogMessages::answer = answer;
        EXPECT_EQ(loop.FilterMessage(m_message), answer != FALSE);
        EXPECT_EQ(DialogMessages::message, &m_message);
    }
    EXPECT_THAT(DialogMessages::askedFor, ElementsAre(Dialog(), Dialog()));
}

TEST_F(SetUpLoopTest, ADestroyedDialogHasLeftTheFilters) {
    Create();
    ::DestroyWindow(Dialog());
    const ReplacedImport isDialogMessage("IsDialogMessageW", &DialogMessages::IsDialogMessage);
    EXPECT_FALSE(loop.FilterMessage(m_message));
    EXPECT_THAT(DialogMessages::askedFor, IsEmpty());
}

// The dialog is in memory that cannot be read any more when the loop goes on: a dialog that is still among
// the filters or the idle handlers would end the test program.
TEST_F(SetUpLoopTest, TheLoopForgetsADestroyedDialog) {
    void* const page = ::VirtualAlloc(nullptr, sizeof(CMainDlg), MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE);
    ASSERT_NE(page, nullptr);
    auto* const destroyed = new (page) CMainDlg;
    const HWND window = destroyed->Create(nullptr);
    ASSERT_NE(window, nullptr);
    ::DestroyWindow(window);
    std::destroy_at(destroyed);
    ASSERT_TRUE(::VirtualFree(page, 0, MEM_RELEASE));
    EXPECT_FALSE(loop.FilterMessage(m_message));
    EXPECT_FALSE(loop.RunIdleHandlers(0));
}

TEST_F(SetUpLoopTest, AnIdlePassChangesNoControl) {
    Create();
    const ControlCalls recorded(calls);
    EXPECT_FALSE(loop.RunIdleHandlers(0));
    EXPECT_FALSE(dialog->HandleIdle());
    EXPECT_THAT(calls.Calls(), IsEmpty());
}

TEST_F(SetUpLoopTest, AThreadWithoutALoopCanHaveTheDialogTheSame) {
    CAppModule::Instance().RemoveMessageLoop();
    Create();
    EXPECT_NE(Dialog(), nullptr);
    ::DestroyWindow(Dialog());
    EXPECT_EQ(Dialog(), nullptr);
}

}  // namespace
