// The countdown dialog: what each second shows, when the machine is asked to go down, and its two buttons.
#include "tests/window/modal_thread.h"
#include "tests/window/scripted_shutdown.h"

#include "framework/app_module.h"
#include "ui/shutdown/shut_me_down_dlg.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// The dialog on its thread. Its timer is written down as "SetTimer 1 1000" and "KillTimer 1", with the window
// when it is not the dialog's, and does not tick unless `s_realTimers`; the end as "EndDialog 1"; requests as
// "shutdown".
class CountdownTest : public testing::Test {
protected:
    CountdownTest() {
        s_this = this;
        s_calls.Clear();
        s_realTimers = false;
        CAppModule::Instance().Init(::GetModuleHandleW(nullptr));
    }
    ~CountdownTest() override {
        m_dialog.reset();
        CAppModule::Instance().Term();
    }

    void Open(HWND owner = nullptr) {
        m_dialog = std::make_unique<ModalThread<CShutMeDownDlg>>(kTitle, owner);
        window = m_dialog->Window();
        ASSERT_NE(window, nullptr);
    }
    void Tick(int times = 1, WPARAM timerId = 1) const {
        for (int i = 0; i < times; ++i) ::SendMessageW(window, WM_TIMER, timerId, 0);
    }
    // Presses a button, by any of its notifications, and gives the dialog's result.
    INT_PTR Press(int id, int code = BN_CLICKED) {
        ::PostMessageW(window, WM_COMMAND, MAKEWPARAM(id, code), 0);
        return m_dialog->Result();
    }
    [[nodiscard]] std::wstring Seconds() const {
        wchar_t text[16] = {};
        ::GetDlgItemTextW(window, IDC_SECONDS, text, ARRAYSIZE(text));
        return text;
    }
    [[nodiscard]] std::vector<std::string> Calls() const { return s_calls.Calls(); }
    [[nodiscard]] HWND Focused() const {
        GUITHREADINFO info = {};
        info.cbSize = sizeof info;
        ::GetGUIThreadInfo(m_dialog->ThreadId(), &info);
        return info.hwndFocus;
    }

    CallRecord shutdownCalls;
    ScriptedShutdown system{shutdownCalls};
    std::unique_ptr<ModalThread<CShutMeDownDlg>> m_dialog;
    HWND window = nullptr;
    static inline CallRecord s_calls;
    static inline bool s_realTimers = false;

private:
    static constexpr wchar_t kTitle[] = L"Extinction de l'ordinateur";

    static std::string Whose(HWND timerWindow) {
        if (!timerWindow) return " of no window";
        return timerWindow == FindOwnDialog(kTitle) ? "" : " of another window";
    }
    static UINT_PTR WINAPI StartTimer(HWND timerWindow, UINT_PTR id, UINT periodMs, TIMERPROC callback) {
        s_calls.Add("SetTimer " + std::to_string(id) + ' ' + std::to_string(periodMs) +
                    (callback ? " callback" : "") + Whose(timerWindow));
        if (!s_realTimers) return id;
        return s_this->m_startTimer.Original<decltype(::SetTimer)>()(timerWindow, id, periodMs, callback);
    }
    static BOOL WINAPI StopTimer(HWND timerWindow, UINT_PTR id) {
        s_calls.Add("KillTimer " + std::to_string(id) + Whose(timerWindow));
        if (!s_realTimers) return TRUE;
        return s_this->m_stopTimer.Original<decltype(::KillTimer)>()(timerWindow, id);
    }
    static BOOL WINAPI End(HWND dialogWindow, INT_PTR result) {
        s_calls.Add("EndDialog " + std::to_string(result));
        return s_this->m_end.Original<decltype(::EndDialog)>()(dialogWindow, result);
    }
    static BOOL WINAPI Initiate(LPWSTR, LPWSTR, DWORD, BOOL, BOOL) {
        s_calls.Add("shutdown");
        return FALSE;
    }

