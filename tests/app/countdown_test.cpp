// The countdown before the computer is shut down. Every test cancels it long before its end: none asks any
// system to shut down, and none could: main.cpp gives up the right to, or no test runs.
#include "tests/app/app_fixture.h"

namespace {

class Countdown : public AppTest {
protected:
    // A batch with the shutdown box checked, when its countdown has appeared.
    void ConvertUntilCountdown(const wchar_t* pdfName) {
        StartWith({installed.MakePdf(pdfName)});
        Window().Check(IDC_SHUT_DOWN);
        Window().StartBatch();
        countdown = WaitForDialog();
        ASSERT_EQ(driver::Text(countdown), L"Extinction de l'ordinateur");
    }
    [[nodiscard]] bool Shows(const wchar_t* second) const {
        constexpr driver::Milliseconds kFarFromTheEnd{8000};
        return Comes([&] { return driver::Text(driver::Control(countdown, IDC_SECONDS)) == second; },
                     kFarFromTheEnd);
    }

    HWND countdown = nullptr;
};

TEST_F(Countdown, CountsTheSecondsDownUntilItIsCancelled) {
    ConvertUntilCountdown(L"a.pdf");
    for (const wchar_t* const second : {L"30", L"29", L"28"}) EXPECT_TRUE(Shows(second));
    driver::AnswerDialog(countdown, IDCANCEL);
    CompleteBatch();
    EXPECT_TRUE(IsChecked(IDC_SHUT_DOWN)) << "the box stays checked";
    EXPECT_EQ(Window().Quit(), 2u);
}

TEST_F(Countdown, ComesAfterAFailedBatchTooAndGoesWithTheProgram) {
    ConvertUntilCountdown(L"a exit1.pdf");
    driver::Click(Control(IDCANCEL));
    EXPECT_EQ(Process().WaitForExit(), 2u);
    EXPECT_TRUE(Comes([&] { return !::IsWindow(countdown); }));
}

}  // namespace
