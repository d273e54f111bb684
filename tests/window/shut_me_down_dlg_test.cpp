// The countdown: what each second shows, when the machine is asked to go down, and the ways out.
#include "ui/shutdown/shut_me_down_dlg.h"

#include "tests/support/call_text.h"
#include "tests/window/modal_dialog.h"
#include "tests/window/scripted_shutdown.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::Pair;

constexpr char kRequest[] = "InitiateSystemShutdownW (null) (null) 0 0 0";

// The dialog's timer does not tick, and its requests are refused.
class ShutMeDownDlgTest : public ModalDialogTest<CShutMeDownDlg> {
protected:
    ShutMeDownDlgTest() : ModalDialogTest(L"Extinction de l'ordinateur") { system.accepts = false; }

    void PassSeconds(int seconds, WPARAM timerId = 1) const {
        for (int i = 0; i < seconds; ++i) ::SendMessageW(window, WM_TIMER, timerId, 0);
    }
    [[nodiscard]] std::wstring Seconds() const {
        wchar_t text[16] = {};
        ::GetDlgItemTextW(window, IDC_SECONDS, text, ARRAYSIZE(text));
        return text;
    }
    // What the dialog has asked of the system since it was opened; of the steps of a request the last.
    [[nodiscard]] std::vector<std::string> Calls() const {
        return Only({"SetWindowPos", "SetTimer", "KillTimer", "EndDialog", "Initiate"}, calls.Calls());
    }

    CallRecord calls;
    ScriptedShutdown system{calls};

private:
    Replaced m_move = REPLACE_IMPORT(SetWindowPos, [this](HWND moved, auto...) {
        calls.Add(CallText("SetWindowPos", moved));
        return TRUE;
    });
    Replaced m_startTimer =
        REPLACE_IMPORT(SetTimer, [this](HWND owner, UINT_PTR id, UINT periodMs, TIMERPROC callback) {
            EXPECT_EQ(callback, nullptr);
            calls.Add(CallText("SetTimer", owner, id, periodMs));
            return id;
        });
    Replaced m_stopTimer = REPLACE_IMPORT(KillTimer, [this](HWND owner, UINT_PTR id) {
        calls.Add(CallText("KillTimer", owner, id));
        return TRUE;
    });
    Replaced m_end = REPLACE_IMPORT(EndDialog, [this](auto original, HWND ended, INT_PTR result) {
        calls.Add(CallText("EndDialog", ended, result));
        return original(ended, result);
    });
};

TEST_F(ShutMeDownDlgTest, OpensAtThirtyWithATimerOfASecondAndTheFocusOnItsDefaultButton) {
    Open();
    EXPECT_EQ(Seconds(), L"30");
    EXPECT_THAT(Calls(), ElementsAre("SetWindowPos main", "SetTimer main 1 1000"));
    EXPECT_EQ(Focused(), ::GetDlgItem(window, IDOK));
    EXPECT_EQ(LOWORD(::SendMessageW(window, DM_GETDEFID, 0, 0)), IDOK);
}

TEST_F(ShutMeDownDlgTest, CountsTheMessagesOfAnyTimerDownToOneThenAsksOnceAndStaysOpen) {
    Open();
    calls.Clear();
    for (int left = 29; left >= 1; --left) {
        PassSeconds(1, left % 2 == 0 ? 77 : 1);
        EXPECT_EQ(Seconds(), std::to_wstring(left));
    }
    EXPECT_THAT(calls.Calls(), testing::IsEmpty());
    PassSeconds(1);
    EXPECT_THAT(Calls(), ElementsAre("KillTimer main 1", kRequest));
    EXPECT_EQ(Seconds(), L"1");
    EXPECT_TRUE(::IsWindowVisible(window));
    EXPECT_FALSE(HasEnded());
}

TEST_F(ShutMeDownDlgTest, AsksAtMostOnceStopsItsTimerAndEndsWithItsResult) {
    static constexpr struct {
        const char* name;
        int afterSeconds;
        UINT message;
        WPARAM wParam;
        bool shutsDown;
    } kWays[] = {
        {"shut down at once", 0, WM_COMMAND, IDOK, true},
        {"shut down after one second", 1, WM_COMMAND, IDOK, true},
        {"shut down after all but one", 29, WM_COMMAND, IDOK, true},
        {"shut down once more", 30, WM_COMMAND, IDOK, true},
        {"shut down by any notification", 0, WM_COMMAND, MAKEWPARAM(IDOK, BN_SETFOCUS), true},
        {"Enter", 0, WM_KEYDOWN, VK_RETURN, true},
        {"cancel at once", 0, WM_COMMAND, IDCANCEL, false},
        {"cancel after all but one", 29, WM_COMMAND, IDCANCEL, false},
        {"cancel after the request", 30, WM_COMMAND, IDCANCEL, false},
        {"cancel by any notification", 0, WM_COMMAND, MAKEWPARAM(IDCANCEL, BN_SETFOCUS), false},
        {"Escape", 0, WM_KEYDOWN, VK_ESCAPE, false},
        {"close button", 0, WM_SYSCOMMAND, SC_CLOSE, false},
    };
    for (const auto& way : kWays) {
        SCOPED_TRACE(way.name);
        Open();
        PassSeconds(way.afterSeconds);
        calls.Clear();
        ASSERT_EQ(Leave(way.message, way.wParam), way.shutsDown ? IDOK : IDCANCEL);
        if (way.shutsDown) {
            EXPECT_THAT(Calls(), ElementsAre(kRequest, "KillTimer main 1", "EndDialog main 1"));
        } else {
            EXPECT_THAT(calls.Calls(), ElementsAre("KillTimer main 1", "EndDialog main 2"));
        }
    }
}

TEST_F(ShutMeDownDlgTest, OtherMessagesAndCommandsGetDefaultProcessingAndTheSystemSetsTheFocus) {
    EXPECT_THAT(HandledMessages(), ElementsAre(Pair(WM_INITDIALOG, TRUE), Pair(WM_TIMER, 0)));
    EXPECT_THAT(HandledCommands(), ElementsAre(IDOK, IDCANCEL));
}

}  // namespace