    static inline CountdownTest* s_this = nullptr;
    ReplacedImport m_startTimer{"SetTimer", &StartTimer};
    ReplacedImport m_stopTimer{"KillTimer", &StopTimer};
    ReplacedImport m_end{"EndDialog", &End};
    ReplacedImport m_initiate{"InitiateSystemShutdownW", &Initiate};
};

TEST_F(CountdownTest, OpensAtThirtyWithATimerOfASecond) {
    Open();
    EXPECT_EQ(Seconds(), L"30");
    EXPECT_THAT(Calls(), ElementsAre("SetTimer 1 1000"));
}

TEST_F(CountdownTest, HasTheFocusOnItsDefaultButton) {
    Open();
    EXPECT_EQ(Focused(), ::GetDlgItem(window, IDOK));
    EXPECT_EQ(LOWORD(::SendMessageW(window, DM_GETDEFID, 0, 0)), IDOK);
}

// That the dialog stands in the middle of `area`.
void ExpectCentered(HWND dialog, const RECT& area) {
    RECT place = {};
    ::GetWindowRect(dialog, &place);
    EXPECT_NEAR((place.left + place.right) / 2, (area.left + area.right) / 2, 1);
    EXPECT_NEAR((place.top + place.bottom) / 2, (area.top + area.bottom) / 2, 1);
}

TEST_F(CountdownTest, WithoutAParentStandsInTheMiddleOfTheScreen) {
    Open();
    RECT work = {};
    ::SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
    ExpectCentered(window, work);
}

TEST_F(CountdownTest, WithAParentStandsInItsMiddle) {
    RECT area = {};
    ::SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0);
    area = {area.left + 20, area.top + 20, area.left + 520, area.top + 320};  // in the corner of the screen
    const HWND parent =
        ::CreateWindowExW(0, L"Static", L"", WS_POPUP | WS_VISIBLE, area.left, area.top,
                          area.right - area.left, area.bottom - area.top, nullptr, nullptr, nullptr, nullptr);
    Open(parent);
    ExpectCentered(window, area);
    EXPECT_EQ(Press(IDCANCEL), 2);
    ::DestroyWindow(parent);
}

TEST_F(CountdownTest, CountsDownByOneASecond) {
    Open();
    std::vector<std::wstring> shown;
    for (int second = 1; second <= 29; ++second) {
        Tick();
        shown.push_back(Seconds());
    }
    EXPECT_THAT(shown, ElementsAre(L"29", L"28", L"27", L"26", L"25", L"24", L"23", L"22", L"21", L"20",
                                   L"19", L"18", L"17", L"16", L"15", L"14", L"13", L"12", L"11", L"10", L"9",
                                   L"8", L"7", L"6", L"5", L"4", L"3", L"2", L"1"));
    EXPECT_THAT(Calls(), ElementsAre("SetTimer 1 1000"));
}

TEST_F(CountdownTest, TakesTheTicksOfAnyTimer) {
    Open();
    Tick(2, 77);
    EXPECT_EQ(Seconds(), L"28");
}

TEST_F(CountdownTest, AfterThirtySecondsStopsItsTimerAsksOnceAndStaysOpenAtOne) {
    Open();
    Tick(30);
    EXPECT_THAT(Calls(), ElementsAre("SetTimer 1 1000", "KillTimer 1", "shutdown"));
    EXPECT_EQ(Seconds(), L"1");
    EXPECT_TRUE(::IsWindowVisible(window));
    EXPECT_FALSE(m_dialog->HasEnded());
}

TEST_F(CountdownTest, AfterTheRequestItCanBeRepeated) {
    Open();
    Tick(30);
    EXPECT_EQ(Press(IDOK), 1);
    EXPECT_THAT(Calls(), ElementsAre("SetTimer 1 1000", "KillTimer 1", "shutdown", "shutdown", "KillTimer 1",
                                     "EndDialog 1"));
}

