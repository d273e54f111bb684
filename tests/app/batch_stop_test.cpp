// Stopping a batch, and leaving while one still winds down.
#include "tests/app/app_fixture.h"

#include <chrono>

#include "tests/equipment/wine.h"
#include "tests/equipment/file_bytes.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class BatchStop : public AppTest {
protected:
    // A batch whose first file lasts as its name says, at the moment its converter runs.
    void StartBatchOf(const std::vector<std::wstring>& paths) {
        Start();
        AddForConversion(paths);
        Window().Tick(id::kHideOutput);
        m_threadsBefore = Process().RuntimeThreads();
        Window().StartBatch();
        ASSERT_TRUE(Comes([&] { return Runs().size() == 1; }));
        ASSERT_GT(Process().RuntimeThreads(), m_threadsBefore) << "the worker is not seen";
    }
    // In place of the interpreter, one that lasts as the name of the PDF says and that no stop ends. Under
    // Wine only.
    void UseStubbornInterpreter() {
        ReplaceInterpreter(Equipment(L"stand_in_interpreter.exe"));
        startOptions.environment[L"TALVENOR_INTERPRETER_IGNORE"] = L"1";
    }
    void Stop() {
        driver::Click(Control(id::kQuit));
        AnswerBox(IDYES);
        ASSERT_TRUE(BecomesIdle());
    }
    [[nodiscard]] int CountInRecord(const std::string& text) const {
        const std::string record = driver::ReadFileBytes(installed.Record());
        int count = 0;
        for (auto at = record.find(text); at != std::string::npos; at = record.find(text, at + 1)) ++count;
        return count;
    }
    // No batch has a thread any more. A worker that still asks for controls while the window closes gets none
    // on Windows; the server of Wine 10 hangs when it asks just then. So whoever quits after a stop waits for
    // this.
    [[nodiscard]] bool WorkersAreGone() const { return Process().RuntimeThreads() <= m_threadsBefore; }
    // The worker is done with its batch when the log button comes back.
    [[nodiscard]] bool WorkerEnds() const {
        return Comes([&] { return driver::IsVisible(Control(id::kOpenLog)) && WorkersAreGone(); });
    }

private:
    int m_threadsBefore = 0;
};

TEST_F(BatchStop, AsksFirstAndGoesOnAfterNo) {
    StartBatchOf({installed.MakePdf(L"a wait800.pdf"), installed.MakePdf(L"b.pdf")});
    driver::Click(Control(id::kQuit));
    const HWND question = WaitForBox();
    EXPECT_EQ(driver::Text(question), L"Talvenor");
    EXPECT_THAT(driver::AllText(question),
                HasSubstr(L"\nUn traitement est en cours.\r\nÊtes-vous sûr de vouloir l'interrompre ?"));
    EXPECT_EQ(::GetWindow(question, GW_OWNER), Window().Window());
    EXPECT_NE(::GetDlgItem(question, IDYES), nullptr);
    EXPECT_EQ(driver::PushButtons(question).size(), 2u);
    AnswerBox(IDNO);
    EXPECT_TRUE(Window().IsRunning());
    EXPECT_FALSE(IsEnabled(id::kConvert));
    CompleteBatch();
    EXPECT_EQ(Runs().size(), 2u);
}

TEST_F(BatchStop, GoesOnConvertingWhileTheQuestionStands) {
    StartBatchOf({installed.MakePdf(L"a wait300.pdf"), installed.MakePdf(L"b.pdf")});
    driver::Click(Control(id::kQuit));
    const HWND question = WaitForBox();
    // Both files are done and the end is told, in front of the question or behind it.
    EXPECT_TRUE(Comes([&] { return driver::Dialogs(Process()).size() == 3; }));
    EXPECT_EQ(Runs().size(), 2u);
    driver::PressDialogButton(question, IDNO);
    ASSERT_TRUE(Comes([&] { return !::IsWindow(question); }));
    CompleteBatch();
}

TEST_F(BatchStop, YesAsksTheInterpreterToCloseAndConvertsNothingMore) {
    if (!UnderWine()) GTEST_SKIP() << "a real Windows keeps its interpreter";
    ReplaceInterpreter(Equipment(L"stand_in_interpreter.exe"));
    startOptions.environment[L"TALVENOR_INTERPRETER_MS"] = L"60000";
    StartBatchOf({installed.MakePdf(L"a.pdf"), installed.MakePdf(L"b.pdf"), installed.MakePdf(L"c.pdf")});
    Stop();
    EXPECT_TRUE(WorkerEnds());
    const auto runs = Runs();
    ASSERT_EQ(runs.size(), 1u);
    EXPECT_EQ(runs[0].closed, L"1");
    EXPECT_EQ(runs[0].ended, 3);
    EXPECT_THAT(Durations(), ElementsAre(L"*** Annulé !", L"", L""));
    EXPECT_EQ(Window().OpenBox(), nullptr) << "a stopped batch ends without a message";
    EXPECT_EQ(Text(id::kStatus), L"");
    EXPECT_EQ(driver::SelectedRow(List()), -1);
    EXPECT_EQ(Window().Quit(), 2u);
}

