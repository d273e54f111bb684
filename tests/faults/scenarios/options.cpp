// The rules that tie check boxes to edits, the limits of the resolution, the filter of the page edit, and the
// click on an edit that is disabled.
#include "tests/faults/scenarios/scenarios.h"

namespace {

// A click that no enabled control takes lands on the dialog, at the control's place.
void ClickDisabled(const User& user, int id) {
    RECT place = {};
    ::GetWindowRect(user.Control(id), &place);
    POINT point = {place.left + 2, place.top + 2};
    ::ScreenToClient(user.Window(), &point);
    User::Send(user.Window(), WM_LBUTTONDOWN, 0, MAKELPARAM(point.x, point.y));
}

void Use(User& user, CallWatch& watch, Facts& facts) {
    Open(user);
    watch.Begin();
    user.Press(IDC_PAGES_CHECK);
    User::Send(user.Control(IDC_PAGES), WM_CHAR, L'7');
    User::Send(user.Control(IDC_PAGES), WM_CHAR, L'x');
    User::Send(user.Control(IDC_PAGES), WM_KEYDOWN, VK_HOME);
    user.Press(IDC_RESOLUTION_CHECK);
    user.Press(IDC_NO_TEXT);
    AddControlFacts(user, "checked", facts);
    user.SetText(IDC_RESOLUTION, L"9000");
    User::Send(user.Window(), WM_COMMAND, MAKEWPARAM(IDC_RESOLUTION, EN_KILLFOCUS),
               reinterpret_cast<LPARAM>(user.Control(IDC_RESOLUTION)));
    AddControlFacts(user, "clamped", facts);
    user.Press(IDC_PAGES_CHECK);
    user.Press(IDC_RESOLUTION_CHECK);
    user.Press(IDC_NO_TEXT);
    AddControlFacts(user, "unchecked", facts);
    ClickDisabled(user, IDC_OUTPUT_FOLDER);  // the last of those that are looked at
    AddControlFacts(user, "clicked", facts);
    watch.End();
}

std::vector<Rule> Rules() {
    return {
        OnlyTheEndCounts(".* GetWindowLongPtrW .*", "as in all scenarios: a message is lost"),
        When("ui Beep #1", "a beep that fails is not heard", {"beeps: "}),
        // Check boxes and what follows them.
        When("ui IsDlgButtonChecked main PAGES_CHECK #3",
             "a check box that does not answer is unchecked: the pages edit is disabled again",
             {"(checked|clamped).PAGES: -S 7"}),
        When("ui (GetDlgItem main RESOLUTION|IsDlgButtonChecked main RESOLUTION_CHECK) #1",
             "the resolution edit is neither enabled nor filled in",
             {"checked.RESOLUTION: -S", "clamped.RESOLUTION: -S 6000"}),
        When("ui EnableWindow RESOLUTION #1", "the resolution edit is filled in and stays disabled",
             {"checked.RESOLUTION: -S 300", "clamped.RESOLUTION: -S 6000"}),
        When("ui SetWindowTextW RESOLUTION #1", "the resolution edit is not filled in",
             {"checked.RESOLUTION: ES"}),
        When("ui (GetDlgItem main LINES|IsDlgButtonChecked main NO_TEXT|EnableWindow LINES) #1",
             "text by lines stays enabled", {"(checked|clamped).LINES: ES"}),
        When("ui (GetDlgItem main|GetWindowTextLengthW|GetWindowTextW|SetWindowTextW) RESOLUTION #2",
             "a resolution that cannot be read or written stays as it was typed",
             {"clamped.RESOLUTION: ES 9000", "(unchecked|clicked).RESOLUTION: -S 9000"}),
        When("ui (GetDlgItem main RESOLUTION #3|EnableWindow RESOLUTION #2)",
             "the resolution edit stays enabled", {"(unchecked|clicked).RESOLUTION: ES 6000"}),
        When("ui (GetDlgItem main|EnableWindow) LINES #2", "text by lines stays disabled",
             {"(unchecked|clicked).LINES: -S"}),
        // The click on the disabled edit.
        When("ui (GetDlgItem main OUTPUT_FOLDER #1|GetWindowRect OUTPUT_FOLDER #1|ScreenToClient main #5)",
             "the click is taken for one beside the edit",
             {"clicked.OUTPUT_FOLDER_CHECK: ES", "clicked.(OUTPUT_FOLDER|BROWSE): -S"}),
        When("ui (GetDlgItem main OUTPUT_FOLDER #2|EnableWindow OUTPUT_FOLDER #1)", "the edit stays disabled",
             {"clicked.OUTPUT_FOLDER: -S"}),
        When("ui CheckDlgButton main OUTPUT_FOLDER_CHECK #1", "the check box stays unchecked",
             {"clicked.OUTPUT_FOLDER_CHECK: ES"}),
        When("ui (GetDlgItem main|EnableWindow) BROWSE #1", "the browser stays disabled",
             {"clicked.BROWSE: -S"}),
        When("ui .*", "the control is as it would be after the call"),
    };
}

}  // namespace

std::vector<Scenario> OptionScenarios() {
    return {{.name = "options",
             .use = &Use,
             .usual = Usually({{{"beeps", "400 100"}},
                               Idle("checked", {"PAGES: ES 7", "PAGES_CHECK: ES C", "RESOLUTION: ES 300",
                                                "RESOLUTION_CHECK: ES C", "NO_TEXT: ES C", "LINES: -S"}),
                               Idle("clamped", {"PAGES: ES 7", "PAGES_CHECK: ES C", "RESOLUTION: ES 6000",
                                                "RESOLUTION_CHECK: ES C", "NO_TEXT: ES C", "LINES: -S"}),
                               Idle("unchecked", {"PAGES: -S 7", "RESOLUTION: -S 6000"}),
                               Idle("clicked", {"PAGES: -S 7", "RESOLUTION: -S 6000", "OUTPUT_FOLDER: ES",
                                                "OUTPUT_FOLDER_CHECK: ES C", "BROWSE: ES"})}),
             .rules = Rules()}};
}
