// What a batch shows from its first file to its last: rows, durations, the status line, the message at its
// end; with a converter that cannot be started, too, and when the user changes an option meanwhile.
#include "tests/window/batch_fixture.h"
#include "tests/window/scripted_shell.h"

#include <tuple>

namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

using BatchCourseTest = BatchFixture;

TEST_F(BatchCourseTest, ThreeGoodFilesGetTheirDurationsAndTheMessage) {
    Convert(3, {{.durationMs = 1'000}, {.durationMs = 62'000}, {.durationMs = 3'723'000}});
    EXPECT_THAT(Column(1), ElementsAre(L"00:00:01", L"00:01:02", L"01:02:03"));
    EXPECT_THAT(calls.Calls(), ElementsAre(MessageBoxCall("Conversion terminée !", "0x40")));
    ExpectIdle();
}

TEST_F(BatchCourseTest, EachFileIsTheSelectedRowAndInTheStatusLineWhileItConverts) {
    AddFiles({L"C:\\in\\a.pdf", L"D:\\Été\\b c.pdf", L"C:\\in\\c.pdf"});
    SelectRow(2);
    std::vector<std::tuple<int, int, int, std::wstring>> seen;
    const auto look = [&] {
        const LRESULT focused = SendList(LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_FOCUSED);
        seen.emplace_back(SelectedRow(), SendList(LVM_GETSELECTEDCOUNT), focused, Text(IDC_STATUS));
    };
    for (int file = 1; file <= 3; ++file) worker.At("CreateProcessW", file, look);
    RunBatch();
    EXPECT_THAT(seen, ElementsAre(std::tuple(0, 1, 0, L"Conversion en cours : C:\\in\\a.pdf"),
                                  std::tuple(1, 1, 1, L"Conversion en cours : D:\\Été\\b c.pdf"),
                                  std::tuple(2, 1, 2, L"Conversion en cours : C:\\in\\c.pdf")));
}

TEST_F(BatchCourseTest, TheWindowIsInItsRunningStateFromTheStartToTheMessage) {
    std::vector<std::tuple<bool, bool, std::wstring>> seen;
    const auto look = [&] { seen.emplace_back(dialog->IsRunning(), IsEnabled(IDOK), Text(IDCANCEL)); };
    for (const char* const call : {"DeleteFileW", "WaitForSingleObject process 1", "MessageBoxW"}) {
        worker.At(call, 1, look);
    }
    Convert(1);
    EXPECT_THAT(seen, SizeIs(3));
    EXPECT_THAT(seen, Each(std::tuple(true, false, L"Arrêter ")));
}

TEST_F(BatchCourseTest, AFailedFileEndsTheBatchWithoutAMessage) {
    Convert(3, {{.durationMs = 5'000}, {.exitCode = 1, .durationMs = 5'000}});
    EXPECT_THAT(Column(1), ElementsAre(L"00:00:05", L"*** Annulé !", L""));
    EXPECT_THAT(converters.Starts(), SizeIs(2));
    EXPECT_EQ(worker.Count("KillTimer main 2"), 2);
    EXPECT_THAT(calls.Calls(), IsEmpty());
    ExpectIdle();
}

TEST_F(BatchCourseTest, TheRowCountIsAskedAgainAfterEachFile) {
    worker.At("WaitForSingleObject process 2", 1, [&] { Drop({L"C:\\in\\c.pdf"}); });
    Convert(2);
    EXPECT_THAT(converters.Starts(), SizeIs(3));
    EXPECT_THAT(Column(1), ElementsAre(L"00:00:00", L"00:00:00", L"00:00:00"));
}

TEST_F(BatchCourseTest, OnlyAnExitCodeOfZeroIsSuccess) {
    constexpr DWORD kCommandNotFound = 9009;
    for (const DWORD exitCode :
         {DWORD{1}, DWORD{STILL_ACTIVE}, kCommandNotFound, DWORD{STATUS_ACCESS_VIOLATION},
          DWORD{STATUS_CONTROL_C_EXIT}, 0xFFFFFFFFul}) {
        Convert(2, {{.exitCode = exitCode}});
        EXPECT_THAT(Column(1), ElementsAre(L"*** Annulé !", L"")) << exitCode;
    }
    EXPECT_THAT(calls.Calls(), IsEmpty());
}

