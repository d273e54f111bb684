// Quitting: at once while nothing runs, by question while a batch does.
#include "tests/window/control_calls.h"
#include "tests/window/held_batch_fixture.h"

#include <map>
#include <ostream>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kQuestion[] =
    "MessageBoxW owner=main text=Un traitement est en cours.\r\nÊtes-vous sûr de vouloir l'interrompre ? "
    "caption=Talvenor type=0x24";

// The ways to ask for the window's end.
struct Way {
    const char* name;
    void (*ask)(HWND dialog, CMessageLoop& loop);

    friend void PrintTo(const Way& way, std::ostream* out) { *out << way.name; }
};
const Way kWays[] = {
    {"Button",
     [](HWND dialog, CMessageLoop&) { ::SendMessageW(::GetDlgItem(dialog, IDCANCEL), BM_CLICK, 0, 0); }},
    {"ButtonByAnotherNotification",
     [](HWND dialog, CMessageLoop&) {
         ::SendMessageW(dialog, WM_COMMAND, MAKEWPARAM(IDCANCEL, BN_SETFOCUS), 0);
     }},
    {"CloseBox", [](HWND dialog, CMessageLoop&) { ::SendMessageW(dialog, WM_SYSCOMMAND, SC_CLOSE, 0); }},
    {"CloseMessage", [](HWND dialog, CMessageLoop&) { ::SendMessageW(dialog, WM_CLOSE, 0, 0); }},
    {"Escape",
     [](HWND dialog, CMessageLoop& loop) {
         MSG escape = {dialog, WM_KEYDOWN, VK_ESCAPE, 1, 0, {}};
         EXPECT_TRUE(loop.FilterMessage(escape));
     }},
};

class DispatchQuitTest : public HeldBatchFixture, public testing::WithParamInterface<Way> {
protected:
    // Asks and serves what follows.
    void Ask() {
        GetParam().ask(Dialog(), loop);
        PumpPending();
    }
};

INSTANTIATE_TEST_SUITE_P(Ways, DispatchQuitTest, testing::ValuesIn(kWays),
                         [](const auto& test) { return std::string(test.param.name); });

TEST_P(DispatchQuitTest, EndsTheWindowAndPostsTheQuitMessageWithCodeTwo) {
    const HWND window = Dialog();
    Ask();
    EXPECT_FALSE(::IsWindow(window));
    EXPECT_EQ(Dialog(), nullptr);
    MSG message = {};
    ASSERT_TRUE(::PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    EXPECT_EQ(message.wParam, 2u);
    EXPECT_THAT(calls.Calls(), IsEmpty()) << "nothing is asked";
}

TEST_P(DispatchQuitTest, AsksFirstWhileABatchRunsAndGoesOnWhenAnsweredNo) {
    StartEmptyBatch();
    boxAnswer = IDNO;
    {
        const ControlCalls recorded(calls);
        Ask();
    }
    EXPECT_THAT(Only({"MessageBoxW", "EnableWindow", "SetWindowTextW", "DestroyWindow"}, calls.Calls()),
                ElementsAre(kQuestion));
    EXPECT_TRUE(dialog->IsRunning());
    EXPECT_EQ(Text(IDCANCEL), L"Arrêter ");
}

TEST_P(DispatchQuitTest, StopsTheBatchWhenAnsweredYesAndTheWindowStays) {
    StartEmptyBatch();
    boxAnswer = IDYES;
    Ask();
    EXPECT_THAT(calls.Calls(), ElementsAre(kQuestion));
    EXPECT_FALSE(dialog->IsRunning());
    EXPECT_EQ(Text(IDCANCEL), L"Quitter");
    EXPECT_TRUE(IsEnabled(IDC_ADD));
    EXPECT_TRUE(::IsWindow(Dialog()));
    MSG message = {};
    EXPECT_FALSE(::PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_NOREMOVE));
    Ask();
    EXPECT_EQ(Dialog(), nullptr) << "the second time it quits";
}

