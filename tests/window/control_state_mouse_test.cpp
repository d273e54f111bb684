// Clicks that no enabled control takes: on a disabled edit they enable it and check its box.
#include "tests/window/main_window_fixture.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct EditWithCheckBox {
    int edit;
    int checkBox;
};
constexpr EditWithCheckBox kEdits[] = {{IDC_PAGES, IDC_PAGES_CHECK},
                                       {IDC_RESOLUTION, IDC_RESOLUTION_CHECK},
                                       {IDC_OUTPUT_FOLDER, IDC_OUTPUT_FOLDER_CHECK}};

class ControlStateMouseTest : public MainWindowFixture {
protected:
    ControlStateMouseTest() { Create(); }

    // A click in the dialog's client area, as the system hands it on when no enabled control is there.
    void ClickAt(LONG x, LONG y, WPARAM keys = MK_LBUTTON) {
        ::SendMessageW(Dialog(), WM_LBUTTONDOWN, keys, MAKELPARAM(x, y));
    }
    // Of a control, in the dialog's client area.
    [[nodiscard]] RECT Area(int id) const {
        RECT area = {};
        ::GetWindowRect(Control(id), &area);
        ::MapWindowPoints(nullptr, Dialog(), reinterpret_cast<POINT*>(&area), 2);
        return area;
    }
    void Move(int id, int x, int y) {
        ::SetWindowPos(Control(id), nullptr, x, y, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    }
    // What a click on the upper left corner of the control does.
    [[nodiscard]] std::vector<std::string> ClickRecorded(int id) {
        const RECT area = Area(id);
        return Recorded([&] { ClickAt(area.left, area.top); });
    }
};

TEST_F(ControlStateMouseTest, AClickOnADisabledEditEnablesItChecksItsBoxAndFocusesIt) {
    // A folder that exists: neither this nor the empty resolution changes anything else.
    SetText(IDC_OUTPUT_FOLDER, folder.Path().c_str());
    ::EnableWindow(Control(IDC_OPEN_DESTINATION), FALSE);
    EXPECT_THAT(ClickRecorded(IDC_PAGES),
                ElementsAre("EnableWindow 1014 1", "CheckDlgButton 1034 1", "SetFocus 1014"));
    EXPECT_THAT(ClickRecorded(IDC_RESOLUTION),
                ElementsAre("EnableWindow 1032 1", "CheckDlgButton 1033 1", "SetFocus 1032"));
    EXPECT_THAT(ClickRecorded(IDC_OUTPUT_FOLDER), ElementsAre("EnableWindow 1027 1", "CheckDlgButton 1026 1",
                                                              "EnableWindow 1028 1", "SetFocus 1027"));
    EXPECT_EQ(::GetFocus(), Control(IDC_OUTPUT_FOLDER));
}

TEST_F(ControlStateMouseTest, LeftAndTopEdgesBelongToAnEditRightAndBottomEdgesDoNot) {
    for (const EditWithCheckBox& pair : kEdits) {
        const auto [left, top, right, bottom] = Area(pair.edit);
        for (const LONG x : {left - 1, left, right - 1, right}) {
            for (const LONG y : {top - 1, top, bottom - 1, bottom}) {
                ::EnableWindow(Control(pair.edit), FALSE);
                Check(pair.checkBox, false);
                ClickAt(x, y);
                const bool inside = (x == left || x == right - 1) && (y == top || y == bottom - 1);
                EXPECT_EQ(IsEnabled(pair.edit), inside) << pair.edit << " at " << x << ',' << y;
                EXPECT_EQ(IsChecked(pair.checkBox), inside) << pair.edit << " at " << x << ',' << y;
            }
        }
    }
}

TEST_F(ControlStateMouseTest, AClickOnTheBackgroundAnotherDisabledControlOrAnEnabledEditDoesNothing) {
    EXPECT_THAT(Recorded([&] { ClickAt(0, 0); }), IsEmpty());
    EXPECT_THAT(ClickRecorded(IDOK), IsEmpty());
    EXPECT_THAT(ClickRecorded(IDC_BROWSE), IsEmpty());
    for (const EditWithCheckBox& pair : kEdits) {
        ::EnableWindow(Control(pair.edit), TRUE);
        EXPECT_THAT(ClickRecorded(pair.edit), IsEmpty()) << pair.edit;
    }
}

TEST_F(ControlStateMouseTest, CoordinatesAreSignedAndTheKeyFlagsDoNotMatter) {
    Move(IDC_PAGES, -60, -40);
    ClickAt(-60, -40, MK_LBUTTON | MK_CONTROL | MK_SHIFT);
    EXPECT_TRUE(IsEnabled(IDC_PAGES));
}

TEST_F(ControlStateMouseTest, TheFirstEditThatContainsThePointDecides) {
    // All three at one place: pages come before the resolution, which comes before the folder.
    for (const EditWithCheckBox& pair : kEdits) Move(pair.edit, 5, 5);
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

TEST_F(ControlStateMouseTest, TheSecondCornerIsConvertedOnlyWhenTheFirstWas) {
    RECT screen = {};
    ::GetWindowRect(Control(IDC_PAGES), &screen);
    int conversions = 0;
    bool succeeds = true;
    const auto convert = REPLACE_IMPORT(ScreenToClient, [&](auto original, HWND window, LPPOINT point) {
        ++conversions;
        return succeeds ? original(window, point) : FALSE;
    });
    ClickAt(0, 0);
    EXPECT_EQ(conversions, 6) << "two corners of each edit";
    conversions = 0;
    succeeds = false;
    ClickAt(0, 0);
    EXPECT_EQ(conversions, 3) << "one try for each edit";
    ClickAt(screen.left, screen.top);
    EXPECT_TRUE(IsEnabled(IDC_PAGES)) << "without conversion the point is looked for on the screen";
}

}  // namespace
