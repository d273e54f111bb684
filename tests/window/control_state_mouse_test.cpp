// Clicks that no enabled control takes: on a disabled edit they enable it and check its box.
#include "tests/window/control_calls.h"
#include "tests/window/forwarding_import.h"
#include "tests/window/held_batch_fixture.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct EditWithBox {
    int edit;
    int box;
};
constexpr EditWithBox kEdits[] = {{IDC_PAGES, IDC_PAGES_CHECK},
                                  {IDC_RESOLUTION, IDC_RESOLUTION_CHECK},
                                  {IDC_OUTPUT_FOLDER, IDC_OUTPUT_FOLDER_CHECK}};

class ControlStateMouseTest : public HeldBatchFixture {
protected:
    // A click in the dialog's client area, as the system hands it on when no enabled control is there.
    void ClickAt(int x, int y, WPARAM keys = MK_LBUTTON) {
        ::SendMessageW(Dialog(), WM_LBUTTONDOWN, keys, MAKELPARAM(x, y));
    }
    // Of a control, in the dialog's client area.
    [[nodiscard]] RECT Area(int id) const {
        RECT area = {};
        ::GetWindowRect(Control(id), &area);
        ::MapWindowPoints(nullptr, Dialog(), reinterpret_cast<POINT*>(&area), 2);
        return area;
    }
    void ClickInto(int id) {
        const RECT area = Area(id);
        ClickAt((area.left + area.right) / 2, (area.top + area.bottom) / 2);
    }
    void Move(int id, int x, int y) {
        ::SetWindowPos(Control(id), nullptr, x, y, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    }
    void TurnOff(const EditWithBox& pair) {
        ::EnableWindow(Control(pair.edit), FALSE);
        ::CheckDlgButton(Dialog(), pair.box, BST_UNCHECKED);
    }
    [[nodiscard]] std::vector<std::string> ClickRecorded(int id) {
        const RECT area = Area(id);
        calls.Clear();
        const ControlCalls recorded(calls);
        ClickAt(area.left, area.top);
        return Only({"EnableWindow", "CheckDlgButton", "SetFocus", "SetWindowTextW"}, calls.Calls());
    }
};

TEST_F(ControlStateMouseTest, AClickOnADisabledEditEnablesItChecksItsBoxAndFocusesIt) {
    // The output folder comes last: its option would go off again when its empty edit is left.
    for (const EditWithBox& pair : kEdits) {
        ClickInto(pair.edit);
        EXPECT_TRUE(IsEnabled(pair.edit)) << pair.edit;
        EXPECT_TRUE(IsChecked(pair.box)) << pair.edit;
        EXPECT_EQ(::GetFocus(), Control(pair.edit));
    }
}

TEST_F(ControlStateMouseTest, TheStepsComeInTheirOrder) {
    EXPECT_THAT(ClickRecorded(IDC_PAGES),
                ElementsAre("EnableWindow 1014 1", "CheckDlgButton 1034 1", "SetFocus 1014"));
    EXPECT_THAT(ClickRecorded(IDC_RESOLUTION),
                ElementsAre("EnableWindow 1032 1", "CheckDlgButton 1033 1", "SetFocus 1032"));
    EXPECT_THAT(ClickRecorded(IDC_OUTPUT_FOLDER), ElementsAre("EnableWindow 1027 1", "CheckDlgButton 1026 1",
                                                              "EnableWindow 1028 1", "SetFocus 1027"));
}

TEST_F(ControlStateMouseTest, AClickOnTheResolutionEditFillsNothingIn) {
    ClickInto(IDC_RESOLUTION);
    EXPECT_EQ(Text(IDC_RESOLUTION), L"");
}

TEST_F(ControlStateMouseTest, AClickOnTheOutputFolderLeavesTheDestinationButton) {
    SetText(IDC_OUTPUT_FOLDER, folder.Path().c_str());
    ::EnableWindow(Control(IDC_OPEN_DESTINATION), FALSE);
    ClickInto(IDC_OUTPUT_FOLDER);
    EXPECT_TRUE(IsEnabled(IDC_BROWSE));
    EXPECT_FALSE(IsEnabled(IDC_OPEN_DESTINATION));
}

TEST_F(ControlStateMouseTest, LeftAndTopEdgesBelongToAnEditRightAndBottomEdgesDoNot) {
    for (const EditWithBox& pair : kEdits) {
        const RECT area = Area(pair.edit);
        const struct {
            const char* name;
            int x, y;
            bool inside;
        } points[] = {
            {"upper left corner", area.left, area.top, true},
            {"last inside", area.right - 1, area.bottom - 1, true},
            {"upper right", area.right - 1, area.top, true},
            {"lower left", area.left, area.bottom - 1, true},
            {"left of it", area.left - 1, area.top, false},
            {"above it", area.left, area.top - 1, false},
            {"right edge", area.right, area.top, false},
            {"bottom edge", area.left, area.bottom, false},
        };
        for (const auto& point : points) {
            TurnOff(pair);
            ClickAt(point.x, point.y);
            EXPECT_EQ(IsEnabled(pair.edit), point.inside) << pair.edit << ' ' << point.name;
            EXPECT_EQ(IsChecked(pair.box), point.inside) << pair.edit << ' ' << point.name;
        }
    }
}

TEST_F(ControlStateMouseTest, AClickOnTheBackgroundOrAnotherDisabledControlDoesNothing) {
    const ControlCalls recorded(calls);
    const RECT convert = Area(IDOK);
    const RECT browse = Area(IDC_BROWSE);
    ClickAt(0, 0);
    ClickAt(convert.left + 1, convert.top + 1);
    ClickAt(browse.left + 1, browse.top + 1);
    EXPECT_THAT(calls.Calls(), IsEmpty());
}

TEST_F(ControlStateMouseTest, AnEnabledEditIsLeftAsItIs) {
    for (const EditWithBox& pair : kEdits) {
        ::EnableWindow(Control(pair.edit), TRUE);
        EXPECT_THAT(ClickRecorded(pair.edit), IsEmpty()) << pair.edit;
        EXPECT_FALSE(IsChecked(pair.box)) << pair.edit;
    }
}

TEST_F(ControlStateMouseTest, CoordinatesAreSigned) {
    Move(IDC_PAGES, -60, -40);
    ClickAt(-60, -40);
    EXPECT_TRUE(IsEnabled(IDC_PAGES));
}

TEST_F(ControlStateMouseTest, TheFirstEditThatContainsThePointDecides) {
    // All three at one place: pages come before the resolution, which comes before the folder.
    for (const EditWithBox& pair : kEdits) Move(pair.edit, 5, 5);
    ClickAt(6, 6);
    EXPECT_TRUE(IsEnabled(IDC_PAGES));
    EXPECT_FALSE(IsEnabled(IDC_RESOLUTION));
    EXPECT_FALSE(IsEnabled(IDC_OUTPUT_FOLDER));
    ClickAt(6, 6);
    EXPECT_FALSE(IsEnabled(IDC_RESOLUTION)) << "the enabled edit in front still decides";
    Move(IDC_PAGES, 300, 300);
    ClickAt(6, 6);
    EXPECT_TRUE(IsEnabled(IDC_RESOLUTION));
    EXPECT_FALSE(IsEnabled(IDC_OUTPUT_FOLDER));
}

TEST_F(ControlStateMouseTest, TheKeyFlagsDoNotMatter) {
    const RECT area = Area(IDC_PAGES);
    ClickAt(area.left, area.top, MK_LBUTTON | MK_CONTROL | MK_SHIFT);
    EXPECT_TRUE(IsEnabled(IDC_PAGES));
}

TEST_F(ControlStateMouseTest, DuringABatchAClickStillEnablesADisabledEditWhoseBoxStaysDisabled) {
    StartEmptyBatch();
    for (const EditWithBox& pair : kEdits) {
        ClickInto(pair.edit);
        EXPECT_TRUE(IsEnabled(pair.edit)) << pair.edit;
        EXPECT_TRUE(IsChecked(pair.box)) << pair.edit;
        EXPECT_FALSE(IsEnabled(pair.box)) << pair.edit;
    }
    EXPECT_TRUE(IsEnabled(IDC_BROWSE));
}

int g_conversions = 0;
int g_lastThatSucceeds = 0;
BOOL WINAPI ConvertToClient(HWND window, LPPOINT point) {
    return ++g_conversions <= g_lastThatSucceeds ? original<&ConvertToClient>(window, point) : FALSE;
}

TEST_F(ControlStateMouseTest, TheSecondCornerIsConvertedOnlyWhenTheFirstWas) {
    const auto convert = ReplaceAndForward<&ConvertToClient>("ScreenToClient");
    g_conversions = 0;
    g_lastThatSucceeds = 0;
    ClickAt(0, 0);
    EXPECT_EQ(g_conversions, 3) << "one try for each edit";
    g_conversions = 0;
    g_lastThatSucceeds = 6;
    ClickAt(0, 0);
    EXPECT_EQ(g_conversions, 6);
}

TEST_F(ControlStateMouseTest, WithoutConversionThePointIsLookedForOnTheScreen) {
    const auto convert = ReplaceAndForward<&ConvertToClient>("ScreenToClient");
    g_conversions = g_lastThatSucceeds = 0;
    RECT screen = {};
    ::GetWindowRect(Control(IDC_PAGES), &screen);
    ClickAt(screen.left, screen.top);
    EXPECT_TRUE(IsEnabled(IDC_PAGES));
}

}  // namespace
