// The countdown at the end of a batch: when it comes, on which thread and for whom.
#include "tests/window/batch_fixture.h"
#include "tests/window/modal_thread.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class BatchCountdownComesTest : public BatchFixture, public testing::WithParamInterface<bool> {};

TEST_P(BatchCountdownComesTest, AfterEveryEndIfItsCheckBoxIsChecked) {
    struct Case {
        const char* name;
        Conversion conversion;
        bool stopped;
    };
    AddFiles({L"C:\\in\\a.pdf", L"C:\\in\\b.pdf"});
    Check(IDC_SHUT_DOWN, GetParam());
    int comes = 0;
    for (const Case& row :
         {Case{"all converted", {}, false}, Case{"one failed", {.exitCode = 1}, false},
          Case{"one not started", {.startError = ERROR_FILE_NOT_FOUND}, false}, Case{"stopped", {}, true}}) {
        converters.Plan({row.conversion});
        if (row.stopped) worker.At("WaitForSingleObject", 1, [&] { PressStop(); });
        RunBatch();
        EXPECT_EQ(worker.Count("DialogBoxParamW 101 owner=none"), GetParam() ? ++comes : 0) << row.name;
    }
    EXPECT_EQ(worker.Count("DialogBoxParamW"), comes);
    EXPECT_THAT(shutdownCalls.Calls(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(CheckBox, BatchCountdownComesTest, testing::Bool(),
                         [](const auto& test) { return test.param ? "Checked" : "Unchecked"; });

class BatchCountdownTest : public BatchFixture {
protected:
    // Runs a batch up to its countdown, and gives the dialog.
    HWND RunToCountdown() {
        windows.realDialogs = true;
        Check(IDC_SHUT_DOWN);
        AddFiles({L"C:\\in\\a.pdf"});
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

TEST_F(BatchCountdownTest, BelongsToTheWindowThatIsActiveOnTheWorker) {
    windows.activeWindow = Control(IDC_FILE_LIST);
    Check(IDC_SHUT_DOWN);
    AddFiles({L"C:\\in\\a.pdf"});
    RunBatch();
    EXPECT_THAT(worker.Of({"GetActiveWindow", "DialogBoxParamW"}),
                ElementsAre("GetActiveWindow", "DialogBoxParamW 101 owner=1040"));
}

TEST_F(BatchCountdownTest, RunsOnTheWorkerAndLeavesTheMainWindowUsable) {
    const HWND countdown = RunToCountdown();
    ASSERT_THAT(converters.Starts(), SizeIs(1));
    EXPECT_EQ(::GetWindowThreadProcessId(countdown, nullptr), converters.Starts()[0].workerId);
    EXPECT_EQ(::GetWindow(countdown, GW_OWNER), nullptr);
    EXPECT_TRUE(::IsWindowEnabled(Dialog()));
    Press(countdown, IDCANCEL);
}

TEST_F(BatchCountdownTest, TheBatchCountsAsRunningUntilItIsAnswered) {
    const HWND countdown = RunToCountdown();
    EXPECT_TRUE(dialog->IsRunning());
    EXPECT_EQ(Text(IDCANCEL), L"Arrêter ");
    EXPECT_FALSE(IsEnabled(IDOK));
    EXPECT_EQ(SelectedRow(), 0);
    EXPECT_THAT(MessageTexts(), IsEmpty());
    Press(countdown, IDCANCEL);
    EXPECT_THAT(MessageTexts(), ElementsAre("Conversion terminée !"));
    EXPECT_EQ(Text(IDCANCEL), L"Quitter");
    EXPECT_THAT(shutdownCalls.Calls(), IsEmpty());
}

TEST_F(BatchCountdownTest, ItsAnswerDoesNotChangeTheEndOfTheBatch) {
    shutdown.accepts = false;
    Press(RunToCountdown(), IDOK);
    EXPECT_THAT(shutdownCalls.Calls(), SizeIs(4));
    EXPECT_THAT(MessageTexts(), ElementsAre("Conversion terminée !"));
    EXPECT_EQ(Text(IDCANCEL), L"Quitter");
    EXPECT_FALSE(dialog->IsRunning());
}

TEST_F(BatchCountdownTest, StartsAtThirtyForEveryBatch) {
    for (int batch = 1; batch <= 2; ++batch) {
        const HWND countdown = RunToCountdown();
        wchar_t seconds[8] = {};
        ::GetDlgItemTextW(countdown, IDC_SECONDS, seconds, ARRAYSIZE(seconds));
        EXPECT_EQ(std::wstring(seconds), L"30");
        ::SendMessageW(countdown, WM_TIMER, 1, 0);
        ::GetDlgItemTextW(countdown, IDC_SECONDS, seconds, ARRAYSIZE(seconds));
        EXPECT_EQ(std::wstring(seconds), L"29");
        Press(countdown, IDCANCEL);
    }
}

}  // namespace
