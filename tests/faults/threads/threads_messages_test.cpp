// Stops that cross a message box or the countdown: these are windows of the worker, and the main window goes
// on.
#include "tests/faults/threads/threads_fixture.h"

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::SizeIs;

// Waits for the message box of this process whose text contains `part`.
HWND WaitForMessageBox(const std::wstring& part) {
    const auto fits = [&](HWND window) {
        return driver::IsVisible(window) && driver::AllText(window).find(part) != std::wstring::npos;
    };
    HWND found = nullptr;
    driver::Await("a message box is shown", [&] { return (found = FindOwnWindow(fits)) != nullptr; });
    return found;
}

class QuestionThatOutlivesTheBatch : public ThreadsFixture, public testing::WithParamInterface<int> {};

TEST_P(QuestionThatOutlivesTheBatch, ChangesNothing) {
    platform.realMessages = true;
    HoldFirst(platform);
    OpenWith({L"C:\\in\\a.pdf"});
    user.Press(IDOK);
    user.WaitForConverter(1);
    driver::Click(user.Control(IDCANCEL));
    const HWND question = WaitForMessageBox(L"Un traitement est en cours.");
    platform.converters.ReleaseAll(0);
    driver::AnswerDialog(WaitForMessageBox(L"Conversion terminée !"), IDOK);
    user.WaitForWorkers();
    driver::AnswerDialog(question, GetParam());
    user.WaitForPosted();  // what the answer sets off is done then
    EXPECT_THAT(Messages(), ElementsAre(kQuestion, kFinished));
    EXPECT_EQ(Durations(), "00:00:07");
    EXPECT_THAT(platform.Requests("closing"), SizeIs(0));
}

INSTANTIATE_TEST_SUITE_P(BothAnswers, QuestionThatOutlivesTheBatch, testing::Values(IDYES, IDNO),
                         [](const auto& answer) { return answer.param == IDYES ? "Yes" : "No"; });

class ThreadsAndCountdown : public ThreadsFixture {
protected:
    // A batch with the shutdown box checked, when its countdown is open.
    void ConvertUntilCountdown() {
        OpenWith({L"C:\\in\\a.pdf"});
        user.Press(IDC_SHUT_DOWN);
        user.Press(IDOK);
        countdown = user.WaitForWorkersDialog(IDC_SECONDS);
        ASSERT_NE(countdown, nullptr);
    }

    HWND countdown = nullptr;
};

TEST_F(ThreadsAndCountdown, CountsOnAfterAStop) {
    ConvertUntilCountdown();
    Stop();
    EXPECT_TRUE(::IsWindow(countdown)) << "a stop does not cancel the countdown";
    EXPECT_THAT(platform.Requests("shutdowns"), SizeIs(0));
    for (int second = 0; second < 30; ++second) User::Send(countdown, WM_TIMER, 1);
    EXPECT_THAT(platform.Requests("shutdowns"), Contains("request"));
    user.CloseDialog(countdown, IDCANCEL);
    user.WaitForWorkers();
    EXPECT_THAT(Messages(), ElementsAre(kQuestion)) << "a stopped batch has no message at its end";
    EXPECT_EQ(Durations(), "00:00:07");
}

TEST_F(ThreadsAndCountdown, NewBatchBesideTheCountdownOfAStoppedOne) {
    ConvertUntilCountdown();
    Stop();
    user.Press(IDC_SHUT_DOWN);  // the new batch is to have none
    user.Press(IDOK);
    WaitForOneToEnd();
    EXPECT_THAT(Messages(), ElementsAre(kQuestion, kFinished));
    EXPECT_TRUE(::IsWindow(countdown));
    user.CloseDialog(countdown, IDCANCEL);
    user.WaitForWorkers();
    EXPECT_THAT(Messages(), ElementsAre(kQuestion, kFinished)) << "the first batch had been stopped";
}

}  // namespace
