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
    user.Notify(IDC_RESOLUTION, EN_KILLFOCUS);
    AddControlFacts(user, "clamped", facts);
    user.Press(IDC_PAGES_CHECK);
    user.Press(IDC_RESOLUTION_CHECK);
    user.Press(IDC_NO_TEXT);
    AddControlFacts(user, "unchecked", facts);
    ClickDisabled(user, IDC_PAGES);
    ClickDisabled(user, IDC_RESOLUTION);
    ClickDisabled(user, IDC_OUTPUT_FOLDER);
    AddControlFacts(user, "clicked", facts);
    watch.End();
}

std::vector<Rule> Rules() {
    return {
        {.call = ".* GetWindowLongPtrW .*",
         .why = "as in all scenarios: a message is lost",
         .onlyTheEndCounts = true},
        {.call = "ui Beep #1", .why = "a beep that fails is not heard", .changes = {Becomes("beeps", "")}},
        // Check boxes and what follows them.
        {.call = "ui IsDlgButtonChecked main 1034 #3",
         .why = "a check box that does not answer is unchecked: the pages edit is disabled again",
         .changes = {Becomes("(checked|clamped).1014", "-S 7")}},
        {.call = "ui (GetDlgItem main 1032|IsDlgButtonChecked main 1033) #1",
         .why = "the resolution edit is neither enabled nor filled in",
         .changes = {Becomes("checked.1032", "-S"), Becomes("clamped.1032", "-S 6000")}},
        {.call = "ui EnableWindow 1032 #1",
         .why = "the resolution edit is filled in and stays disabled",
         .changes = {Becomes("checked.1032", "-S 300"), Becomes("clamped.1032", "-S 6000")}},
        {.call = "ui SetWindowTextW 1032 #1",
         .why = "the resolution edit is not filled in",
         .changes = {Becomes("checked.1032", "ES")}},
        {.call = "ui (GetDlgItem main 1016|IsDlgButtonChecked main 1015|EnableWindow 1016) #1",
         .why = "text by lines stays enabled",
         .changes = {Becomes("(checked|clamped).1016", "ES")}},
        {.call = "ui (GetDlgItem main|GetWindowTextLengthW|GetWindowTextW|SetWindowTextW) 1032 #2",
         .why = "a resolution that cannot be read or written stays as it was typed",
         .changes = {Becomes("clamped.1032", "ES 9000"), Becomes("unchecked.1032", "-S 9000")}},
        {.call = "ui (GetDlgItem main 1032 #3|EnableWindow 1032 #2)",
         .why = "the resolution edit stays enabled, so that a click on it does not check its check box",
         .changes = {Becomes("unchecked.1032", "ES 6000"), Becomes("clicked.1033", "ES")}},
        {.call = "ui (GetDlgItem main|EnableWindow) 1016 #2",
         .why = "text by lines stays disabled",
         .changes = {Becomes("(unchecked|clicked).1016", "-S")}},
        // Clicks on the disabled edits.
        {.call = "ui (GetDlgItem main 1014 #7|GetWindowRect 1014 #1|ScreenToClient main #1)",
         .why = "the click is taken for one beside the edit",
         .changes = {Becomes("clicked.1014", "-S 7"), Becomes("clicked.1034", "ES")}},
        {.call = "ui (GetDlgItem main 1014 #8|EnableWindow 1014 #7)",
         .why = "the edit stays disabled",
         .changes = {Becomes("clicked.1014", "-S 7")}},
        {.call = "ui CheckDlgButton main 1034 #1",
         .why = "the check box stays unchecked",
         .changes = {Becomes("clicked.1034", "ES")}},
        {.call = "ui (GetDlgItem main 1032 #4|GetWindowRect 1032 #1|ScreenToClient main #[45])",
         .why = "the click is taken for one beside the edit, or on the one before it",
         .changes = {Becomes("clicked.1032", "-S 6000"), Becomes("clicked.1033", "ES")}},
        {.call = "ui (GetDlgItem main 1032 #5|EnableWindow 1032 #3)",
         .why = "the edit stays disabled",
         .changes = {Becomes("clicked.1032", "-S 6000")}},
        {.call = "ui CheckDlgButton main 1033 #1",
         .why = "the check box stays unchecked",
         .changes = {Becomes("clicked.1033", "ES")}},
        {.call = "ui (GetDlgItem main 1027 #1|GetWindowRect 1027 #1|ScreenToClient main #11)",
         .why = "the click is taken for one beside the edit",
         .changes = {Becomes("clicked.1026", "ES"), Becomes("clicked.(1027|1028)", "-S")}},
        {.call = "ui (GetDlgItem main 1027 #2|EnableWindow 1027 #1)",
         .why = "the edit stays disabled",
         .changes = {Becomes("clicked.1027", "-S")}},
        {.call = "ui CheckDlgButton main 1026 #1",
         .why = "the check box stays unchecked",
         .changes = {Becomes("clicked.1026", "ES")}},
        {.call = "ui (GetDlgItem main|EnableWindow) 1028 #1",
         .why = "the browser stays disabled",
         .changes = {Becomes("clicked.1028", "-S")}},
        {.call = "ui .*", .why = "the control is as it would be after the call"},
    };
}

}  // namespace

Scenario OptionsScenario() {
    return {"options", [](Platform&) {}, &Use,
            Together({QuietRun(),
                      IdleControls("checked"),
                      {{"checked.1014", "ES 7"},
                       {"checked.1034", "ES C"},
                       {"checked.1032", "ES 300"},
                       {"checked.1033", "ES C"},
                       {"checked.1015", "ES C"},
                       {"checked.1016", "-S"},
                       {"beeps", "400 100"}},
                      IdleControls("clamped"),
                      {{"clamped.1014", "ES 7"},
                       {"clamped.1034", "ES C"},
                       {"clamped.1032", "ES 6000"},
                       {"clamped.1033", "ES C"},
                       {"clamped.1015", "ES C"},
                       {"clamped.1016", "-S"}},
                      IdleControls("unchecked"),
                      {{"unchecked.1014", "-S 7"}, {"unchecked.1032", "-S 6000"}},
                      IdleControls("clicked"),
                      {{"clicked.1014", "ES 7"},
                       {"clicked.1034", "ES C"},
                       {"clicked.1032", "ES 6000"},
                       {"clicked.1033", "ES C"},
                       {"clicked.1026", "ES C"},
                       {"clicked.1027", "ES"},
                       {"clicked.1028", "ES"}}}),
            Rules()};
}
