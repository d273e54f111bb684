// The end of the window while a worker still waits for its converter.
#include "tests/window/batch_fixture.h"

#include <process.h>

namespace {

using testing::IsEmpty;
using testing::SizeIs;

class BatchQuitTest : public BatchFixture {
protected:
    void StartHeld() {
        Check(IDC_SHUT_DOWN);
        ConvertUntilHeld(2, {{.durationMs = 1'000, .held = true}});
    }
};

TEST_F(BatchQuitTest, AfterAStopTheSecondPressQuitsAndTheWorkerEndsWithoutItsWindow) {
    StartHeld();
    PressStop();
    PressStop();
    EXPECT_EQ(dialog->Handle(), nullptr);
    EXPECT_EQ(TakeQuitMessage(), 2);
    EXPECT_TRUE(dialog->HasWorker());
    Finish(1);
    EXPECT_THAT(converters.Starts(), SizeIs(1));
    EXPECT_EQ(worker.Count("DialogBoxParamW"), 0);
    EXPECT_EQ(worker.Count("MessageBoxW"), 0);
    EXPECT_EQ(worker.Count("CloseHandle"), 2);
}

TEST_F(BatchQuitTest, AWorkerNeitherFindsTheWindowThatIsBeingDestroyedNorWaitsForItsThread) {
    StartHeld();
    PressStop();
    const HWND main = Dialog();
    HWND found = main;
    const auto destroy = REPLACE_IMPORT(DestroyWindow, [&](auto original, HWND window) {
        if (window == main) found = dialog->Handle();
        return original(window);
    });
    PressStop();
    EXPECT_EQ(found, nullptr);
    converters.Release(1);
    EXPECT_TRUE(WaitUnserved([&] { return !dialog->HasWorker(); }));
    WaitForEnd();
    EXPECT_EQ(TakeQuitMessage(), 2);
}

TEST_F(BatchQuitTest, AWorkerWhoseWindowWasTakenAwayEndsToo) {
    StartHeld();
    ::DestroyWindow(Dialog());
    EXPECT_TRUE(dialog->HasWorker());
    Finish(1);
    EXPECT_THAT(converters.Starts(), SizeIs(1));
    EXPECT_EQ(worker.Count("CloseHandle"), 2);
    EXPECT_FALSE(dialog->IsRunning());
}

TEST_F(BatchQuitTest, NothingIsAskedBeforeTheWorkerRuns) {
    void (*entry)(void*) = nullptr;  // of the worker's thread, which does not run before it is let go
    Replaced begin = REPLACE_IMPORT(_beginthread, [&](void (*procedure)(void*), unsigned, void*) {
        entry = procedure;
        return std::uintptr_t{1};  // a handle, as far as anyone may know
    });
    AddFiles(1);
    PressConvert();
    ASSERT_NE(entry, nullptr);
    EXPECT_FALSE(dialog->IsRunning());
    Command(IDCANCEL, BN_CLICKED);
    EXPECT_THAT(MessageTexts(), IsEmpty());
    EXPECT_EQ(dialog->Handle(), nullptr);
    EXPECT_EQ(TakeQuitMessage(), 2);
    begin.reset();
    ::_beginthread(entry, 0, dialog.get());
    WaitForEnd();
    EXPECT_THAT(converters.Starts(), IsEmpty());
}

}  // namespace
