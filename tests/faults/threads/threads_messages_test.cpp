// Stops that cross a message box or the countdown: these are windows of the worker, and the main window goes
// on.
#include "tests/faults/threads/threads_fixture.h"

#include "res/resource.h"

#include <array>

namespace {

using testing::ElementsAre;
using testing::SizeIs;

struct Search {
    const std::wstring& part;
    HWND found;
};

BOOL CALLBACK LookAtLabel(HWND window, LPARAM parameter) {
    auto& search = *reinterpret_cast<Search*>(parameter);
    std::array<wchar_t, 1000> text{};
    User::Send(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
    if (std::wstring(text.data()).find(search.part) == std::wstring::npos) return TRUE;
    search.found = ::GetParent(window);
    return FALSE;
}

BOOL CALLBACK LookAtWindow(HWND window, LPARAM parameter) {
    DWORD owner = 0;
    ::GetWindowThreadProcessId(window, &owner);
    std::array<wchar_t, 16> name{};
    ::GetClassNameW(window, name.data(), static_cast<int>(name.size()));
    const bool isDialog = owner == ::GetCurrentProcessId() && std::wstring(name.data()) == L"#32770";
    if (isDialog && ::IsWindowVisible(window)) ::EnumChildWindows(window, &LookAtLabel, parameter);
    return reinterpret_cast<Search*>(parameter)->found == nullptr;
}

// Waits for the message box of this process whose text contains `part`.
HWND WaitForMessageBox(const std::wstring& part) {
    Search search = {part, nullptr};
    WaitUntil("a message box is shown", [&] {
        ::EnumWindows(&LookAtWindow, reinterpret_cast<LPARAM>(&search));
        return search.found != nullptr;
    });
    return search.found;
}

// Presses a button and waits until the message box is gone. One with one button has only IDOK to press.
void AnswerMessageBox(HWND messageBox, int buttonId) {
    HWND button = driver::FindControl(messageBox, buttonId);
    if (!button)
        button = ::FindWindowExW(messageBox, nullptr, L"Button", nullptr);  // the only one, of any number
    ::PostMessageW(button, BM_CLICK, 0, 0);
    WaitUntil("a message box is gone", [&] { return !::IsWindow(messageBox); });
}

// Presses "Arrêter " and leaves the question open.
class OpenQuestion {
public:
    explicit OpenQuestion(const User& user)
        : m_stop(user.Control(IDCANCEL)), m_thread(::CreateThread(nullptr, 0, &Press, this, 0, nullptr)) {
        m_message = WaitForMessageBox(L"Un traitement est en cours.");
    }
    OpenQuestion(const OpenQuestion&) = delete;
    OpenQuestion& operator=(const OpenQuestion&) = delete;
    ~OpenQuestion() { ::CloseHandle(m_thread); }

    void Answer(int buttonId) const {
        AnswerMessageBox(m_message, buttonId);
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
    HWND m_message = nullptr;
};

class ThreadsAndMessages : public ThreadsFixture {
protected:
    ThreadsAndMessages() { platform.realMessages = true; }

    // A batch of two files; the question is asked before the first converter starts, which it then fails to
    // do.
    void AnswerQuestionWhileTheStartFailureIsReported(int buttonId) {
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

TEST_F(ThreadsAndMessages, StopWhileTheStartFailureIsReported) {
    AnswerQuestionWhileTheStartFailureIsReported(IDYES);
    user.WaitForWorkers();
    EXPECT_THAT(Messages(), SizeIs(2)) << "a stopped batch has no message at its end";
    EXPECT_EQ(Durations(), "*** Annulé !\n");
}

TEST_F(ThreadsAndMessages, NoWhileTheStartFailureIsReportedLetsTheBatchEndAsItDoes) {
    AnswerQuestionWhileTheStartFailureIsReported(IDNO);
    AnswerMessageBox(WaitForMessageBox(kFinishedText), IDOK);
    user.WaitForWorkers();
    EXPECT_THAT(Messages(), SizeIs(3));
    EXPECT_EQ(Durations(), "00:00:00\n");
}

struct Answer {
    const char* name;
    int button;
};

class QuestionThatOutlivesTheBatch : public ThreadsAndMessages, public testing::WithParamInterface<Answer> {};

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
    EXPECT_THAT(Messages(), ElementsAre(kQuestion, kFinished));
    EXPECT_EQ(Durations(), "00:00:07");
    EXPECT_THAT(CloseRequests(), SizeIs(0));
}

INSTANTIATE_TEST_SUITE_P(BothAnswers, QuestionThatOutlivesTheBatch,
                         testing::Values(Answer{"Yes", IDYES}, Answer{"No", IDNO}),
                         [](const auto& one) { return std::string(one.param.name); });

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
    // Nothing is sent to a real system; this is whether it would have been asked.
    [[nodiscard]] bool AsksForShutdown() const {
        const auto requests = platform.Requests(Platform::Request::Shutdown);
        return std::find(requests.begin(), requests.end(), "request") != requests.end();
    }

    HWND countdown = nullptr;
};

TEST_F(ThreadsAndCountdown, CountsOnAfterAStop) {
    ConvertUntilCountdown();
    Stop();
    EXPECT_TRUE(::IsWindow(countdown)) << "a stop does not cancel the countdown";
    EXPECT_FALSE(AsksForShutdown());
    for (int second = 0; second < 30; ++second) User::Send(countdown, WM_TIMER, 1);
    EXPECT_TRUE(AsksForShutdown());
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
    WaitUntil("the new batch has ended", [&] { return platform.Workers() == 1; });
    EXPECT_THAT(Messages(), ElementsAre(kQuestion, kFinished));
    EXPECT_TRUE(::IsWindow(countdown));
    user.CloseDialog(countdown, IDCANCEL);
    user.WaitForWorkers();
    EXPECT_THAT(Messages(), ElementsAre(kQuestion, kFinished)) << "the first batch had been stopped";
}

}  // namespace
