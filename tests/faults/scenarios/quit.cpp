// The program is left: by Esc, which passes through the message loop; and while a stopped worker still waits
// for its converter.
#include "tests/faults/scenarios/scenarios.h"

namespace {

void PressEscape(User& user, CallWatch& watch, Facts& /*facts*/) {
    OpenWithFiles(user, {L"C:\\in\\a.pdf"});
    watch.Begin();
    user.PressUntilEnded([&] { ::PostMessageW(user.Control(IDC_FILE_LIST), WM_KEYDOWN, VK_ESCAPE, 1); });
}

// The end of the process is held up here until the worker has woken and ended: it must find all it touches.
void QuitWhileWaiting(User& user, CallWatch& watch, Facts& facts) {
    OpenWithFiles(user, {L"C:\\in\\a.pdf", L"C:\\in\\b.pdf"});
    user.Press(IDC_HIDE_OUTPUT);
    user.Press(IDOK);
    user.WaitForConverter(1);
    user.WaitForPosted();
    user.Press(IDCANCEL);  // stops the batch
    watch.Begin();
    user.Quit();
    const ProgramHost& program = user.Program();
    facts["processEnds"] = program.State() == ProgramHost::Life::EndedByExitProcess ? "yes" : "no";
    facts["window"] = user.Window() ? "still there" : "gone";
    user.Program().platform.converters.ReleaseAll(0);
    // With its window still there the worker would wait for the window's thread, which is held up here; the
    // real end of a process does not hold up anybody.
    if (!user.Window()) user.WaitForWorkers();
}

Facts UsualWhileWaiting() {
    Facts usual = Usually({BatchOf(2, 0),
                           {{"processEnds", "yes"},
                            {"window", "gone"},
                            {"starts",
                             "hidden a.pdf in ~: /C \"pdf2djvu.exe -o \"C:\\in\\a.djvu\" -v  "
                             "\"C:\\in\\a.pdf\"\" 2>>TalvenorLog.txt"},
                            {"messages", kQuestion},
                            {"closing", "console 1"},
                            {"searches", "1"}}});
    // After the end of its process nothing can be counted.
    for (const char* const left : {"blocks", "icons", "handles", "gdi", "windows", "objects"})
        usual.erase(left);
    return usual;
}

}  // namespace

std::vector<Scenario> QuitScenarios() {
    return {
        {.name = "quit", .use = &PressEscape, .usual = Usually({})},
        {.name = "quit_while_waiting",
         .prepare =
             [](Platform& platform) {
                 HoldFirst(platform);
                 platform.consolesIgnoreClosing = true;
             },
         .use = &QuitWhileWaiting,
         .usual = UsualWhileWaiting(),
         .rules = {When("ui DestroyWindow main #1",
                        "the window goes with the process, and so does the worker that waits for it",
                        {"window: still there", "awake: 1", Loses("awakeCalls", "\ngiven back")}),
                   When("worker SetThreadExecutionState as usual #1", "the request goes with the process",
                        {"awake: 1", Loses("awakeCalls", "\ngiven back")})},
         .spendsItsProcess = true},
    };
}
