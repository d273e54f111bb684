// The About dialog: its version line, and its ways out.
#include "ui/about/about_dlg.h"

#include "tests/equipment/shipped_version.h"
#include "tests/support/replaced_imports.h"
#include "tests/window/control_calls.h"
#include "tests/window/modal_dialog.h"

#include "res/resource.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;
using testing::Pair;

class AboutDlgTest : public ModalDialogTest<CAboutDlg> {
protected:
    AboutDlgTest() : ModalDialogTest(L"À propos...") {}
};

TEST_F(AboutDlgTest, IsCenteredBeforeItShowsTheVersionOfTheProgramsOwnResource) {
    CallRecord steps;
    const ControlCalls recorded(steps);
    Open();
    Leave(WM_COMMAND, IDCANCEL);
    EXPECT_THAT(steps.Calls(),
                ElementsAre("SetWindowPos main", CallText("SetWindowTextW 1021", shipped::kAboutLine)));
}

TEST_F(AboutDlgTest, EndsWithTheResultOfEachWayOut) {
    static constexpr struct {
        const char* name;
        UINT message;
        WPARAM wParam;
        INT_PTR result;
    } kWays[] = {
        {"OK", WM_COMMAND, IDOK, 1},          {"OK by any notification", WM_COMMAND, MAKEWPARAM(IDOK, 7), 1},
        {"cancel", WM_COMMAND, IDCANCEL, 2},  {"Enter", WM_KEYDOWN, VK_RETURN, 1},
        {"Escape", WM_KEYDOWN, VK_ESCAPE, 2}, {"close button", WM_SYSCOMMAND, SC_CLOSE, 2},
    };
    for (const auto& way : kWays) {
        SCOPED_TRACE(way.name);
        Open();
        EXPECT_EQ(Focused(), ::GetDlgItem(window, IDOK));
        ASSERT_EQ(Leave(way.message, way.wParam), way.result);
    }
}

TEST_F(AboutDlgTest, OtherMessagesAndCommandsGetDefaultProcessingAndTheSystemSetsTheFocus) {
    EXPECT_THAT(HandledMessages(), ElementsAre(Pair(WM_INITDIALOG, TRUE)));
    EXPECT_THAT(HandledCommands(), ElementsAre(IDOK, IDCANCEL));
}

}  // namespace
