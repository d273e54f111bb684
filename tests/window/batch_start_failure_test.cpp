// A converter that cannot be started: the message, the duration up to its end, and a batch that ends as if it
// had gone well.
#include "tests/window/batch_fixture.h"
#include "tests/window/scripted_shell.h"

namespace {

using testing::ElementsAre;
using testing::SizeIs;

class BatchStartFailureTest : public BatchFixture {
protected:
    static constexpr char kFailed[] = "Erreur CreateProcess :  erreur 2";

    ScriptedShell shell;  // describes errors
};

TEST_F(BatchStartFailureTest, ShowsTheSystemsTextAndThenThatTheBatchIsFinished) {
    Convert(1, {{.startError = ERROR_FILE_NOT_FOUND}, {.durationMs = 4'000}});
    EXPECT_THAT(calls.Calls(), ElementsAre(MessageBoxCall(kFailed, "0x10"),
                                           MessageBoxCall("Conversion terminée !", "0x40")));
    RunBatch();  // as usual
    EXPECT_EQ(Cell(0, 1), L"00:00:04");
}

TEST_F(BatchStartFailureTest, TheDurationLastsUntilTheMessageIsClosed) {
    worker.At("MessageBoxW Erreur CreateProcess", 1, [&] { converters.tick += 65'000; });
    Convert(1, {{.startError = ERROR_FILE_NOT_FOUND}});
    EXPECT_EQ(Cell(0, 1), L"00:01:05");
}

TEST_F(BatchStartFailureTest, TheFilesAfterItAreNotConverted) {
    Convert(3, {{.durationMs = 5'000}, {.startError = ERROR_ACCESS_DENIED}});
    EXPECT_THAT(Column(1), ElementsAre(L"00:00:05", L"00:00:00", L""));
    EXPECT_THAT(converters.Starts(), SizeIs(2));
    EXPECT_THAT(MessageTexts(), ElementsAre("Erreur CreateProcess :  erreur 5", "Conversion terminée !"));
}

TEST_F(BatchStartFailureTest, TheBatchCountsAsRunningUntilItsEnd) {
    Check(IDC_SHUT_DOWN);
    std::vector<bool> running;
    const auto look = [&] { running.push_back(dialog->IsRunning()); };
    worker.At("MessageBoxW Erreur CreateProcess", 1, look);
    worker.At("DialogBoxParamW 101", 1, look);
    worker.At("MessageBoxW Conversion", 1, look);
    Convert(1, {{.startError = ERROR_FILE_NOT_FOUND}});
    EXPECT_THAT(running, ElementsAre(true, true, true));
    ExpectIdle();
}

// Memory that is freed leaves another error behind, as any call may.
TEST_F(BatchStartFailureTest, TheErrorIsTheOneThatTheFailedStartLeft) {
    const auto free = REPLACE_IMPORT(free, [](auto original, void* block) {
        original(block);
        ::SetLastError(ERROR_INVALID_ADDRESS);
    });
    Convert(1, {{.startError = ERROR_FILE_NOT_FOUND}});
    EXPECT_THAT(MessageTexts(), ElementsAre(kFailed, "Conversion terminée !"));
}

}  // namespace
