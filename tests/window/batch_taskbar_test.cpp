// The batch in the taskbar's button: rows done of rows, nothing before and after, gone at once at a stop.
#include "tests/window/batch_fixture.h"

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

constexpr char kHidden[] = "SetProgressState 0";

class BatchTaskbarTest : public BatchFixture {
protected:
    BatchTaskbarTest() { taskbar.button = Dialog(); }

    // What the taskbar was asked for since the last time, when all that the workers have posted is served.
    std::vector<std::string> Calls() {
        PumpPending();
        const std::vector<std::string> asked = taskbar.calls.Calls();
        taskbar.calls.Clear();
        return asked;
    }
    // The same without how the connection was made.
    std::vector<std::string> Shown() { return Only({"SetProgress"}, Calls()); }
    // For a worker: waits until the taskbar has been asked for this. False when that does not come.
    [[nodiscard]] bool IsShown(const std::string& call) const {
        return WaitUnserved([&] { return !Only({call}, taskbar.calls.Calls()).empty(); });
    }
};

// Windows of this process that are neither shown nor listed anywhere, of the kind that receives messages of
// workers.
std::vector<HWND> MessageOnlyWindows() {
    std::vector<HWND> windows;
    for (HWND window = nullptr; (window = ::FindWindowExW(HWND_MESSAGE, window, L"Static", nullptr));) {
        DWORD process = 0;
        ::GetWindowThreadProcessId(window, &process);
        if (process == ::GetCurrentProcessId()) windows.push_back(window);
    }
    return windows;
}

TEST_F(BatchTaskbarTest, ShowsRowsDoneOfRows) {
    Convert(2);
    EXPECT_THAT(Calls(), ElementsAre("CoCreateInstance taskbar", "HrInit", "SetProgressValue 0/2",
                                     "SetProgressValue 1/2", "SetProgressValue 2/2", kHidden));
}

TEST_F(BatchTaskbarTest, IsFullAtTheEndOfAListThatHasBecomeShorter) {
    AddFiles({L"C:\\in\\a.pdf", L"C:\\in\\b.pdf", L"C:\\in\\c.pdf"});
    worker.At("WaitForSingleObject", 2, [&] {
        SendList(LVM_DELETEITEM, 2);
        SendList(LVM_DELETEITEM, 1);
    });
    RunBatch();
    EXPECT_THAT(Shown(),
                ElementsAre("SetProgressValue 0/3", "SetProgressValue 1/3", "SetProgressValue 1/1", kHidden));
}

TEST_F(BatchTaskbarTest, IsLoadedWithTheFirstBatchAndOnce) {
    AddFiles(1);
    EXPECT_THAT(Calls(), IsEmpty());
    RunBatch();
    Calls();
    RunBatch();
    EXPECT_THAT(Calls(), ElementsAre("SetProgressValue 0/1", "SetProgressValue 1/1", kHidden));
    Destroy();
    EXPECT_THAT(taskbar.calls.Calls(), Contains("Release"));
    Create();
}

// The message box waits for a person, who sees the button meanwhile.
TEST_F(BatchTaskbarTest, IsGoneBeforeTheMessageOfTheEnd) {
    bool isGone = false;
    worker.At("MessageBoxW Conversion terminée !", 1, [&] { isGone = IsShown(kHidden); });
    Convert(1);
    EXPECT_TRUE(isGone);
}

TEST_F(BatchTaskbarTest, IsGoneAfterAFailedFileOrStart) {
    Convert(3, {{}, {.exitCode = 1}, {.startError = ERROR_FILE_NOT_FOUND}});
    EXPECT_THAT(Shown(), ElementsAre("SetProgressValue 0/3", "SetProgressValue 1/3", kHidden));
    RunBatch();
    EXPECT_THAT(Shown(), ElementsAre("SetProgressValue 0/3", kHidden));
}

TEST_F(BatchTaskbarTest, IsGoneAtOnceAtAConfirmedStopAndTheOldWorkerDoesNotBringItBack) {
    ConvertUntilHeld(2, {{.held = true}});
    ASSERT_THAT(Shown(), ElementsAre("SetProgressValue 0/2"));
    PressStop();
    EXPECT_THAT(taskbar.calls.Calls(), ElementsAre(kHidden)) << "at once: with the stop itself";
    EXPECT_TRUE(dialog->HasWorker());
    Finish(1);
    EXPECT_THAT(Shown(), ElementsAre(kHidden));
}

