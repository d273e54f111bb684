// The log of an earlier batch is opened; the second time no program opens it.
#include "tests/faults/scenarios/scenarios.h"
#include "tests/faults/scenarios/usual.h"

#include "tests/faults/harness/window_facts.h"

#include "res/resource.h"

namespace {

void Use(User& user, CallWatch& watch, Facts& facts) {
    Open(user);
    watch.Begin();
    user.Press(IDC_OPEN_LOG);
    user.Program().ThePlatform().shellError = ERROR_NO_ASSOCIATION;
    user.Press(IDC_OPEN_LOG);
    watch.End();
    AddControlFacts(user, "opened", facts);
}

}  // namespace

Scenario OpenLogScenario() {
    return {"open_log",
            &LeaveEarlierLog,
            &Use,
            Together({QuietRun(),
                      IdleControls("opened"),
                      {{"opened.1024", "ES"},
                       {"log", "earlier"},
                       {"shell", "~\\TalvenorLog.txt \n~\\TalvenorLog.txt "},
                       {"boxes", "error main Erreur ShellExecute : " + SystemText(ERROR_NO_ASSOCIATION)}}}),
            {}};
}
