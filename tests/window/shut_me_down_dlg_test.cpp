// The countdown: what each second shows, when the machine is asked to go down, and the ways out.
#include "ui/shutdown/shut_me_down_dlg.h"

#include "tests/window/modal_thread.h"
#include "tests/window/scripted_shutdown.h"

#include "framework/app_module.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// The dialog on its thread. Its timer is written down as "SetTimer 1 1000" and "KillTimer 1", with the window
// when it is not the dialog's, and does not tick unless `realTimers`; the end as "EndDialog 1"; requests as
// "shutdown".
class ShutMeDownDlgTest : public testing::Test {
protected:
    ShutMeDownDlgTest() { CAppModule::Instance().Init(::GetModuleHandleW(nullptr)); }
    ~ShutMeDownDlgTest() override {
        dialog.reset();
        CAppModule::Instance().Term();
    }

    void Open(HWND owner = nullptr) {
        dialog = std::make_unique<ModalThread<CShutMeDownDlg>>(kTitle, owner);
        window = dialog->Window();
        ASSERT_NE(window, nullptr);
        if (!realTimers) {
            EXPECT_EQ(Seconds(), L"30");
        }
    }
    void PassSeconds(int seconds, WPARAM timerId = 1) const {
        for (int i = 0; i < seconds; ++i) ::SendMessageW(window, WM_TIMER, timerId, 0);
    }
    // Presses a button and returns the dialog's result.
    INT_PTR Press(int id) {
        ::PostMessageW(window, WM_COMMAND, id, 0);
        return dialog->Result();
    }
    [[nodiscard]] std::wstring Seconds() const {
        wchar_t text[16] = {};
        ::GetDlgItemTextW(window, IDC_SECONDS, text, ARRAYSIZE(text));
        return text;
    }
    [[nodiscard]] std::vector<std::string> Calls() const { return calls.Calls(); }
    // That the dialog is in the middle of `area`.
    void ExpectCentered(const RECT& area) const {
        RECT place = {};
        ::GetWindowRect(window, &place);
        EXPECT_NEAR((place.left + place.right) / 2, (area.left + area.right) / 2, 1);
        EXPECT_NEAR((place.top + place.bottom) / 2, (area.top + area.bottom) / 2, 1);
    }

    CallRecord shutdownCalls;
    ScriptedShutdown system{shutdownCalls};
    CallRecord calls;
    bool realTimers = false;
    std::unique_ptr<ModalThread<CShutMeDownDlg>> dialog;
    HWND window = nullptr;

private:
    static constexpr wchar_t kTitle[] = L"Extinction de l'ordinateur";

    static std::string Whose(HWND timerWindow) {
        if (!timerWindow) return " of no window";
        return timerWindow == FindOwnDialog(kTitle) ? "" : " of another window";
    }

    Replaced m_startTimer = REPLACE_IMPORT(
        SetTimer, [this](auto original, HWND owner, UINT_PTR id, UINT periodMs, TIMERPROC callback) {
            calls.Add("SetTimer " + std::to_string(id) + ' ' + std::to_string(periodMs) +
                      (callback ? " callback" : "") + Whose(owner));
            return realTimers ? original(owner, id, periodMs, callback) : id;
        });
    Replaced m_stopTimer = REPLACE_IMPORT(KillTimer, [this](auto original, HWND owner, UINT_PTR id) {
        calls.Add("KillTimer " + std::to_string(id) + Whose(owner));
        return realTimers ? original(owner, id) : TRUE;
    });
    Replaced m_end = REPLACE_IMPORT(EndDialog, [this](auto original, HWND ended, INT_PTR result) {
        calls.Add("EndDialog " + std::to_string(result));
        return original(ended, result);
    });
    Replaced m_initiate = REPLACE_IMPORT(InitiateSystemShutdownW, [this](LPWSTR, LPWSTR, DWORD, BOOL, BOOL) {
        calls.Add("shutdown");
        return FALSE;
    });
};

TEST_F(ShutMeDownDlgTest, OpensAtThirtyWithATimerOfASecondAndTheFocusOnItsDefaultButton) {
    Open();
    EXPECT_THAT(Calls(), ElementsAre("SetTimer 1 1000"));
    EXPECT_EQ(dialog->Focused(), ::GetDlgItem(window, IDOK));
    EXPECT_EQ(LOWORD(::SendMessageW(window, DM_GETDEFID, 0, 0)), IDOK);
}

TEST_F(ShutMeDownDlgTest, LeavesTheFocusToTheSystem) {
    CShutMeDownDlg countdown;
    LRESULT result = 0;
    EXPECT_TRUE(countdown.ProcessWindowMessage(nullptr, WM_INITDIALOG, 0, 0, result, 0));
    EXPECT_EQ(result, TRUE);
}

TEST_F(ShutMeDownDlgTest, IsInTheMiddleOfTheScreenOrOfItsParent) {
    RECT work = {};
    ::SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
    Open();
    ExpectCentered(work);
    EXPECT_EQ(Press(IDCANCEL), 2);

    const RECT area = {work.left + 20, work.top + 20, work.left + 520, work.top + 320};
    const HWND parent =
        ::CreateWindowExW(0, L"Static", L"", WS_POPUP | WS_VISIBLE, area.left, area.top,
                          area.right - area.left, area.bottom - area.top, nullptr, nullptr, nullptr, nullptr);
    Open(parent);
    ExpectCentered(area);
    EXPECT_EQ(Press(IDCANCEL), 2);
    ::DestroyWindow(parent);
}

