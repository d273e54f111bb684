// The first of two files cannot be converted. Consoles are hidden.
#include "tests/faults/scenarios/scenarios.h"

namespace {

void Use(User& user, CallWatch& watch, Facts& facts) {
    BeginHiddenBatchOfTwo(user);
    // What comes before is the same as in a batch that goes well.
    watch.Begin();
    user.Program().ThePlatform().EndConverters(1);
    user.WaitForWorkers();
    watch.End();
    AddControlFacts(user, "done", facts);
    AddListFacts(user, "done", facts);
}

std::vector<Rule> Rules() {
    return {
        {.call = "worker (PathRemoveFileSpecW|PathAppendW TalvenorLog.txt|CreateFileW TalvenorLog.txt|"
                 "IsDlgButtonChecked main 1019) #1",
         .why = "a record that cannot be written is lost without a word",
         .changes = {Becomes("log", "none")}},
        {.call = "worker GetModuleFileNameW #1",
         .why = "the log lands where its path points: without a folder, in the current directory",
         .changes = {Becomes("log", "none"), Becomes("strays", "TalvenorLog.txt")}},
        {.call = "worker (WideCharToMultiByte|lstrlenA|WriteFile) #.",
         .why = "a record that cannot be written is lost without a word",
         .changes = {Becomes("log", "")}},
        {.call = "worker GetLocaleInfoW #1",
         .why = "a locale whose ordering is not known has year, month, day",
         .changes = {Reads("log", "2026/11, 16", "16/11, 2026")}},
        {.call = "worker CloseHandle #1",
         .why = "the log stays open, and nobody else can read it",
         .changes = {Becomes("log", ""), Becomes("handles", "1")}},
        {.call = "worker IsDlgButtonChecked main 1019 #2",
         .why = "the log has no button",
         .changes = {Becomes("done.1024", "-h")}},
        {.call = "worker (GetExitCodeProcess|WaitForSingleObject) #1", .why = "the batch has failed anyway"},
    };
}

}  // namespace

Scenario FailingConverterScenario() {
    return {
        "failing_converter",
        [](Platform& platform) {
            platform.converters = {{.held = true}, {}};
        },
        &Use,
        Together({QuietRun(),
                  BatchOf(2, 0),
                  ControlsAfterBatch("done"),
                  {{"done.1019", "ES C"}, {"done.1024", "ES"}},
                  List("done", {"C:\\in\\a.pdf\nC:\\in\\b.pdf", "*** Annulé !\n", -1, "fit with durations"}),
                  {{"starts",
                    "hidden a.pdf in ~: /C \"pdf2djvu.exe -o \"C:\\in\\a.djvu\" -v  \"C:\\in\\a.pdf\"\" "
                    "2>>TalvenorLog.txt"},
                   {"log", LogRecord("*** Annulé !", 90)}}}),
        Joined({Rules(), BatchRules()})};
}
