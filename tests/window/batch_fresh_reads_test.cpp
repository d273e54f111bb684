// Nothing of the window is kept for the length of a batch: each control is read when its value is needed.
#include "tests/window/batch_fixture.h"

namespace {

using testing::ElementsAre;

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
