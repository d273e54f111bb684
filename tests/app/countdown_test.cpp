// The countdown before the computer is shut down. Every test cancels it long before its end: none asks any
// system to shut down, and none could (see main.cpp).
#include "tests/app/app_fixture.h"

#include "tests/equipment/no_shutdown.h"

namespace {

using testing::HasSubstr;

constexpr int kSeconds = 1039;

class Countdown : public AppTest {
protected:
    // A batch with the shutdown box ticked, when its countdown has appeared.
    void ConvertUntilCountdown(const wchar_t* pdfName) {
        Start();
        AddForConversion({installed.MakePdf(pdfName)});
        Window().Tick(id::kShutdown);
        Window().StartBatch();
        dialog = WaitForBox();
        ASSERT_EQ(driver::Text(dialog), L"Extinction de l'ordinateur");
    }
    [[nodiscard]] std::wstring Seconds() const { return driver::Text(driver::Control(dialog, kSeconds)); }
    [[nodiscard]] bool Closes() const {
        return Comes([&] { return !::IsWindow(dialog); });
    }

    HWND dialog = nullptr;
};

TEST_F(Countdown, CouldNotShutThisMachineDown) {
    EXPECT_FALSE(driver::MayShutDown());
}

TEST_F(Countdown, ShowsItsTextsAndCountsDown) {
    ConvertUntilCountdown(L"a.pdf");
    EXPECT_EQ(Seconds(), L"30");
    const std::wstring text = driver::AllText(dialog);
    for (const wchar_t* const part :
         {L"\nÉteindre immédiatement", L"\nAnnuler", L"\nL'ordinateur s'éteindra dans ", L"\nsecondes",
          L"\n(Des applications ouvertes avec des données non  sauvegardées peuvent empêcher l'extinction.)"})
        EXPECT_THAT(text, HasSubstr(part));
    // Far from the end in any case.
    constexpr driver::Milliseconds kFewSeconds{8000};
    EXPECT_TRUE(Comes([&] { return Seconds() == L"29"; }, kFewSeconds));
    EXPECT_TRUE(Comes([&] { return Seconds() == L"28"; }, kFewSeconds));
    driver::PressDialogButton(dialog, IDCANCEL);
    EXPECT_TRUE(Closes());
    CompleteBatch();
}

TEST_F(Countdown, LeavesTheMainWindowAliveAndInItsRunningState) {
    ConvertUntilCountdown(L"a.pdf");
    EXPECT_EQ(::GetWindow(dialog, GW_OWNER), nullptr);
    EXPECT_TRUE(driver::IsEnabled(Window().Window()));
    EXPECT_TRUE(Window().IsRunning());
    EXPECT_FALSE(IsEnabled(id::kConvert));
    driver::PressDialogButton(dialog, IDCANCEL);
    EXPECT_TRUE(Closes());
    CompleteBatch();
    EXPECT_TRUE(IsChecked(id::kShutdown)) << "the box keeps its mark";
    EXPECT_EQ(Window().Quit(), 2u);
}

TEST_F(Countdown, StandsInTheMiddleOfTheScreen) {
    ConvertUntilCountdown(L"a.pdf");
    RECT place = {};
    ::GetWindowRect(dialog, &place);
    MONITORINFO monitor = {};
    monitor.cbSize = sizeof monitor;
    ::GetMonitorInfoW(::MonitorFromWindow(dialog, MONITOR_DEFAULTTONEAREST), &monitor);
    constexpr LONG kFrame = 32;  // a window manager's, which may move the window
    EXPECT_NEAR(place.left + place.right, monitor.rcWork.left + monitor.rcWork.right, kFrame);
    EXPECT_NEAR(place.top + place.bottom, monitor.rcWork.top + monitor.rcWork.bottom, kFrame);
    driver::PressDialogButton(dialog, IDCANCEL);
    EXPECT_TRUE(Closes());
}

TEST_F(Countdown, EscapeCancels) {
    ConvertUntilCountdown(L"a.pdf");
    driver::PressKey(driver::Control(dialog, IDCANCEL), VK_ESCAPE);
    EXPECT_TRUE(Closes());
    CompleteBatch();
}

TEST_F(Countdown, CloseBoxCancels) {
    ConvertUntilCountdown(L"a.pdf");
    ::PostMessageW(dialog, WM_SYSCOMMAND, SC_CLOSE, 0);
    EXPECT_TRUE(Closes());
    CompleteBatch();
}

TEST_F(Countdown, AlsoComesAfterAFailedBatch) {
    ConvertUntilCountdown(L"a exit1.pdf");
    driver::PressDialogButton(dialog, IDCANCEL);
    EXPECT_TRUE(Closes());
    EXPECT_TRUE(BecomesIdle()) << "and there is no message behind it";
}

TEST_F(Countdown, AlsoComesAfterAStoppedBatch) {
    Start();
    AddForConversion({installed.MakePdf(L"a wait1000.pdf"), installed.MakePdf(L"b.pdf")});
    Window().Tick(id::kShutdown);
    Window().StartBatch();
    ASSERT_TRUE(Comes([&] { return Runs().size() == 1; }));
    driver::Click(Control(id::kQuit));
    AnswerBox(IDYES);
    dialog = WaitForBox();
    EXPECT_EQ(driver::Text(dialog), L"Extinction de l'ordinateur");
    driver::PressDialogButton(dialog, IDCANCEL);
    EXPECT_TRUE(Closes());
    EXPECT_TRUE(BecomesIdle());
    EXPECT_EQ(Runs().size(), 1u);
}

TEST_F(Countdown, DoesNotComeWithoutItsBox) {
    Start();
    AddForConversion({installed.MakePdf(L"a.pdf")});
    Window().Tick(id::kHideOutput);
    Convert();
    EXPECT_TRUE(BecomesIdle());
}

TEST_F(Countdown, ProgramCanBeLeftDuringIt) {
    // The batch is stopped, the countdown stands, and the person wants out of the window behind it.
    ConvertUntilCountdown(L"a exit1.pdf");
    ASSERT_FALSE(driver::Dialogs(Process()).empty());
    driver::Click(Control(id::kQuit));
    EXPECT_EQ(Process().WaitForExit(kSoon), 2u);
    EXPECT_TRUE(Closes());
}

}  // namespace
