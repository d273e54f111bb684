// The machine stays awake from a batch's first file to its end.
#include "tests/window/batch_fixture.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kAsked[] = "SetThreadExecutionState 0x80000001";
constexpr char kReleased[] = "SetThreadExecutionState 0x80000000";

class BatchAwakeTest : public BatchFixture {
protected:
    BatchAwakeTest() { AddFiles({L"C:\\in\\a.pdf", L"C:\\in\\b.pdf", L"C:\\in\\c.pdf"}); }

    [[nodiscard]] std::vector<std::string> Requests() const { return worker.Of({"SetThreadExecutionState"}); }
};

TEST_F(BatchAwakeTest, IsAskedForOnceBeforeTheFirstFileAndReleasedAfterTheLastBeforeTheMessage) {
    RunBatch();
    EXPECT_THAT(worker.Of({"SetThreadExecutionState", "LVM_GETITEMTEXTW", "CreateProcessW", "MessageBoxW"}),
                ElementsAre(kAsked, "LVM_GETITEMTEXTW 0,0", "CreateProcessW", "LVM_GETITEMTEXTW 1,0",
                            "CreateProcessW", "LVM_GETITEMTEXTW 2,0", "CreateProcessW", kReleased,
                            "MessageBoxW Conversion terminée !"));
}

TEST_F(BatchAwakeTest, EndsWithAFailedFileAFailedStartOrAStop) {
    worker.At("WaitForSingleObject", 2, [this] { PressStop(); });
    for (const Conversion& conversion :
         {Conversion{.exitCode = 1}, Conversion{.startError = ERROR_FILE_NOT_FOUND}, Conversion{}}) {
        converters.Plan({conversion});
        RunBatch();
    }
    EXPECT_FALSE(MessageTexts().empty()) << "there was no stop";
    EXPECT_THAT(Requests(), ElementsAre(kAsked, kReleased, kAsked, kReleased, kAsked, kReleased));
}

TEST_F(BatchAwakeTest, LastsOverTheCountdownAndEndsWhenItIsCancelled) {
    Check(IDC_SHUT_DOWN);
    RunBatch();
    EXPECT_THAT(worker.Of({"SetThreadExecutionState", "DialogBoxParamW", "MessageBoxW"}),
                ElementsAre(kAsked, "DialogBoxParamW 101 owner=none", kReleased,
                            "MessageBoxW Conversion terminée !"));
}

TEST_F(BatchAwakeTest, IsNotAskedForWhenTheStopComesBeforeTheFirstFile) {
    worker.At("DeleteFileW", 1, [this] { PressStop(); });
    RunBatch();
    EXPECT_THAT(Requests(), IsEmpty());
}

TEST_F(BatchAwakeTest, IsNotAskedForWithoutFiles) {
    SendList(LVM_DELETEALLITEMS);
    PressConvert();
    ASSERT_TRUE(WaitFor([&] { return dialog->IsRunning() && !dialog->HasWorker(); }));
    PressStop();
    EXPECT_THAT(Requests(), IsEmpty());
}

TEST_F(BatchAwakeTest, IsNotAskedForWhenTheListIsEmptiedBetweenTheTwoCounts) {
    worker.At("DeleteFileW", 1, [this] { SendList(LVM_DELETEALLITEMS); });
    RunBatch();
    EXPECT_THAT(Requests(), IsEmpty());
}

TEST_F(BatchAwakeTest, ARefusalChangesNothing) {
    windows.executionState = 0;
    RunBatch();
    EXPECT_THAT(Column(1), ElementsAre(L"00:00:00", L"00:00:00", L"00:00:00"));
    EXPECT_THAT(MessageTexts(), ElementsAre("Conversion terminée !"));
}

}  // namespace
