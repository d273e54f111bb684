#include "tests/faults/scenarios/scenarios.h"
#include "tests/faults/scenarios/usual.h"

#include "tests/faults/harness/window_facts.h"

namespace {

void Use(User& user, CallWatch& watch, Facts& facts) {
    Open(user);
    user.Drop({L"C:\\in\\first.pdf"});
    watch.Begin();
    user.Drop({L"C:\\in\\a.pdf", L"C:\\in\\B.PDF", L"C:\\in\\c.txt", L"C:\\in\\first.pdf"});
    watch.End();
    AddControlFacts(user, "dropped", facts);
    AddListFacts(user, "dropped", facts);
}

}  // namespace

Scenario DropScenario() {
    return {"drop",
            [](Platform&) {},
            &Use,
            Together({QuietRun(), IdleControls("dropped"),
                      List("dropped", {.rows = "C:\\in\\first.pdf\nC:\\in\\a.pdf\nC:\\in\\B.PDF", .durations = "\n\n"}),
                      {{"beeps", "440 100"}}}),
            {}};
}
