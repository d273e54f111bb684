// What else a batch touches: the log and its button.
#include "tests/window/batch_fixture.h"

namespace {

using testing::ElementsAre;

class BatchControlsTest : public BatchFixture {
protected:
    [[nodiscard]] bool LogButtonIsThere() const {
        EXPECT_EQ(IsEnabled(IDC_OPEN_LOG), IsShown(IDC_OPEN_LOG));
        return IsEnabled(IDC_OPEN_LOG);
    }
};

TEST_F(BatchControlsTest, TheLogAndItsButtonAreRemovedBeforeTheFirstFileAndReturnAfterAHiddenBatch) {
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

TEST_F(BatchControlsTest, TheBatchStillRunsWhenTheLogButtonReturns) {
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

TEST_F(BatchControlsTest, ALogThatCannotBeDeletedDoesNotStopTheBatch) {
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
