// The machine stays awake from a batch's first file to its end, over the countdown, and is let go at a stop:
// that is in the tests of a batch's calls and of a stop.
#include "tests/window/batch_fixture.h"

namespace {

using testing::ElementsAre;

constexpr char kAsked[] = "SetThreadExecutionState 0x80000001";
constexpr char kReleased[] = "SetThreadExecutionState 0x80000000";

using BatchAwakeTest = BatchFixture;

TEST_F(BatchAwakeTest, IsAskedForOnceBeforeTheFirstFileAndReleasedAfterTheLastBeforeTheMessage) {
    Convert(3);
    const std::string first = "LVM_GETITEMTEXTW 1040 row=0 column=0 size=256";
    EXPECT_THAT(worker.Of({"SetThreadExecutionState", first, "CreateProcessW", "MessageBoxW"}),
                ElementsAre(kAsked, first, "CreateProcessW", "CreateProcessW", "CreateProcessW", kReleased,
                            "MessageBoxW Conversion terminée !"));
}

TEST_F(BatchAwakeTest, EndsWithAFailedFileOrAFailedStart) {
    Convert(2, {{.exitCode = 1}, {.startError = ERROR_FILE_NOT_FOUND}});
    RunBatch();
    EXPECT_THAT(worker.Of({"SetThreadExecutionState"}), ElementsAre(kAsked, kReleased, kAsked, kReleased));
}

TEST_F(BatchAwakeTest, ARefusalChangesNothing) {
    windows.executionState = 0;
    Convert(3);
    EXPECT_THAT(Column(1), ElementsAre(L"00:00:00", L"00:00:00", L"00:00:00"));
    EXPECT_THAT(MessageTexts(), ElementsAre("Conversion terminée !"));
}

}  // namespace