TEST_F(BatchStop, InterpreterIsStartedAsPromised) {
    if (!UnderWine()) GTEST_SKIP() << "a real Windows keeps its interpreter";
    ReplaceInterpreter(Equipment(L"stand_in_interpreter.exe"));
    const auto a = installed.MakePdf(L"Rapport (1).pdf");
    const auto djvu = installed.PdfFolder() + L"\\Rapport (1).djvu";
    Start();
    AddForConversion({a});
    Convert();
    Window().Tick(id::kHideOutput);
    Convert();
    const auto runs = Runs();
    ASSERT_EQ(runs.size(), 2u);
    const std::wstring line = L"/C \"pdf2djvu.exe -o \"" + djvu + L"\" -v  \"" + a + L"\"\"";
    EXPECT_EQ(runs[0].command, line);
    EXPECT_EQ(runs[1].command, line + L" 2>>TalvenorLog.txt");
    EXPECT_EQ(runs[0].show, L"5");  // SW_SHOW
    EXPECT_EQ(runs[1].show, L"0");  // SW_HIDE
    for (const RecordedRun& run : runs) {
        EXPECT_EQ(run.title, L"Rapport (1).pdf");
        EXPECT_EQ(run.directory, installed.Folder());
    }
}

TEST_F(BatchStop, WindowIsFreeAtOnceWhileTheConverterStillRuns) {
    if (!UnderWine()) GTEST_SKIP() << "a real Windows keeps its interpreter";
    UseStubbornInterpreter();
    StartBatchOf({installed.MakePdf(L"a wait2500.pdf"), installed.MakePdf(L"b.pdf")});
    Stop();
    EXPECT_FALSE(Runs()[0].ended.has_value()) << "the converter had ended before: nothing is shown here";
    EXPECT_EQ(Text(id::kQuit), L"Quitter");
    EXPECT_TRUE(IsEnabled(id::kConvert));
    EXPECT_TRUE(Comes([&] { return Durations()[0] == L"*** Annulé !"; })) << "no tick after the stop";
    EXPECT_TRUE(WorkerEnds());
    EXPECT_THAT(Durations(), ElementsAre(L"*** Annulé !", L""));
    EXPECT_EQ(Runs().size(), 1u);
    EXPECT_EQ(Window().OpenBox(), nullptr);
}

TEST_F(BatchStop, QuitsAtOnceWhileTheStoppedConverterStillRuns) {
    if (!UnderWine()) GTEST_SKIP() << "a real Windows keeps its interpreter";
    UseStubbornInterpreter();
    StartBatchOf({installed.MakePdf(L"a wait60000.pdf")});
    Stop();
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(Window().Quit(), 2u);
    // What anybody would call at once, on a busy machine.
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(3));
}

// The worker is just winding down: the stop has ended its converter.
TEST_F(BatchStop, QuitsRightAfterAStop) {
    StartBatchOf({installed.MakePdf(L"a wait60000.pdf"), installed.MakePdf(L"b.pdf")});
    driver::Click(Control(id::kQuit));
    AnswerBox(IDYES);
    driver::Click(Control(id::kQuit));
    EXPECT_EQ(Process().WaitForExit(kSoon), 2u);
}

TEST_F(BatchStop, NextBatchBesideAStoppedOneDoesNoHarm) {
    if (!UnderWine()) GTEST_SKIP() << "a real Windows keeps its interpreter";
    UseStubbornInterpreter();
    StartBatchOf({installed.MakePdf(L"a wait1500.pdf"), installed.MakePdf(L"b.pdf")});
    Stop();
    driver::Ask(Control(id::kConvert), BM_CLICK);
    // The end of the first may end the second before it comes to a file; a person then presses again.
    const auto begins = [&] {
        if (WorkersAreGone() && !Window().IsRunning()) driver::Ask(Control(id::kConvert), BM_CLICK);
        return Runs().size() >= 2;
    };
    ASSERT_TRUE(Comes(begins)) << "the second batch does not begin";
    // The stop may have ended the first converter before it could say that it has ended.
    constexpr int kWithoutEnd = 1;
    // Which of the two ends the other is open; the window must come to rest and stay usable.
    const auto atRest = [&] {
        if (const HWND box = Window().OpenBox()) driver::PressDialogButton(box, IDOK);
        return CountInRecord("ended=") + kWithoutEnd >= CountInRecord("command=") && !Window().IsRunning() &&
               !Window().OpenBox() && IsEnabled(id::kConvert) && WorkersAreGone();
    };
    EXPECT_TRUE(Comes(atRest));
    EXPECT_EQ(Window().Quit(), 2u);
}

}  // namespace
