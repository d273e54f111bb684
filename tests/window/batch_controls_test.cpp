// What else of the window a batch touches: the log and its button, the duration column.
#include "tests/window/batch_fixture.h"

#include <shellapi.h>

#include <utility>

namespace {

using testing::ElementsAre;

class BatchControlsTest : public BatchFixture {
protected:
    // Whether button 1024 is enabled and shown, during the first conversion and after the batch.
    std::vector<std::pair<bool, bool>> LogButtonDuringAndAfter() {
        std::vector<std::pair<bool, bool>> seen;
        const auto look = [&] { seen.emplace_back(IsEnabled(IDC_OPEN_LOG), IsShown(IDC_OPEN_LOG)); };
        worker.At("CreateProcessW", 1, look);
        RunBatch();
        look();
        return seen;
    }
    void ShowLogButton() {
        ::EnableWindow(Control(IDC_OPEN_LOG), TRUE);
        ::ShowWindow(Control(IDC_OPEN_LOG), SW_SHOW);
    }
};

constexpr std::pair kThere{true, true};
constexpr std::pair kAway{false, false};

TEST_F(BatchControlsTest, TheLogButtonIsAwayDuringAHiddenBatchAndThereAfterIt) {
    AddFiles({L"C:\\in\\a.pdf"});
    SetChecked(IDC_HIDE_OUTPUT, true);
    ShowLogButton();
    EXPECT_THAT(LogButtonDuringAndAfter(), ElementsAre(kAway, kThere));
}

TEST_F(BatchControlsTest, TheLogButtonStaysAwayAfterAVisibleBatch) {
    AddFiles({L"C:\\in\\a.pdf"});
    ShowLogButton();
    EXPECT_THAT(LogButtonDuringAndAfter(), ElementsAre(kAway, kAway));
}

TEST_F(BatchControlsTest, TheLogButtonIsThereAfterAHiddenBatchThatFailed) {
    AddFiles({L"C:\\in\\a.pdf"});
    SetChecked(IDC_HIDE_OUTPUT, true);
    converters.Plan({{.exitCode = 1}});
    EXPECT_THAT(LogButtonDuringAndAfter(), ElementsAre(kAway, kThere));
}

TEST_F(BatchControlsTest, TheLogButtonIsThereAfterAHiddenBatchThatWasStopped) {
    AddFiles({L"C:\\in\\a.pdf"});
    SetChecked(IDC_HIDE_OUTPUT, true);
    worker.At("WaitForSingleObject process 1", 1, [&] { PressStop(); });
    EXPECT_THAT(LogButtonDuringAndAfter(), ElementsAre(kAway, kThere));
}

class BatchLogDeletionTest : public BatchControlsTest, public testing::WithParamInterface<bool> {};

TEST_P(BatchLogDeletionTest, TheLogOfAnEarlierBatchIsGoneWhenTheFirstConverterStarts) {
    AddFiles({L"C:\\in\\a.pdf"});
    SetChecked(IDC_HIDE_OUTPUT, GetParam());
    WriteLog("of an earlier batch");
    bool logExists = true;
    worker.At("CreateProcessW", 1, [&] { logExists = LogExists(); });
    RunBatch();
    EXPECT_FALSE(logExists);
    EXPECT_EQ(LogExists(), GetParam()) << "only a hidden batch writes a new one";
}

INSTANTIATE_TEST_SUITE_P(All, BatchLogDeletionTest, testing::Bool(),
                         [](const auto& mode) { return mode.param ? "Hidden" : "Visible"; });

TEST_F(BatchControlsTest, ALogThatCannotBeDeletedDoesNotStopTheBatch) {
    AddFiles({L"C:\\in\\a.pdf"});
    WriteLog("of an earlier batch");
    const HANDLE locked =
        ::CreateFileW(LogFile().c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(locked, INVALID_HANDLE_VALUE);
    RunBatch();
    EXPECT_TRUE(LogExists());
    EXPECT_THAT(Column(1), ElementsAre(L"00:00:00"));
    EXPECT_THAT(Boxes(), ElementsAre("Conversion terminée !"));
    ::CloseHandle(locked);
}

TEST_F(BatchControlsTest, TheDurationColumnIsShownFromTheStartAndStays) {
    AddFiles({L"C:\\in\\a.pdf"});
    ASSERT_EQ(ColumnWidth(1), 0);
    RECT client = {};
    ::GetClientRect(Control(IDC_FILE_LIST), &client);
    int duringTheFirst = 0;
    worker.At("CreateProcessW", 1, [&] { duringTheFirst = ColumnWidth(1); });
    RunBatch();
    EXPECT_GE(duringTheFirst,
              static_cast<int>(::SendMessageW(Control(IDC_FILE_LIST), LVM_GETSTRINGWIDTHW, 0,
                                              reinterpret_cast<LPARAM>(L"Durée de conversion"))));
    EXPECT_EQ(ColumnWidth(1), duringTheFirst);
    EXPECT_EQ(ColumnWidth(0), client.right - duringTheFirst);
}

// The folders that explorer is started with.
class BatchDestinationTest : public BatchControlsTest {
protected:
    BatchDestinationTest() { s_folders.clear(); }

    static inline std::vector<std::wstring> s_folders;

private:
    static BOOL WINAPI Execute(SHELLEXECUTEINFOW* request) {
        s_folders.push_back(request->lpParameters);
        return TRUE;
    }
    ReplacedImport m_execute{"ShellExecuteExW", &Execute};
};

TEST_F(BatchDestinationTest, DuringABatchItIsTheFolderOfTheFileBeingConverted) {
    AddFiles({L"C:\\un\\a.pdf", L"D:\\deux\\b.pdf"});
    worker.At("WaitForSingleObject process 1", 1, [&] { Click(IDC_OPEN_DESTINATION); });
    worker.At("WaitForSingleObject process 2", 1, [&] { Click(IDC_OPEN_DESTINATION); });
    RunBatch();
    EXPECT_THAT(s_folders, ElementsAre(L"C:\\un", L"D:\\deux"));
}

TEST_F(BatchControlsTest, TheDestinationButtonIsEnabledByTheFirstFileAndStays) {
    AddFiles({L"C:\\in\\a.pdf"});
    ASSERT_FALSE(IsEnabled(IDC_OPEN_DESTINATION));
    bool duringTheFirst = false;
    worker.At("CreateProcessW", 1, [&] { duringTheFirst = IsEnabled(IDC_OPEN_DESTINATION); });
    RunBatch();
    EXPECT_TRUE(duringTheFirst);
    EXPECT_TRUE(IsEnabled(IDC_OPEN_DESTINATION));
}

}  // namespace
