#include "tests/faults/scenarios/scenarios.h"
#include "tests/faults/scenarios/usual.h"

#include "tests/faults/harness/window_facts.h"

#include "res/resource.h"

using namespace std::string_literals;

namespace {

void Use(User& user, CallWatch& watch, Facts& facts) {
    Open(user);
    watch.Begin();
    user.Press(IDC_ADD);
    watch.End();
    AddControlFacts(user, "added", facts);
    AddListFacts(user, "added", facts);
}

}  // namespace

Scenario AddScenario() {
    return {"add",
            [](Platform& platform) { platform.chosenFiles = L"C:\\in\0a.pdf\0b.pdf\0a.pdf"s; },
            &Use,
            Together({QuietRun(), IdleControls("added"), List("added", {.rows = "C:\\in\\a.pdf\nC:\\in\\b.pdf", .durations = "\n"}),
                      {{"added.1", "ES"}, {"beeps", "440 100"}}}),
            {}};
}
