#include "tests/faults/scenarios/scenarios.h"
#include "tests/faults/scenarios/usual.h"

#include "tests/faults/harness/window_facts.h"

#include "res/resource.h"

namespace {

void Use(User& user, CallWatch& watch, Facts& facts) {
    watch.Begin();
    user.Program().Start();
    user.WaitForWindow();
    watch.End();
    if (!user.Window()) return;
    AddSetUpFacts(user, facts);
    AddControlFacts(user, "start", facts);
    AddListFacts(user, "start", facts);
    // The two controls whose messages pass through the window's map.
    User::Send(user.Control(IDC_PAGES), WM_CHAR, L'a');
    user.Drop({L"C:\\in\\a.pdf"});
    AddListFacts(user, "dropped", facts);
}

}  // namespace

Scenario StartScenario() {
    return {"start",
            &LeaveEarlierLog,
            &Use,
            Together({QuietRun(), IdleControls("start"), List("start", {}),
                      List("dropped", {.rows = "C:\\in\\a.pdf"}),
                      {
                          {"beeps", "400 100"},
                          {"log", "earlier"},
                          {"start.1024", "ES"},
                          {"start.title", "Talvenor"},
                          {"start.centred", "yes"},
                          {"start.icons", "big small"},
                          {"start.pictures", "1 1003 1005 1028 "},
                          {"start.titles", "Fichiers PDF|Durée de conversion"},
                          {"start.list", "1057 with 1 images drops"},
                          {"start.tips", "6 tools, 6 texts, wrapped"},
                      }}),
            {}};
}
