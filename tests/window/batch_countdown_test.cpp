// The countdown at the end of a batch: when it comes, on which thread and for whom.
#include "tests/window/batch_fixture.h"
#include "tests/window/modal_dialog.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class BatchCountdownTest : public BatchFixture {
protected:
    // Runs a batch up to its countdown, and gives the dialog.
    HWND RunToCountdown() {
        windows.realDialogs = true;
        Check(IDC_SHUT_DOWN);
        AddFiles(1);
        PressConvert();
        HWND countdown = nullptr;
        EXPECT_TRUE(WaitFor([&] {
            countdown = FindOwnDialog(L"Extinction de l'ordinateur");
            return countdown && ::IsWindowVisible(countdown);
        })) << "no countdown came";
        return countdown;
    }
    void Press(HWND countdown, int button) {
        ::PostMessageW(countdown, WM_COMMAND, MAKEWPARAM(button, BN_CLICKED), 0);
        WaitForEnd();
    }
};

TEST_F(BatchCountdownTest, ComesAfterEveryEndIfItsCheckBoxIsChecked) {
    static const struct {
        const char* name;
        Conversion conversion;
        bool isStopped = false;
    } kEnds[] = {{"all converted", {}},
                 {"one failed", {.exitCode = 1}},
                 {"one not started", {.startError = ERROR_FILE_NOT_FOUND}},
                 {"stopped", {}, true}};
    int comes = 0;
    for (const auto& end : kEnds) {
        for (const bool isChecked : {false, true}) {
            Check(IDC_SHUT_DOWN, isChecked);
            if (end.isStopped) StopAt("WaitForSingleObject");
            Convert(2, {end.conversion});
            if (isChecked) ++comes;
            EXPECT_EQ(worker.Count("DialogBoxParamW 101 owner=none"), comes) << end.name << ' ' << isChecked;
        }
    }
    EXPECT_EQ(worker.Count("DialogBoxParamW"), comes);
    EXPECT_THAT(shutdownCalls.Calls(), IsEmpty());
}

TEST_F(BatchCountdownTest, BelongsToTheWindowThatIsActiveOnTheWorker) {
    windows.activeWindow = Control(IDC_FILE_LIST);
    Check(IDC_SHUT_DOWN);
    Convert(1);
    EXPECT_THAT(worker.Of({"GetActiveWindow", "DialogBoxParamW"}),
                ElementsAre("GetActiveWindow", "DialogBoxParamW 101 owner=1040"));
}

TEST_F(BatchCountdownTest, RunsOnTheWorkerOfABatchThatCountsAsRunningUntilItIsAnswered) {
    const HWND countdown = RunToCountdown();
    ASSERT_THAT(converters.Starts(), SizeIs(1));
    EXPECT_EQ(::GetWindowThreadProcessId(countdown, nullptr), converters.Starts()[0].workerId);
    EXPECT_EQ(::GetWindow(countdown, GW_OWNER), nullptr);
    EXPECT_TRUE(::IsWindowEnabled(Dialog()));
    EXPECT_TRUE(dialog->IsRunning());
    EXPECT_EQ(Text(IDCANCEL), L"Arrêter ");
    EXPECT_FALSE(IsEnabled(IDOK));
    EXPECT_EQ(SelectedRow(), 0);
    EXPECT_THAT(MessageTexts(), IsEmpty());
    Press(countdown, IDCANCEL);
    EXPECT_THAT(MessageTexts(), ElementsAre("Conversion terminée !"));
    ExpectIdle();
    EXPECT_THAT(shutdownCalls.Calls(), IsEmpty());
}

TEST_F(BatchCountdownTest, ItsAnswerDoesNotChangeTheEndOfTheBatch) {
    shutdown.accepts = false;
    Press(RunToCountdown(), IDOK);
    EXPECT_THAT(shutdownCalls.Calls(), SizeIs(4));
    EXPECT_THAT(MessageTexts(), ElementsAre("Conversion terminée !"));
    ExpectIdle();
}

}  // namespace
