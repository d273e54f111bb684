// The machine stays awake from a batch's first file to its end.
#include "tests/window/batch_fixture.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kAsked[] = "SetThreadExecutionState 0x80000001";
constexpr char kGivenBack[] = "SetThreadExecutionState 0x80000000";

class BatchAwakeTest : public BatchFixture {
protected:
    BatchAwakeTest() { AddFiles({L"C:\\in\\a.pdf", L"C:\\in\\b.pdf", L"C:\\in\\c.pdf"}); }

    [[nodiscard]] std::vector<std::string> Requests() const { return worker.Of({"SetThreadExecutionState"}); }
};

TEST_F(BatchAwakeTest, IsAskedForOnceBeforeTheFirstFileAndGivenBackAfterTheLast) {
    RunBatch();
    EXPECT_THAT(worker.Of({"SetThreadExecutionState", "LVM_GETITEMTEXTW", "CreateProcessW", "MessageBoxW"}),
                ElementsAre(kAsked, "LVM_GETITEMTEXTW 0,0", "CreateProcessW", "LVM_GETITEMTEXTW 1,0",
                            "CreateProcessW", "LVM_GETITEMTEXTW 2,0", "CreateProcessW", kGivenBack,
                            "MessageBoxW Conversion terminée !"));
}

TEST_F(BatchAwakeTest, ThePersonWhoReadsTheMessageInTheMorningHasAMachineThatSlept) {
    std::vector<std::string> before;
    worker.At("MessageBoxW Conversion terminée !", 1, [&] { before = Requests(); });
    RunBatch();
    EXPECT_THAT(before, ElementsAre(kAsked, kGivenBack));
}

TEST_F(BatchAwakeTest, EndsWithAFailedFile) {
    converters.Plan({{.exitCode = 1}});
    RunBatch();
    EXPECT_THAT(Requests(), ElementsAre(kAsked, kGivenBack));
}

TEST_F(BatchAwakeTest, EndsWithAFailedStart) {
    converters.Plan({{.startError = ERROR_FILE_NOT_FOUND}});
    RunBatch();
    EXPECT_THAT(Requests(), ElementsAre(kAsked, kGivenBack));
}

TEST_F(BatchAwakeTest, EndsWithAStoppedBatch) {
    converters.Plan({{.held = true}});
    PressConvert();
    WaitForConverter(1);
    PressStop();
    converters.Release(1);
    WaitForEnd();
    EXPECT_THAT(Requests(), ElementsAre(kAsked, kGivenBack));
}

TEST_F(BatchAwakeTest, LastsOverTheCountdownAndEndsWhenItIsCancelled) {
    SetChecked(IDC_SHUT_DOWN, true);
    RunBatch();
    EXPECT_THAT(worker.Of({"SetThreadExecutionState", "DialogBoxParamW", "MessageBoxW"}),
                ElementsAre(kAsked, "DialogBoxParamW 101 owner=none", kGivenBack,
                            "MessageBoxW Conversion terminée !"));
}

TEST_F(BatchAwakeTest, IsNotAskedForWhenTheStopComesBeforeTheFirstFile) {
    worker.At("DeleteFileW", 1, [this] { PressStop(); });
    RunBatch();
    EXPECT_THAT(Requests(), IsEmpty());
}

TEST_F(BatchAwakeTest, IsNotAskedForWithoutFiles) {
    ::SendMessageW(Control(IDC_FILE_LIST), LVM_DELETEALLITEMS, 0, 0);
    PressConvert();
    ASSERT_TRUE(WaitFor([&] { return dialog->IsRunning() && !dialog->HasWorker(); }));
    PressStop();
    EXPECT_THAT(Requests(), IsEmpty());
}

TEST_F(BatchAwakeTest, IsNotAskedForWhenTheListIsEmptiedBetweenTheTwoCounts) {
    worker.At("DeleteFileW", 1, [this] { ::SendMessageW(Control(IDC_FILE_LIST), LVM_DELETEALLITEMS, 0, 0); });
    RunBatch();
    EXPECT_THAT(Requests(), IsEmpty());
}

TEST_F(BatchAwakeTest, ARefusalChangesNothing) {
    windows.executionState = 0;
    RunBatch();
    EXPECT_THAT(Column(1), ElementsAre(L"00:00:00", L"00:00:00", L"00:00:00"));
    EXPECT_THAT(Boxes(), ElementsAre("Conversion terminée !"));
}

}  // namespace