TEST_F(ShutMeDownDlgTest, CountsTheMessagesOfAnyTimerDownToOneThenAsksOnceAndStaysOpen) {
    Open();
    for (int left = 29; left >= 1; --left) {
        PassSeconds(1, left % 2 == 0 ? 77 : 1);
        EXPECT_EQ(Seconds(), std::to_wstring(left));
    }
    EXPECT_THAT(Calls(), ElementsAre("SetTimer 1 1000"));
    PassSeconds(1);
    EXPECT_THAT(Calls(), ElementsAre("SetTimer 1 1000", "KillTimer 1", "shutdown"));
    EXPECT_EQ(Seconds(), L"1");
    EXPECT_TRUE(::IsWindowVisible(window));
    EXPECT_FALSE(dialog->HasEnded());
}

struct WayOut {
    const char* name;
    int afterSeconds;
    UINT message;
    WPARAM wParam;
    bool shutsDown;

    friend void PrintTo(const WayOut& way, std::ostream* out) { *out << way.name; }
};
class ShutMeDownDlgEndTest : public ShutMeDownDlgTest, public testing::WithParamInterface<WayOut> {};

TEST_P(ShutMeDownDlgEndTest, AsksAtMostOnceStopsItsTimerAndEndsWithItsResult) {
    const WayOut& way = GetParam();
    Open();
    PassSeconds(way.afterSeconds);
    std::vector<std::string> expected = {"SetTimer 1 1000"};
    if (way.afterSeconds == 30) expected.insert(expected.end(), {"KillTimer 1", "shutdown"});
    if (way.shutsDown) expected.emplace_back("shutdown");
    expected.emplace_back("KillTimer 1");
    expected.emplace_back(way.shutsDown ? "EndDialog 1" : "EndDialog 2");
    const bool isKey = way.message == WM_KEYDOWN;
    ::PostMessageW(isKey ? dialog->Focused() : window, way.message, way.wParam, isKey ? 1 : 0);
    EXPECT_EQ(dialog->Result(), way.shutsDown ? IDOK : IDCANCEL);
    EXPECT_EQ(Calls(), expected);
    EXPECT_EQ(shutdownCalls.Calls().empty(), !way.shutsDown && way.afterSeconds < 30);
}

constexpr WayOut kWays[] = {
    {"ShutDownAtOnce", 0, WM_COMMAND, IDOK, true},
    {"ShutDownAfterOneSecond", 1, WM_COMMAND, IDOK, true},
    {"ShutDownAfterAllButOne", 29, WM_COMMAND, IDOK, true},
    {"ShutDownOnceMore", 30, WM_COMMAND, IDOK, true},
    {"ShutDownByAnyNotification", 0, WM_COMMAND, MAKEWPARAM(IDOK, BN_SETFOCUS), true},
    {"Enter", 0, WM_KEYDOWN, VK_RETURN, true},
    {"CancelAtOnce", 0, WM_COMMAND, IDCANCEL, false},
    {"CancelAfterAllButOne", 29, WM_COMMAND, IDCANCEL, false},
    {"CancelAfterTheRequest", 30, WM_COMMAND, IDCANCEL, false},
    {"CancelByAnyNotification", 0, WM_COMMAND, MAKEWPARAM(IDCANCEL, BN_SETFOCUS), false},
    {"Escape", 0, WM_KEYDOWN, VK_ESCAPE, false},
    {"CloseButton", 0, WM_SYSCOMMAND, SC_CLOSE, false}};

INSTANTIATE_TEST_SUITE_P(Ways, ShutMeDownDlgEndTest, testing::ValuesIn(kWays),
                         [](const auto& way) { return std::string(way.param.name); });

TEST_F(ShutMeDownDlgTest, OtherMessagesAndCommandsGetDefaultProcessing) {
    CShutMeDownDlg countdown;
    LRESULT result = 0;
    for (UINT message = 0; message <= WM_APP + 0x100; ++message) {
        if (message == WM_INITDIALOG || message == WM_TIMER || message == WM_COMMAND) continue;
        EXPECT_FALSE(countdown.ProcessWindowMessage(nullptr, message, 0, 0, result, 0)) << message;
    }
    EXPECT_FALSE(countdown.ProcessWindowMessage(nullptr, WM_COMMAND, 3, 0, result, 0));
    EXPECT_FALSE(countdown.ProcessWindowMessage(nullptr, WM_COMMAND, IDC_SECONDS, 0, result, 0));
    EXPECT_THAT(Calls(), IsEmpty());
}

TEST_F(ShutMeDownDlgTest, TheSystemsTimerCountsTheSeconds) {
    realTimers = true;
    Open();
    EXPECT_TRUE(PumpUntil([&] { return Seconds() == L"29"; }, std::chrono::seconds(10)));
    EXPECT_EQ(Press(IDCANCEL), 2);
}

}  // namespace