// The message, the duration up to its end, and a batch that ends as if it had gone well.
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

// Nothing of the window is kept for the length of a batch: each control is read when its value is needed.
using BatchFreshReadsTest = BatchFixture;

// A batch of one file reads the check box of hidden output three times: when the row begins, for the
// interpreter's arguments and its window; when the converter has ended; and at the end.
TEST_F(BatchFreshReadsTest, EachReaderOfTheHiddenOutputSeesItsCheckBoxAsItIsThen) {
    static constexpr struct {
        const char* name;
        bool row;
        bool record;
        bool button;
    } kReads[] = {{"row only", true, false, false},
                  {"record only", false, true, false},
                  {"button only", false, false, true}};
    for (const auto& reads : kReads) {
        SCOPED_TRACE(reads.name);
        worker.At("SetWindowTextW 1004", 1, [&] { Check(IDC_HIDE_OUTPUT, reads.row); });
        worker.At("PathStripPathW", 1, [&] { Check(IDC_HIDE_OUTPUT, !reads.row); });
        worker.At("WaitForSingleObject", 1, [&] { Check(IDC_HIDE_OUTPUT, reads.record); });
        worker.At("MessageBoxW", 1, [&] { Check(IDC_HIDE_OUTPUT, reads.button); });
        Convert(1);
        const Start start = converters.Starts().back();
        EXPECT_EQ(start.arguments.ends_with(L" 2>>TalvenorLog.txt"), reads.row);
        EXPECT_EQ(start.startup.wShowWindow, reads.row ? SW_HIDE : SW_SHOW);
        EXPECT_EQ(LogExists(), reads.record);
        EXPECT_EQ(IsShown(IDC_OPEN_LOG), reads.button);
        EXPECT_EQ(IsEnabled(IDC_OPEN_LOG), reads.button);
    }
}

TEST_F(BatchFreshReadsTest, TheShutdownBoxCountsAsItIsAtTheEnd) {
    worker.At("WaitForSingleObject", 1, [&] { Check(IDC_SHUT_DOWN); });
    Convert(1);
    EXPECT_EQ(worker.Count("DialogBoxParamW 101"), 1);
    worker.At("WaitForSingleObject", 1, [&] { Check(IDC_SHUT_DOWN, false); });
    RunBatch();
    EXPECT_EQ(worker.Count("DialogBoxParamW 101"), 1);
}

TEST_F(BatchFreshReadsTest, TheOptionsAreReadForEachFile) {
    Check(IDC_MONOCHROME);
    worker.At("WaitForSingleObject process 1", 1, [&] {
        Check(IDC_MONOCHROME, false);
        SetText(IDC_EXTRA_OPTIONS, L"--fg-colors=web");
    });
    worker.At("WaitForSingleObject process 2", 1, [&] {
        SetText(IDC_EXTRA_OPTIONS, L"");
        Check(IDC_OUTPUT_FOLDER_CHECK);
        SetText(IDC_OUTPUT_FOLDER, L"D:\\Sortie");  // that there is one is asked at the start only
    });
    Convert(3);
    std::vector<std::wstring> arguments;
    for (const Start& start : converters.Starts()) arguments.push_back(start.arguments);
    EXPECT_THAT(
        arguments,
        ElementsAre(L"/C \"pdf2djvu.exe -o \"C:\\in\\a.djvu\" -v  --monochrome \"C:\\in\\a.pdf\"\"",
                    L"/C \"pdf2djvu.exe -o \"C:\\in\\b.djvu\" -v  --fg-colors=web \"C:\\in\\b.pdf\"\"",
                    L"/C \"pdf2djvu.exe -o \"D:\\Sortie\\c.djvu\" -v  \"C:\\in\\c.pdf\"\""));
}

}  // namespace
