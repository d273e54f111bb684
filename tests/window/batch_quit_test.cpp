// The end of the window while a worker still waits for its converter.
#include "tests/window/batch_fixture.h"

#include <process.h>

namespace {

using testing::IsEmpty;
using testing::SizeIs;

class BatchQuitTest : public BatchFixture {
protected:
    void StartHeld() {
        SetChecked(IDC_SHUT_DOWN, true);
        AddFiles({L"C:\\in\\a.pdf", L"C:\\in\\b.pdf"});
        converters.Plan({{.durationMs = 1'000, .held = true}});
        PressConvert();
        WaitForConverter(1);
    }
};

TEST_F(BatchQuitTest, AfterAStopTheSecondPressDestroysTheWindowAndPostsQuit) {
    StartHeld();
    PressStop();
    PressStop();
    EXPECT_EQ(dialog->Handle(), nullptr);
    EXPECT_EQ(TakeQuitMessage(), 2);
    EXPECT_TRUE(dialog->HasWorker());
}

TEST_F(BatchQuitTest, TheStoppedWorkerEndsWithoutItsWindow) {
    StartHeld();
    PressStop();
    PressStop();
    TakeQuitMessage();
    converters.Release(1);
    WaitForEnd();
    EXPECT_THAT(converters.Starts(), SizeIs(1));
    EXPECT_EQ(worker.Count("DialogBoxParamW"), 0);
    EXPECT_EQ(worker.Count("MessageBoxW"), 0);
    EXPECT_EQ(worker.Count("CloseHandle"), 2);
}

TEST_F(BatchQuitTest, AWorkerWhoseWindowWasTakenAwayEndsToo) {
    StartHeld();
    ::DestroyWindow(Dialog());
    EXPECT_TRUE(dialog->HasWorker());
    converters.Release(1);
    WaitForEnd();
    EXPECT_THAT(converters.Starts(), SizeIs(1));
    EXPECT_EQ(worker.Count("CloseHandle"), 2);
    EXPECT_FALSE(dialog->IsRunning());
}

// Has the worker's thread, which does not run before it is let go.
class BatchQuitEarlyTest : public BatchFixture {
protected:
    BatchQuitEarlyTest() { s_entry = nullptr; }

    void LetWorkerGo() {
        m_begin.Original<decltype(::_beginthread)>()(s_entry, 0, dialog.get());
        WaitForEnd();
    }

    static inline void(__cdecl* s_entry)(void*) = nullptr;

private:
    static std::uintptr_t __cdecl Hold(void(__cdecl* entry)(void*), unsigned, void*) {
        s_entry = entry;
        return 1;  // a handle, as far as anyone may know
    }

    ReplacedImport m_begin{"_beginthread", &Hold};
};

TEST_F(BatchQuitEarlyTest, BeforeTheWorkerRunsNothingIsAsked) {
    AddFiles({L"C:\\in\\a.pdf"});
    PressConvert();
    ASSERT_NE(s_entry, nullptr);
    EXPECT_FALSE(dialog->IsRunning());
    Command(IDCANCEL, BN_CLICKED);
    EXPECT_THAT(Boxes(), IsEmpty());
    EXPECT_EQ(dialog->Handle(), nullptr);
    EXPECT_EQ(TakeQuitMessage(), 2);
    LetWorkerGo();
    EXPECT_THAT(converters.Starts(), IsEmpty());
}

}  // namespace
