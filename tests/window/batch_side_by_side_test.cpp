// A second batch beside an old one that was stopped and still waits for its converter.
#include "tests/window/batch_fixture.h"

namespace {

using testing::ElementsAre;
using testing::SizeIs;
using testing::UnorderedElementsAre;

const std::vector<std::string> kHandleCalls = {"WaitForSingleObject", "GetExitCodeProcess", "CloseHandle"};

class BatchSideBySideTest : public BatchFixture {
protected:
    BatchSideBySideTest() {
        AddFiles({L"C:\\in\\a.pdf"});
        converters.Plan({{.exitCode = 1, .held = true}, {.held = true}});
        PressConvert();
        WaitForConverter(1);
        PressStop();
        PressConvert();
        WaitForConverter(2);
    }

    // What the worker that started converter `number` did with handles.
    [[nodiscard]] std::vector<std::string> HandleCallsOf(int number) const {
        return worker.OfWorker(converters.Starts().at(static_cast<std::size_t>(number) - 1).workerId,
                               kHandleCalls);
    }
};

TEST_F(BatchSideBySideTest, RunsOnAThreadOfItsOwn) {
    ASSERT_THAT(converters.Starts(), SizeIs(2));
    EXPECT_NE(converters.Starts()[0].workerId, converters.Starts()[1].workerId);
    EXPECT_TRUE(dialog->IsRunning());
}

TEST_F(BatchSideBySideTest, EachWorkerUsesItsOwnHandlesWhenTheNewOneEndsFirst) {
    converters.Release(2);
    ASSERT_TRUE(WaitFor([&] {
        return worker.Count("CloseHandle thread 2") == 1 && worker.Count("CloseHandle process 2") == 1;
    }));
    EXPECT_EQ(worker.Count("CloseHandle process 1"), 0);
    EXPECT_EQ(worker.Count("CloseHandle thread 1"), 0);
    converters.Release(1);
    WaitForEnd();
    EXPECT_THAT(HandleCallsOf(1),
                UnorderedElementsAre("WaitForSingleObject process 1 INFINITE", "GetExitCodeProcess process 1",
                                     "CloseHandle process 1", "CloseHandle thread 1"));
    EXPECT_THAT(HandleCallsOf(2),
                UnorderedElementsAre("WaitForSingleObject process 2 INFINITE", "GetExitCodeProcess process 2",
                                     "CloseHandle process 2", "CloseHandle thread 2"));
}

TEST_F(BatchSideBySideTest, EachWorkerUsesItsOwnHandlesWhenTheOldOneEndsFirst) {
    converters.Release(1);
    ASSERT_TRUE(WaitFor([&] {
        return worker.Count("CloseHandle thread 1") == 1 && worker.Count("CloseHandle process 1") == 1;
    }));
    EXPECT_EQ(worker.Count("CloseHandle process 2"), 0);
    EXPECT_EQ(worker.Count("CloseHandle thread 2"), 0);
    converters.Release(2);
    WaitForEnd();
    EXPECT_THAT(HandleCallsOf(1), SizeIs(4));
    EXPECT_THAT(HandleCallsOf(2), SizeIs(4));
}

TEST_F(BatchSideBySideTest, TheOldWorkerCountsUntilItHasEnded) {
    converters.Release(2);
    ASSERT_TRUE(WaitFor([&] { return worker.Count("SetCursor previous") == 1; }));
    EXPECT_TRUE(dialog->HasWorker());
    converters.Release(1);
    WaitForEnd();
    EXPECT_FALSE(dialog->IsRunning());
}

}  // namespace
