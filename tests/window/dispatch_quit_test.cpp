// The ways to ask for the window's end: at once while nothing runs, by question while a batch does.
#include "tests/window/batch_fixture.h"

#include <ostream>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct Way {
    const char* name;
    UINT message;
    WPARAM wParam;

    friend void PrintTo(const Way& way, std::ostream* out) { *out << way.name; }
};
constexpr Way kWays[] = {
    {"Button", WM_COMMAND, MAKEWPARAM(IDCANCEL, BN_CLICKED)},
    {"ButtonByAnotherNotification", WM_COMMAND, MAKEWPARAM(IDCANCEL, BN_SETFOCUS)},
    {"CloseButton", WM_SYSCOMMAND, SC_CLOSE},
    {"CloseMessage", WM_CLOSE, 0},
    {"Escape", WM_KEYDOWN, VK_ESCAPE},
};

class DispatchQuitTest : public BatchFixture, public testing::WithParamInterface<Way> {
protected:
    // Asks as the loop does with a message that it has fetched, and serves what follows.
    void Ask() {
        MSG asked = {Dialog(), GetParam().message, GetParam().wParam, 0, 0, {}};
        if (!loop.FilterMessage(asked)) ::DispatchMessageW(&asked);
        PumpPending();
    }

    const std::string kQuestion =
        MessageBoxCall("Un traitement est en cours.\r\nÊtes-vous sûr de vouloir l'interrompre ?", "0x24");
};

INSTANTIATE_TEST_SUITE_P(Ways, DispatchQuitTest, testing::ValuesIn(kWays),
                         [](const auto& test) { return std::string(test.param.name); });

TEST_P(DispatchQuitTest, EndsTheWindowAndPostsTheQuitMessageWithCodeTwo) {
    const HWND window = Dialog();
    Ask();
    EXPECT_FALSE(::IsWindow(window));
    EXPECT_EQ(Dialog(), nullptr);
    EXPECT_EQ(TakeQuitMessage(), 2);
    EXPECT_THAT(calls.Calls(), IsEmpty()) << "nothing is asked";
}

TEST_P(DispatchQuitTest, AsksFirstWhileABatchRunsAndGoesOnUnlessAnsweredYes) {
    StartEmptyBatch();
    for (const int answer : {IDNO, IDCANCEL, IDOK, 0}) {
        stopAnswer = answer;
        EXPECT_THAT(
            Recorded([&] { Ask(); }, {"MessageBoxW", "EnableWindow", "SetWindowTextW", "DestroyWindow"}),
            ElementsAre(kQuestion))
            << answer;
        EXPECT_TRUE(dialog->IsRunning()) << answer;
    }
}

TEST_P(DispatchQuitTest, StopsTheBatchWhenAnsweredYesAndTheWindowStays) {
    StartEmptyBatch();
    stopAnswer = IDYES;
    Ask();
    EXPECT_THAT(calls.Calls(), ElementsAre(kQuestion));
    EXPECT_FALSE(dialog->IsRunning());
    EXPECT_EQ(Text(IDCANCEL), L"Quitter");
    EXPECT_TRUE(IsEnabled(IDC_ADD));
    EXPECT_TRUE(::IsWindow(Dialog()));
    EXPECT_EQ(TakeQuitMessage(), -1);
    Ask();
    EXPECT_EQ(Dialog(), nullptr) << "the second time it quits";
}

}  // namespace