// The windows of the desktop while a stop is asked for.
struct Desktop {
    static inline const HWND kOther = reinterpret_cast<HWND>(0x10);
    static inline const HWND kConverters = reinterpret_cast<HWND>(0x20);
    static inline const HWND kConvertersSecond = reinterpret_cast<HWND>(0x30);
    static inline std::vector<HWND> windows;
    static inline std::map<HWND, DWORD> owners;
    static inline CallRecord* record = nullptr;
    static inline const CMainDlg* dialog = nullptr;
    static inline HWND addButton = nullptr;

    static BOOL WINAPI Enumerate(WNDENUMPROC visit, LPARAM parameter) {
        record->Add(std::string("EnumWindows") + (dialog->IsRunning() ? " running" : " stopped") +
                    (::IsWindowEnabled(addButton) ? " enabled" : " disabled"));
        for (const HWND window : windows) {
            if (!visit(window, parameter)) {
                record->Add("enumeration ended");
                return FALSE;
            }
        }
        return TRUE;
    }
    static DWORD WINAPI Owner(HWND window, LPDWORD process) {
        *process = owners[window];
        return 1;
    }
    static BOOL WINAPI Notify(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        record->Add("send " + std::to_string(reinterpret_cast<ULONG_PTR>(window)) + ' ' +
                    std::to_string(message) + ' ' + std::to_string(wParam) + ' ' + std::to_string(lParam));
        return TRUE;
    }
};

class DispatchStopTest : public HeldBatchFixture {
protected:
    DispatchStopTest() {
        Desktop::record = &calls;
        Desktop::dialog = dialog.get();
        Desktop::addButton = Control(IDC_ADD);
        Desktop::owners = {{Desktop::kOther, HeldConverter::kProcessId + 1},
                           {Desktop::kConverters, HeldConverter::kProcessId},
                           {Desktop::kConvertersSecond, HeldConverter::kProcessId}};
        Drop({L"C:\\in\\a.pdf"});
        StartBatch();
    }

    std::vector<std::string> StopAmong(std::vector<HWND> windows) {
        Desktop::windows = std::move(windows);
        const ReplacedImport enumerate("EnumWindows", &Desktop::Enumerate);
        const ReplacedImport owner("GetWindowThreadProcessId", &Desktop::Owner);
        const ReplacedImport notify("SendNotifyMessageW", &Desktop::Notify);
        calls.Clear();
        StopBatch();
        return calls.Calls();
    }
};

TEST_F(DispatchStopTest, AsksTheConvertersFirstWindowToCloseAndLooksNoFurther) {
    // WM_SYSCOMMAND is 274, SC_CLOSE 61536.
    EXPECT_THAT(
        StopAmong({Desktop::kOther, Desktop::kConverters, Desktop::kConvertersSecond, Desktop::kOther}),
        ElementsAre(kQuestion, "EnumWindows stopped disabled", "send 32 274 61536 0", "enumeration ended"));
    EXPECT_TRUE(IsEnabled(IDC_ADD));
    EXPECT_FALSE(dialog->IsRunning());
}

TEST_F(DispatchStopTest, WithoutAWindowOfTheConvertersNothingFurtherHappens) {
    EXPECT_THAT(StopAmong({Desktop::kOther}), ElementsAre(kQuestion, "EnumWindows stopped disabled"));
    EXPECT_TRUE(IsEnabled(IDC_ADD));
}

TEST_F(DispatchStopTest, OnlyYesStops) {
    for (const int answer : {IDNO, IDCANCEL, IDOK, 0}) {
        boxAnswer = answer;
        Command(IDCANCEL, BN_CLICKED);
        EXPECT_TRUE(dialog->IsRunning()) << answer;
        EXPECT_FALSE(IsEnabled(IDC_ADD)) << answer;
    }
}

TEST_F(DispatchStopTest, AStoppedBatchsWorkerIsNotWaitedFor) {
    StopBatch();
    EXPECT_TRUE(dialog->HasWorker());
    EXPECT_TRUE(IsEnabled(IDOK)) << "another batch could be started beside it";
}

}  // namespace
