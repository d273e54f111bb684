// What is done to rows: the command line of one is looked at, one is deleted, the list is cleared.
#include "tests/faults/scenarios/scenarios.h"
#include "tests/faults/scenarios/usual.h"

#include "tests/faults/harness/window_facts.h"

#include "res/resource.h"

namespace {

void Use(User& user, CallWatch& watch, Facts& facts) {
    OpenWithFiles(user, {L"C:\\in\\a.pdf", L"C:\\in\\b.pdf"});
    watch.Begin();
    user.SelectRow(1);
    AddListFacts(user, "selected", facts);
    AddControlFacts(user, "selected", facts);
    user.PressListKey(VK_F7);
    user.PressListKey(VK_DELETE);
    AddListFacts(user, "deleted", facts);
    AddControlFacts(user, "deleted", facts);
    user.Press(IDC_CLEAR);
    AddListFacts(user, "cleared", facts);
    AddControlFacts(user, "cleared", facts);
    watch.End();
}

}  // namespace

Scenario ListKeysScenario() {
    return {"list_keys",
            [](Platform&) {},
            &Use,
            Together({QuietRun(),
                      List("selected", {.rows = "C:\\in\\a.pdf\nC:\\in\\b.pdf", .durations = "\n", .selected = 1}),
                      IdleControls("selected"),
                      {{"selected.1", "ES"}, {"selected.1004", "ES C:\\in\\b.pdf"}, {"selected.1022", "ES"}},
                      List("deleted", {.rows = "C:\\in\\a.pdf"}),
                      IdleControls("deleted"),
                      {{"deleted.1", "ES"}, {"deleted.1022", "ES"}},
                      List("cleared", {}),
                      IdleControls("cleared"),
                      {{"cleared.1022", "ES"},
                       {"boxes", "information main pdf2djvu.exe -o \"C:\\in\\b.djvu\" -v  \"C:\\in\\b.pdf\""}}}),
            {}};
}
