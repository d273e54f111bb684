// The main window and the message loop: the dialog takes part in it from its set-up to its end.
#include "tests/window/control_calls.h"
#include "tests/window/main_window_fixture.h"

#include <cstring>
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

// A dialog that is still among the filters or the idle handlers would be called in memory that is no dialog
// any more, and the program would crash.
TEST_F(SetUpLoopTest, TheLoopForgetsADialogThatIsGone) {
    struct alignas(CMainDlg) {
        unsigned char bytes[sizeof(CMainDlg)];
    } storage;
    auto* const gone = new (&storage) CMainDlg;
    const HWND window = gone->Create(nullptr);
    ASSERT_NE(window, nullptr);
    ::DestroyWindow(window);
    gone->~CMainDlg();
    std::memset(storage.bytes, 0, sizeof storage.bytes);
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
