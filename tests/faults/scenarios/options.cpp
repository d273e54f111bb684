// The rules that tie boxes to edits, the limits of the resolution, the filter of the page edit, and the click
// on an edit that is disabled.
#include "tests/faults/scenarios/scenarios.h"
#include "tests/faults/scenarios/usual.h"

#include "tests/faults/harness/window_facts.h"

#include "res/resource.h"

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
    AddControlFacts(user, "ticked", facts);
    user.SetText(IDC_RESOLUTION, L"9000");
    user.Notify(IDC_RESOLUTION, EN_KILLFOCUS);
    AddControlFacts(user, "clamped", facts);
    user.Press(IDC_PAGES_CHECK);
    user.Press(IDC_RESOLUTION_CHECK);
    user.Press(IDC_NO_TEXT);
    AddControlFacts(user, "unticked", facts);
    ClickDisabled(user, IDC_PAGES);
    ClickDisabled(user, IDC_RESOLUTION);
    ClickDisabled(user, IDC_OUTPUT_FOLDER);
    AddControlFacts(user, "clicked", facts);
    watch.End();
}

// A box and its edit, as far as one depends on the other.
Rule Pair(const std::string& ids) {
    return {.call = "ui .* (" + ids + ") #.*",
            .why = "a box and its edit stay as they were, or lose what is read from one for the other",
            .changes = {MayBecome("\\w+\\.(" + ids + ")", "[E-]S.*")}};
}

std::vector<Rule> Rules() {
    return {
        {.call = ".* GetWindowLongPtrW .*",
         .why = "as in all scenarios: a message is lost",
         .onlyTheEndCounts = true},
        Pair("1014|1034"),
        Pair("1032|1033"),
        Pair("1015|1016"),
        Pair("1026|1027|1028"),
        {.call = "ui ScreenToClient main #.*",
         .why = "the click is taken for one beside the edit",
         .changes = {MayBecome("clicked\\.(1014|1034|1032|1033|1026|1027|1028)", "[E-]S.*")}},
        {.call = "ui Beep #1", .why = "a beep that fails is not heard", .changes = {Becomes("beeps", "")}},
    };
}

}  // namespace

Scenario OptionsScenario() {
    return {"options", [](Platform&) {}, &Use,
            Together({QuietRun(),
                      IdleControls("ticked"),
                      {{"ticked.1014", "ES 7"},
                       {"ticked.1034", "ES C"},
                       {"ticked.1032", "ES 300"},
                       {"ticked.1033", "ES C"},
                       {"ticked.1015", "ES C"},
                       {"ticked.1016", "-S"},
                       {"beeps", "400 100"}},
                      IdleControls("clamped"),
                      {{"clamped.1014", "ES 7"},
                       {"clamped.1034", "ES C"},
                       {"clamped.1032", "ES 6000"},
                       {"clamped.1033", "ES C"},
                       {"clamped.1015", "ES C"},
                       {"clamped.1016", "-S"}},
                      IdleControls("unticked"),
                      {{"unticked.1014", "-S 7"}, {"unticked.1032", "-S 6000"}},
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
