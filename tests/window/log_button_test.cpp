// The button of the log: when it is there, what it opens, and what a batch does to it and to the log.
#include "tests/window/batch_fixture.h"
#include "tests/window/path_steps.h"
#include "tests/window/scripted_shell.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

using LogButtonTest = MainWindowFixture;

TEST_F(LogButtonTest, IsEnabledAndShownAtTheStartWhenThereIsALog) {
    std::ofstream(folder.Path() / "TalvenorLog.txt") << "earlier";
    EXPECT_THAT(Recorded([&] { Create(); }, {"EnableWindow 1024", "ShowWindow 1024"}),
                ElementsAre("EnableWindow 1024 1", "ShowWindow 1024 5"));
}

TEST_F(LogButtonTest, OpensTheLogByItsOwnProgramAndTakesTheExtensionOffTheProgramsPathBeforeItsName) {
    Create();
    programPath = L"C:\\Talvenor\\Talvenor.exe";
    ScriptedShell shell;
    PathSteps path;
    Command(IDC_OPEN_LOG, BN_CLICKED);
    EXPECT_THAT(path.steps, ElementsAre("PathRemoveExtensionW C:\\Talvenor\\Talvenor.exe",
                                        "PathRemoveFileSpecW C:\\without\\extension"));
    ASSERT_THAT(shell.requests, SizeIs(1));
    ExpectPlainRequest(shell.requests[0], Dialog(), L"C:\\folder\\TalvenorLog.txt", L"(null)");
    EXPECT_THAT(calls.Calls(), IsEmpty());
}

class BatchLogButtonTest : public BatchFixture {
protected:
    [[nodiscard]] bool LogButtonIsThere() const {
        EXPECT_EQ(IsEnabled(IDC_OPEN_LOG), IsShown(IDC_OPEN_LOG));
        return IsEnabled(IDC_OPEN_LOG);
    }
};

TEST_F(BatchLogButtonTest, TheLogAndItsButtonAreRemovedBeforeTheFirstFileAndReturnAfterAHiddenBatch) {
    struct Case {
        const char* name;
        bool hidden;
        Conversion conversion;
        bool stopped;
    };
    for (const Case& row : {Case{"visible", false, {}, false}, Case{"hidden", true, {}, false},
                            Case{"hidden and failed", true, {.exitCode = 1}, false},
                            Case{"hidden and stopped", true, {}, true}}) {
        SCOPED_TRACE(row.name);
        Check(IDC_HIDE_OUTPUT, row.hidden);
        WriteLog("of an earlier batch");
        ::EnableWindow(Control(IDC_OPEN_LOG), TRUE);
        ::ShowWindow(Control(IDC_OPEN_LOG), SW_SHOW);
        worker.At("CreateProcessW", 1, [&] {
            EXPECT_FALSE(LogButtonIsThere());
            EXPECT_FALSE(LogExists());
        });
        if (row.stopped) StopAt("WaitForSingleObject");
        Convert(1, {row.conversion});
        EXPECT_EQ(LogButtonIsThere(), row.hidden);
        EXPECT_EQ(LogExists(), row.hidden) << "only a hidden batch writes a new one";
    }
}

TEST_F(BatchLogButtonTest, TheBatchStillRunsWhenTheLogButtonReturns) {
    AddFiles({L"C:\\in\\a.pdf"});
    Check(IDC_HIDE_OUTPUT);
    bool ran = false;
    const auto show = REPLACE_IMPORT(ShowWindow, [&](auto original, HWND window, int command) {
        if (window == Control(IDC_OPEN_LOG) && command == SW_SHOW) ran = dialog->IsRunning();
        return original(window, command);
    });
    RunBatch();
    EXPECT_TRUE(ran);
}

TEST_F(BatchLogButtonTest, ALogThatCannotBeDeletedDoesNotStopTheBatch) {
    WriteLog("of an earlier batch");
    const HANDLE locked =
        ::CreateFileW(LogFile().c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(locked, INVALID_HANDLE_VALUE);
    Convert(1);
    EXPECT_TRUE(LogExists());
    EXPECT_THAT(Column(1), ElementsAre(L"00:00:00"));
    EXPECT_THAT(MessageTexts(), ElementsAre("Conversion terminée !"));
    ::CloseHandle(locked);
}

}  // namespace