TEST_F(CountdownTest, AfterTheRequestItCanBeClosed) {
    Open();
    Tick(30);
    EXPECT_EQ(Press(IDCANCEL), 2);
    EXPECT_THAT(Calls(),
                ElementsAre("SetTimer 1 1000", "KillTimer 1", "shutdown", "KillTimer 1", "EndDialog 2"));
}

class CountdownAnswerTest : public CountdownTest, public testing::WithParamInterface<int> {};

TEST_P(CountdownAnswerTest, ShuttingDownAtOnceAsksOnceAndEndsWithOne) {
    Open();
    Tick(GetParam());
    EXPECT_EQ(Press(IDOK), 1);
    EXPECT_THAT(Calls(), ElementsAre("SetTimer 1 1000", "shutdown", "KillTimer 1", "EndDialog 1"));
}

TEST_P(CountdownAnswerTest, CancellingAsksNothingAndEndsWithTwo) {
    Open();
    Tick(GetParam());
    EXPECT_EQ(Press(IDCANCEL), 2);
    EXPECT_THAT(Calls(), ElementsAre("SetTimer 1 1000", "KillTimer 1", "EndDialog 2"));
    EXPECT_THAT(shutdownCalls.Calls(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(AfterSeconds, CountdownAnswerTest, testing::Values(0, 1, 15, 29),
                         testing::PrintToStringParamName());

TEST_F(CountdownTest, AnyNotificationOfItsButtonsCounts) {
    Open();
    EXPECT_EQ(Press(IDCANCEL, BN_SETFOCUS), 2);
}

TEST_F(CountdownTest, AnyNotificationOfItsDefaultButtonShutsDown) {
    Open();
    EXPECT_EQ(Press(IDOK, BN_SETFOCUS), 1);
    EXPECT_THAT(Calls(), ElementsAre("SetTimer 1 1000", "shutdown", "KillTimer 1", "EndDialog 1"));
}

TEST_F(CountdownTest, EscCancels) {
    Open();
    ::PostMessageW(Focused(), WM_KEYDOWN, VK_ESCAPE, 1);
    EXPECT_EQ(m_dialog->Result(), 2);
    EXPECT_THAT(Calls(), ElementsAre("SetTimer 1 1000", "KillTimer 1", "EndDialog 2"));
}

TEST_F(CountdownTest, EnterShutsDown) {
    Open();
    ::PostMessageW(Focused(), WM_KEYDOWN, VK_RETURN, 1);
    EXPECT_EQ(m_dialog->Result(), 1);
    EXPECT_THAT(Calls(), ElementsAre("SetTimer 1 1000", "shutdown", "KillTimer 1", "EndDialog 1"));
}

TEST_F(CountdownTest, TheCloseBoxCancels) {
    Open();
    ::PostMessageW(window, WM_SYSCOMMAND, SC_CLOSE, 0);
    EXPECT_EQ(m_dialog->Result(), 2);
    EXPECT_THAT(Calls(), ElementsAre("SetTimer 1 1000", "KillTimer 1", "EndDialog 2"));
}

TEST_F(CountdownTest, OtherCommandsAreLeftAlone) {
    Open();
    ::SendMessageW(window, WM_COMMAND, MAKEWPARAM(IDC_SECONDS, 0), 0);
    EXPECT_FALSE(m_dialog->HasEnded());
    EXPECT_THAT(Calls(), ElementsAre("SetTimer 1 1000"));
}

TEST_F(CountdownTest, OtherCommandsGetDefaultProcessing) {
    CShutMeDownDlg countdown;
    LRESULT result = 0;
    EXPECT_FALSE(countdown.ProcessWindowMessage(nullptr, WM_COMMAND, 3, 0, result, 0));
}

TEST_F(CountdownTest, TheSystemsTimerCountsTheSeconds) {
    s_realTimers = true;
    Open();
    EXPECT_TRUE(PumpUntil([&] { return Seconds() == L"29"; }, std::chrono::seconds(10))) << "no tick came";
    EXPECT_EQ(Press(IDCANCEL), 2);
}

}  // namespace
