#include "tests/faults/harness/scenario_run.h"

#include "tests/faults/harness/leak_counts.h"

#include <memory>

ScenarioRun RunScenario(const Scenario& scenario, const std::optional<CallKey>& failing) {
    ScenarioRun run;
    const int keptByTheSystem = GdiObjectsKeptByTheSystem();
    const int windowsBefore = WindowCount();
    const int gdiBefore = GdiObjectCount();
    const int handlesBefore = HandleCount();
    auto stage = std::make_unique<Stage>();  // kept for good when the program hangs: its threads still use it
    if (failing) stage->watch.FailAt(*failing);
    scenario.prepare(stage->platform);
    try {
        scenario.use(stage->user, stage->watch, run.facts);
        if (!scenario.spendsItsProcess) {
            stage->user.WaitForWorkers();
            stage->user.WaitForPosted();
        }
        stage->user.Quit();
        if (!stage->program.WaitForEnd()) throw Hang("the program does not end");
        stage->watch.End();
        run.processIsSpent = stage->program.State() != ProgramHost::Life::Ended;
    } catch (const Hang& hang) {
        run.facts["hang"] = hang.what();
        run.processIsSpent = true;
    }
    run.calls = stage->watch.Counted();
    run.reached = stage->watch.Failed();
    run.facts.merge(stage->platform.State());
    run.facts["exit"] = std::to_string(stage->program.ExitCode());
    if (run.processIsSpent) {
        static_cast<void>(stage.release());
        return run;
    }
    for (const auto& [what, count] : stage->platform.Held()) run.facts[what] = std::to_string(count);
    const int keptOfDialogs = keptByTheSystem * stage->platform.ModelessDialogs();
    stage.reset();
    run.facts["handles"] = std::to_string(HandleCount() - handlesBefore);
    run.facts["gdi"] = std::to_string(GdiObjectCount() - gdiBefore - keptOfDialogs);
    run.facts["windows"] = std::to_string(WindowCount() - windowsBefore);
    return run;
}
