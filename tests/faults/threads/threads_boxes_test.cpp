// Stops that cross a message box or the countdown: these are windows of the worker, and the main window goes
// on.
#include "tests/faults/threads/message_box.h"
#include "tests/faults/threads/threads_fixture.h"

#include "res/resource.h"

namespace {

using testing::ElementsAre;
using testing::SizeIs;

// Presses "Arrêter " and leaves the question open.
class OpenQuestion {
public:
    explicit OpenQuestion(const User& user)
        : m_stop(user.Control(IDCANCEL)), m_thread(::CreateThread(nullptr, 0, &Press, this, 0, nullptr)) {
        m_box = WaitForMessageBox(L"Un traitement est en cours.");
    }
    OpenQuestion(const OpenQuestion&) = delete;
    OpenQuestion& operator=(const OpenQuestion&) = delete;
    ~OpenQuestion() { ::CloseHandle(m_thread); }

    void Answer(int buttonId) const {
        AnswerMessageBox(m_box, buttonId);
        // What the answer sets off is done when the press is over.
        WaitUntil("the press is over", [&] { return ::WaitForSingleObject(m_thread, 0) == WAIT_OBJECT_0; });
    }

private:
    static DWORD WINAPI Press(void* self) {
        ::SendMessageW(static_cast<OpenQuestion*>(self)->m_stop, BM_CLICK, 0, 0);
        return 0;
    }

    HWND m_stop;
    HANDLE m_thread;
    HWND m_box = nullptr;
};

class ThreadsAndBoxes : public ThreadsFixture {
protected:
    ThreadsAndBoxes() { platform.realBoxes = true; }

    // A batch of two files; the question is asked before the first converter starts, which it then fails to
    // do.
    void AnswerQuestionWhileTheStartFailureIsTold(int buttonId) {
        platform.converters = {{.startError = ERROR_FILE_NOT_FOUND}};
        OpenWith({L"C:\\in\\a.pdf", L"C:\\in\\b.pdf"});
        const Gate gate(watch, "worker CreateProcessW");
        user.Press(IDOK);
        gate.WaitForArrival();
        const OpenQuestion question(user);
        gate.Open();
        const HWND failure = WaitForMessageBox(kFailedText);
        question.Answer(buttonId);
        AnswerMessageBox(failure, IDOK);
    }

    static constexpr wchar_t kFinishedText[] = L"Conversion terminée !";
    static constexpr wchar_t kFailedText[] = L"Erreur CreateProcess :";
};

TEST_F(ThreadsAndBoxes, StopWhileTheStartFailureIsTold) {
    AnswerQuestionWhileTheStartFailureIsTold(IDYES);
    user.WaitForWorkers();
    EXPECT_THAT(Boxes(), SizeIs(2)) << "a stopped batch has no message at its end";
    EXPECT_EQ(Durations(), "*** Annulé !\n");
}

TEST_F(ThreadsAndBoxes, NoWhileTheStartFailureIsToldLetsTheBatchEndAsItDoes) {
    AnswerQuestionWhileTheStartFailureIsTold(IDNO);
    AnswerMessageBox(WaitForMessageBox(kFinishedText), IDOK);
    user.WaitForWorkers();
    EXPECT_THAT(Boxes(), SizeIs(3));
    EXPECT_EQ(Durations(), "00:00:00\n");
}

struct Answer {
    const char* name;
    int button;
};

class QuestionThatOutlivesTheBatch : public ThreadsAndBoxes, public testing::WithParamInterface<Answer> {};

TEST_P(QuestionThatOutlivesTheBatch, ChangesNothing) {
    platform.converters = {{.held = true}};
    OpenWith({L"C:\\in\\a.pdf"});
    user.Press(IDOK);
    user.WaitForConverter(1);
    const OpenQuestion question(user);
    platform.EndConverters(0);
    AnswerMessageBox(WaitForMessageBox(kFinishedText), IDOK);
    user.WaitForWorkers();
    question.Answer(GetParam().button);
    EXPECT_THAT(Boxes(), ElementsAre(kQuestion, kFinished));
    EXPECT_EQ(Durations(), "00:00:07");
    EXPECT_THAT(CloseRequests(), SizeIs(0));
}

INSTANTIATE_TEST_SUITE_P(BothAnswers, QuestionThatOutlivesTheBatch,
                         testing::Values(Answer{"Yes", IDYES}, Answer{"No", IDNO}),
                         [](const auto& one) { return std::string(one.param.name); });

class ThreadsAndCountdown : public ThreadsFixture {
protected:
    // A batch with the shutdown box ticked, when its countdown is open.
    void ConvertUntilCountdown() {
        OpenWith({L"C:\\in\\a.pdf"});
        user.Press(IDC_SHUT_DOWN);
        user.Press(IDOK);
        countdown = user.WaitForWorkersDialog(IDC_SECONDS);
        ASSERT_NE(countdown, nullptr);
    }
    // Nothing is sent to a real system; this is whether it would have been asked.
    [[nodiscard]] bool AsksForShutdown() const {
        const auto requests = platform.Requests(Platform::Request::Shutdown);
        return std::find(requests.begin(), requests.end(), "request") != requests.end();
    }

    HWND countdown = nullptr;
};

TEST_F(ThreadsAndCountdown, StopInTheCountdownTakesTheMessageAway) {
    ConvertUntilCountdown();
    Stop();
    EXPECT_TRUE(::IsWindow(countdown)) << "a stop does not cancel the countdown";
    user.CloseDialog(countdown, IDCANCEL);
    user.WaitForWorkers();
    EXPECT_THAT(Boxes(), ElementsAre(kQuestion));
    EXPECT_EQ(Durations(), "00:00:07");
    EXPECT_FALSE(AsksForShutdown());
}

TEST_F(ThreadsAndCountdown, CountsOnAfterAStop) {
    ConvertUntilCountdown();
    Stop();
    for (int second = 0; second < 30; ++second) User::Send(countdown, WM_TIMER, 1);
    EXPECT_TRUE(AsksForShutdown());
    user.CloseDialog(countdown, IDCANCEL);
}

TEST_F(ThreadsAndCountdown, NewBatchBesideTheCountdownOfAStoppedOne) {
    ConvertUntilCountdown();
    Stop();
    user.Press(IDC_SHUT_DOWN);  // the new batch is to have none
    user.Press(IDOK);
    WaitUntil("the new batch has ended", [&] { return platform.Workers() == 1; });
    EXPECT_THAT(Boxes(), ElementsAre(kQuestion, kFinished));
    EXPECT_TRUE(::IsWindow(countdown));
    user.CloseDialog(countdown, IDCANCEL);
    user.WaitForWorkers();
    EXPECT_THAT(Boxes(), ElementsAre(kQuestion, kFinished)) << "the first batch had been stopped";
}

}  // namespace
