#include "tests/faults/scenarios/scenarios.h"

namespace {

void Use(User& user, CallWatch& watch, Facts& /*facts*/) {
    watch.Begin();
    user.Program().Start();
    user.WaitForWindow();
}

}  // namespace

Scenario SecondCopyScenario() {
    return {"second_copy",
            [](Platform& platform) { platform.anotherCopyRuns = true; },
            &Use,
            Together({QuietRun(), {{"exit", "0"}}}),
            {{.call = "ui CreateMutexW #1",
              .why = "better two copies than none",
              .changes = {Becomes("exit", "2")}}}};
}