TEST_F(BatchTaskbarTest, ReportsThatWereUnderWayAtTheStopAreNotShown) {
    worker.At("WaitForSingleObject process 1", 1, [&] { EXPECT_TRUE(IsShown("SetProgressValue 0/2")); });
    StopAt("LVM_SETITEMSTATE 1040 row=1");  // between the second report and the loop's test
    Convert(2);
    const auto shown = Shown();
    ASSERT_THAT(shown, Contains(kHidden));
    EXPECT_EQ(shown.back(), kHidden);
    EXPECT_THAT(shown, Not(Contains("SetProgressValue 2/2")));
}

TEST_F(BatchTaskbarTest, AnOldWorkerDoesNotTouchWhatANewerBatchShows) {
    ConvertUntilHeld(2, {{.held = true}, {}, {.held = true}});
    PressStop();
    PressConvert();
    WaitForConverter(3);
    Shown();
    converters.Release(1);
    ASSERT_TRUE(WaitFor([&] { return worker.Count("SetCursor previous") == 1; }));
    EXPECT_THAT(Shown(), IsEmpty()) << "the newer batch has one of two, and goes on showing it";
    Finish(3);
}

// As two presses of "Convertir" give, the second before the first worker has disabled the button.
TEST_F(BatchTaskbarTest, OfTwoBatchesAtOnceTheNewerIsShown) {
    TaskbarProgress progress;
    progress.Prepare(Dialog());
    const unsigned older = progress.BeginBatch();
    const unsigned newer = progress.BeginBatch();
    progress.Report(older, 0, 3);
    progress.Report(newer, 1, 4);
    progress.Report(older, 3, 3);
    progress.EndBatch(older);
    EXPECT_THAT(Shown(), ElementsAre("SetProgressValue 0/3", "SetProgressValue 1/4"));
}

TEST_F(BatchTaskbarTest, TwoWindowsThatNobodySeesReceiveMessagesOfWorkersAsLongAsTheDialogLives) {
    EXPECT_THAT(MessageOnlyWindows(), IsEmpty());
    Convert(1);
    RunBatch();
    ASSERT_THAT(MessageOnlyWindows(), SizeIs(2)) << "for reports, and for a row's steps";
    Calls();
    for (const HWND receiver : MessageOnlyWindows()) {  // ordinary ones for all else
        ::SendMessageW(receiver, WM_USER + 77, 3, 1);   // as a report of a third batch
        ::SetWindowTextW(receiver, L"text");
        EXPECT_EQ(::SendMessageW(receiver, WM_GETTEXTLENGTH, 0, 0), 4);
    }
    EXPECT_THAT(Calls(), IsEmpty());
    Destroy();
    EXPECT_THAT(MessageOnlyWindows(), IsEmpty());
    Create();
}

TEST_F(BatchTaskbarTest, ABatchThatIsRefusedPreparesNothing) {
    AddFiles(1);
    Check(IDC_OUTPUT_FOLDER_CHECK);
    PressConvert();
    EXPECT_THAT(MessageTexts(), ElementsAre("Le dossier de destination est incorrect !"));
    EXPECT_THAT(MessageOnlyWindows(), IsEmpty());
}

TEST_F(BatchTaskbarTest, AMissingTaskbarIsAskedForOnceAndNotMissed) {
    taskbar.creation = REGDB_E_CLASSNOTREG;
    Convert(1);
    RunBatch();
    EXPECT_THAT(Calls(), ElementsAre("CoCreateInstance taskbar"));
    EXPECT_THAT(MessageTexts(), ElementsAre("Conversion terminée !", "Conversion terminée !"));
}

TEST_F(BatchTaskbarTest, ATaskbarThatCannotBeginIsReleased) {
    taskbar.initialisation = E_FAIL;
    Convert(1);
    EXPECT_THAT(Calls(), ElementsAre("CoCreateInstance taskbar", "HrInit", "Release"));
}

TEST_F(BatchTaskbarTest, ATaskbarThatRefusesEverythingIsNotNoticed) {
    taskbar.showing = E_FAIL;
    Convert(1);
    EXPECT_THAT(Shown(), ElementsAre("SetProgressValue 0/1", "SetProgressValue 1/1", kHidden));
    EXPECT_THAT(MessageTexts(), ElementsAre("Conversion terminée !"));
}

}  // namespace
