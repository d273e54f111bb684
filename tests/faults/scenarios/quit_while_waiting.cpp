// The program is left while a stopped worker still waits for its converter. The end of the process is held up
// here until that worker has woken and gone home: it must find all it touches.
#include "tests/faults/scenarios/scenarios.h"

namespace {

void Use(User& user, CallWatch& watch, Facts& facts) {
    BeginHiddenBatchOfTwo(user);
    user.Press(IDCANCEL);  // stops the batch
    watch.Begin();
    user.Quit();
    const ProgramHost& program = user.Program();
    facts["processEnds"] = program.State() == ProgramHost::Life::EndedByExitProcess ? "yes" : "no";
    facts["window"] = user.Window() ? "still there" : "gone";
    user.Program().ThePlatform().EndConverters(0);
    // With its window still there the worker would wait for the window's thread, which is held up here; the
    // real end of a process does not hold up anybody.
    if (!user.Window()) user.WaitForWorkers();
}

}  // namespace

Scenario QuitWhileWaitingScenario() {
    Facts usual =
        Together({QuietRunToTheEndOfTheProcess(),
                  BatchOf(2, 0),
                  {{"processEnds", "yes"},
                   {"window", "gone"},
                   {"starts",
                    "hidden a.pdf in ~: /C \"pdf2djvu.exe -o \"C:\\in\\a.djvu\" -v  \"C:\\in\\a.pdf\"\" "
                    "2>>TalvenorLog.txt"},
                   {"messages",
                    "question main Un traitement est en cours.\r\nÊtes-vous sûr de vouloir l'interrompre ?"},
                   {"closing", "console 1"},
                   {"searches", "1"}}});
    return {.name = "quit_while_waiting",
            .prepare =
                [](Platform& platform) {
                    platform.converters = {{.held = true}, {}};
                    platform.consolesIgnoreClosing = true;
                },
            .use = &Use,
            .usual = usual,
            .rules = {{.call = "ui DestroyWindow main #1",
                       .why = "the window goes with the process, and so does the worker that waits for it",
                       .changes = {Becomes("window", "still there"), Becomes("awake", "1"),
                                   Loses("awakeCalls", "\ngiven back")}},
                      {.call = "worker SetThreadExecutionState as usual #1",
                       .why = "the request goes with the process",
                       .changes = {Becomes("awake", "1"), Loses("awakeCalls", "\ngiven back")}}},
            .spendsItsProcess = true};
}
