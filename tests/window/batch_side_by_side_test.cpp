// A second batch beside an old one that was stopped and still waits for its converter.
#include "tests/window/batch_fixture.h"

namespace {

using testing::SizeIs;
using testing::UnorderedElementsAre;

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

    [[nodiscard]] int ClosedHandlesOf(int number) const {
        return worker.Count("CloseHandle process " + std::to_string(number)) +
               worker.Count("CloseHandle thread " + std::to_string(number));
    }
    // Lets one converter end, then the other, and looks at what the worker of each did with handles.
    void ExpectOwnHandles(int first, int last) {
        converters.Release(first);
        ASSERT_TRUE(WaitFor([&] { return ClosedHandlesOf(first) == 2; }));
        EXPECT_EQ(ClosedHandlesOf(last), 0);
        converters.Release(last);
        WaitForEnd();
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

TEST_F(BatchSideBySideTest, RunsOnAThreadOfItsOwn) {
    ASSERT_THAT(converters.Starts(), SizeIs(2));
    EXPECT_NE(converters.Starts()[0].workerId, converters.Starts()[1].workerId);
    EXPECT_TRUE(dialog->IsRunning());
}

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
    converters.Release(1);
    WaitForEnd();
    EXPECT_FALSE(dialog->IsRunning());
}

}  // namespace
