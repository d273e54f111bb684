// Batches that do not reach their end by themselves: a converter that fails, no command interpreter, no
// files.
#include "tests/app/app_fixture.h"

#include "tests/equipment/file_bytes.h"
#include "tests/equipment/wine.h"

namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

class BatchFailure : public AppTest {
protected:
    [[nodiscard]] int StartedRuns() const { return static_cast<int>(Runs().size()); }
};

TEST_F(BatchFailure, FailedFileEndsTheBatchWithoutAMessage) {
    const auto a = installed.MakePdf(L"a.pdf");
    const auto b = installed.MakePdf(L"b exit2.pdf");
    const auto c = installed.MakePdf(L"c.pdf");
    Start();
    AddForConversion({a, b, c});
    Window().StartBatch();
    ASSERT_TRUE(Comes([&] { return !Window().IsRunning(); }));
    EXPECT_EQ(Window().OpenBox(), nullptr);
    EXPECT_EQ(StartedRuns(), 2);
    EXPECT_THAT(Durations(), ElementsAre(StartsWith(L"00:00:0"), L"*** Annulé !", L""));
    EXPECT_EQ(driver::SelectedRow(List()), -1);
    EXPECT_EQ(Text(id::kStatus), L"");
    EXPECT_TRUE(IsEnabled(id::kConvert));
    EXPECT_EQ(Window().Quit(), 2u);
}

TEST_F(BatchFailure, NextBatchAfterAFailedOneConvertsEverything) {
    const auto a = installed.MakePdf(L"a exit1.pdf");
    const auto b = installed.MakePdf(L"b.pdf");
    Start();
    AddForConversion({b, a});
    Window().StartBatch();
    ASSERT_TRUE(BecomesIdle());
    ASSERT_THAT(Durations(), ElementsAre(StartsWith(L"00:00:0"), L"*** Annulé !"));
    // The failed file's row has kept the focus, so a key must move away from it to come back to it.
    driver::PressKey(List(), VK_HOME);
    driver::PressKey(List(), VK_END);
    ASSERT_TRUE(Comes([&] { return driver::SelectedRow(List()) == 1; }));
    driver::PressKey(List(), VK_DELETE);
    ASSERT_TRUE(Comes([&] { return driver::RowCount(List()) == 1; }));
    Convert();
    EXPECT_THAT(Durations(), ElementsAre(StartsWith(L"00:00:0")));
}

TEST_F(BatchFailure, WithoutInterpreterSaysSoAndYetCountsAsDone) {
    if (!UnderWine()) GTEST_SKIP() << "a real Windows keeps its interpreter";
    ReplaceInterpreter(L"");
    Start();
    AddForConversion({installed.MakePdf(L"a.pdf"), installed.MakePdf(L"b.pdf")});
    Window().StartBatch();
    const HWND error = WaitForBox();
    EXPECT_EQ(driver::Text(error), L"Talvenor");
    EXPECT_THAT(driver::AllText(error), HasSubstr(L"\nErreur CreateProcess :  "));
    // Behind the prefix comes the system's own sentence, whose words are not ours.
    const std::wstring text = driver::AllText(error);
    EXPECT_GT(text.size(), text.find(L"Erreur CreateProcess :  ") + 30) << "nothing behind the prefix";
    EXPECT_EQ(::GetWindow(error, GW_OWNER), Window().Window());
    AnswerBox(IDOK);
    CompleteBatch();
    EXPECT_THAT(Durations(), ElementsAre(StartsWith(L"00:00:0"), L""));
}

TEST_F(BatchFailure, EmptyListStaysRunningUntilStopped) {
    driver::WriteFileBytes(installed.Log(), "left by an earlier batch");
    Start();
    AddForConversion({installed.MakePdf(L"a.pdf")});
    Window().Tick(id::kShutdown);
    driver::PressKey(List(), VK_HOME);
    ASSERT_TRUE(Comes([&] { return driver::SelectedRow(List()) == 0; }));
    driver::PressKey(List(), VK_DELETE);
    ASSERT_TRUE(Comes([&] { return driver::RowCount(List()) == 0; }));
    ASSERT_TRUE(IsEnabled(id::kConvert)) << "deleting the last row leaves the button alone";

    driver::Click(Control(id::kConvert));
    ASSERT_TRUE(Comes([&] { return Window().IsRunning(); }));
    // Long enough for anything that would end it: the worker has returned already.
    EXPECT_FALSE(
        Comes([&] { return !Window().IsRunning() || Window().OpenBox(); }, driver::Milliseconds(1500)));
    EXPECT_FALSE(IsEnabled(id::kAdd));
    EXPECT_TRUE(driver::FileExists(installed.Log())) << "there was nothing to begin a log for";

    driver::Click(Control(id::kQuit));
    AnswerBox(IDYES);
    EXPECT_TRUE(BecomesIdle());
    EXPECT_EQ(Text(id::kQuit), L"Quitter");
    EXPECT_TRUE(IsEnabled(id::kConvert));
    EXPECT_EQ(StartedRuns(), 0);
    EXPECT_EQ(Window().Quit(), 2u);
}

}  // namespace
