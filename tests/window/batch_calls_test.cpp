// The steps of a batch on its worker thread: every call, with its arguments, in its order.
#include "tests/window/batch_fixture.h"
#include "tests/window/scripted_shell.h"

namespace {

using testing::ElementsAre;
using testing::UnorderedElementsAre;

constexpr char kRowCount[] = "LVM_GETITEMCOUNT 1040 0 0";

using BatchCallsTest = BatchFixture;

TEST_F(BatchCallsTest, AConverterInItsOwnWindow) {
    Convert(1, {{.durationMs = 7'000}});
    EXPECT_THAT(
        worker.Between("PathStripPathW", kRowCount),
        ElementsAre("PathStripPathW C:\\in\\a.pdf",
                    "SHGetFolderPathW owner=none folder=0x25 token=none flags=1", "GetTickCount",
                    "SetTimer main 2 1000", "CreateProcessW", "AssignProcessToJobObject process 1",
                    "WaitForSingleObject process 1 INFINITE", "GetExitCodeProcess process 1", "GetTickCount",
                    "KillTimer main 2", "IsDlgButtonChecked 1019", "LVM_GETNEXTITEM 1040 -1 2",
                    "LVM_SETITEMW 1040 row=0 column=1 mask=1 \"00:00:07\"", "CloseHandle process 1",
                    "CloseHandle thread 1", kRowCount));
}

TEST_F(BatchCallsTest, AConverterThatCannotBeStarted) {
    const ScriptedShell shell;  // describes errors
    Convert(1, {{.startError = ERROR_FILE_NOT_FOUND}});
    EXPECT_THAT(
        worker.Between("SHGetFolderPathW", "IsDlgButtonChecked 1038"),
        ElementsAre("SHGetFolderPathW owner=none folder=0x25 token=none flags=1", "GetTickCount",
                    "SetTimer main 2 1000", "CreateProcessW", "MessageBoxW Erreur CreateProcess :  erreur 2",
                    "GetTickCount", "KillTimer main 2", "IsDlgButtonChecked 1019",
                    "LVM_GETNEXTITEM 1040 -1 2", "LVM_SETITEMW 1040 row=0 column=1 mask=1 \"00:00:00\"",
                    "IsDlgButtonChecked 1038"));
}

TEST_F(BatchCallsTest, FromTheRunningStateToTheFirstFile) {
    Convert(1);
    std::vector<std::string> steps = worker.Between("SetWindowTextW 2 \"Arrêter \"", "SetWindowTextW 1004");
    // How wide the columns become is the system's business; that they are fitted is not.
    const auto isWidth = [](const std::string& step) {
        return step.starts_with("LVM_SETCOLUMNWIDTH") && step != "LVM_SETCOLUMNWIDTH 1040 1 -2";
    };
    EXPECT_GE(std::erase_if(steps, isWidth), 1u);
    EXPECT_THAT(steps, ElementsAre("SetWindowTextW 2 \"Arrêter \"", kRowCount,
                                   "LVM_SETITEMW 1040 row=0 column=1 mask=1 \"\"", kRowCount, kRowCount,
                                   "EnableWindow 1024 0", "ShowWindow 1024 0",
                                   "DeleteFileW " + Utf8(LogFile()), "LVM_SETCOLUMNWIDTH 1040 1 -2",
                                   "LVM_GETCOLUMNWIDTH 1040 1 0", "UpdateWindow 1040", "LoadCursorW 32650",
                                   "SetCursor busy", kRowCount, "SetThreadExecutionState 0x80000001",
                                   "LVM_GETITEMTEXTW 1040 row=0 column=0 size=256",
                                   "LVM_SETITEMSTATE 1040 row=0 state=3 mask=3",
                                   "LVM_SETSELECTIONMARK 1040 0 0", "LVM_ENSUREVISIBLE 1040 0 0",
                                   "SetWindowTextW 1004 \"Conversion en cours : C:\\in\\a.pdf\""));
}

TEST_F(BatchCallsTest, TheOptionsCheckBoxesAreReadForEachFileAndTheHiddenOutputAfterThem) {
    Check(IDC_NO_TEXT);
    Convert(1);
    std::vector<std::string> reads = worker.Between("SetWindowTextW 1004", "PathStripPathW");
    ASSERT_GE(reads.size(), 3u);
    reads.erase(reads.begin());
    reads.pop_back();
    // 1016 is not read: leaving the text out settles it.
    EXPECT_THAT(reads, UnorderedElementsAre(
                           "IsDlgButtonChecked 1034", "IsDlgButtonChecked 1033", "IsDlgButtonChecked 1017",
                           "IsDlgButtonChecked 1036", "IsDlgButtonChecked 1037", "IsDlgButtonChecked 1015",
                           "IsDlgButtonChecked 1030", "IsDlgButtonChecked 1026", "IsDlgButtonChecked 1019"));
    EXPECT_EQ(reads.back(), "IsDlgButtonChecked 1019");
}

TEST_F(BatchCallsTest, FromTheLastFileToTheIdleState) {
    Check(IDC_HIDE_OUTPUT);
    Check(IDC_SHUT_DOWN);
    Convert(1);
    EXPECT_THAT(
        worker.Between("IsDlgButtonChecked 1038", "EnableWindow 1 1"),
        ElementsAre("IsDlgButtonChecked 1038", "GetActiveWindow", "DialogBoxParamW 101 owner=none",
                    "SetThreadExecutionState 0x80000000", "LVM_SETITEMSTATE 1040 row=-1 state=0 mask=2",
                    "MessageBoxW Conversion terminée !", "SetWindowTextW 1004 \"\"",
                    "IsDlgButtonChecked 1019", "EnableWindow 1024 1", "ShowWindow 1024 5",
                    "EnableWindow 1 1"));
    EXPECT_THAT(worker.Between("SetWindowTextW 2 \"Quitter\"", "SetCursor"),
                ElementsAre("SetWindowTextW 2 \"Quitter\"", "SetCursor previous"));
    EXPECT_EQ(worker.All().back(), "SetCursor previous");
}

// When the machine is kept awake is in the calls above, and what a stop does about it in the tests of a stop.
using BatchAwakeTest = BatchFixture;

TEST_F(BatchAwakeTest, EndsWithAFailedFileOrAFailedStart) {
    Convert(2, {{.exitCode = 1}, {.startError = ERROR_FILE_NOT_FOUND}});
    RunBatch();
    constexpr char kAsked[] = "SetThreadExecutionState 0x80000001";
    constexpr char kReleased[] = "SetThreadExecutionState 0x80000000";
    EXPECT_THAT(worker.Of({"SetThreadExecutionState"}), ElementsAre(kAsked, kReleased, kAsked, kReleased));
}

TEST_F(BatchAwakeTest, ARefusalChangesNothing) {
    windows.executionState = 0;
    Convert(3);
    EXPECT_THAT(Column(1), ElementsAre(L"00:00:00", L"00:00:00", L"00:00:00"));
    EXPECT_THAT(MessageTexts(), ElementsAre("Conversion terminée !"));
}

}  // namespace
