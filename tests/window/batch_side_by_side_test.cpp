// A second batch beside an old one that was stopped and still waits for its converter.
#include "tests/window/batch_fixture.h"

namespace {

using testing::UnorderedElementsAre;

class BatchSideBySideTest : public BatchFixture {
protected:
    BatchSideBySideTest() {
        ConvertUntilHeld(1, {{.exitCode = 1, .held = true}, {.held = true}});
        PressStop();
        PressConvert();
        WaitForConverter(2);
    }

    [[nodiscard]] int ClosedHandlesOf(int number) const {
        return worker.Count("CloseHandle process " + std::to_string(number)) +
               worker.Count("CloseHandle thread " + std::to_string(number));
    }
    // Lets one converter end, then the other, and looks at what the worker of each did with handles.
    void ExpectOwnHandles(int first, int last) {
        converters.Release(first);
        ASSERT_TRUE(WaitFor([&] { return ClosedHandlesOf(first) == 2; }));
        EXPECT_EQ(ClosedHandlesOf(last), 0);
        Finish(last);
        for (const int number : {1, 2}) {
            const std::string name = std::to_string(number);
            EXPECT_THAT(worker.OfWorker(converters.Starts().at(static_cast<std::size_t>(number) - 1).workerId,
                                        {"WaitForSingleObject", "GetExitCodeProcess", "CloseHandle"}),
                        UnorderedElementsAre("WaitForSingleObject process " + name + " INFINITE",
                                             "GetExitCodeProcess process " + name,
                                             "CloseHandle process " + name, "CloseHandle thread " + name));
        }
    }
};

TEST_F(BatchSideBySideTest, EachWorkerUsesItsOwnHandlesWhenTheNewOneEndsFirst) {
    ExpectOwnHandles(2, 1);
}

TEST_F(BatchSideBySideTest, EachWorkerUsesItsOwnHandlesWhenTheOldOneEndsFirst) {
    ExpectOwnHandles(1, 2);
}

TEST_F(BatchSideBySideTest, TheOldWorkerCountsUntilItHasEnded) {
    converters.Release(2);
    ASSERT_TRUE(WaitFor([&] { return worker.Count("SetCursor previous") == 1; }));
    EXPECT_TRUE(dialog->HasWorker());
    Finish(1);
    EXPECT_FALSE(dialog->IsRunning());
}

}  // namespace
