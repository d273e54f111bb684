// The end of the window while a worker still waits for its converter.
#include "tests/window/batch_fixture.h"

namespace {

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

}  // namespace
