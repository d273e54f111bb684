// The interpreter cannot be started for the first of two files.
#include "tests/faults/scenarios/scenarios.h"

namespace {

void Use(User& user, CallWatch& watch, Facts& facts) {
    OpenWithFiles(user, {L"C:\\in\\a.pdf", L"C:\\in\\b.pdf"});
    // What comes before is the same as in a batch that goes well.
    watch.At("CreateProcessW", 1, [&] { watch.Begin(); });
    user.Press(IDOK);
    user.WaitForWorkers();
    watch.End();
    AddControlFacts(user, "done", facts);
    AddListFacts(user, "done", facts);
}

std::vector<Rule> Rules() {
    const std::string description = SystemText(ERROR_FILE_NOT_FOUND);
    const std::string message = "error main Erreur CreateProcess :  " + description;
    return {
        {.call = "worker (FindResourceExW 9|LoadResource|LockResource) #1",
         .why = "without its own the message has the usual prefix",
         .changes = {Reads("messages", "Err : ", "Erreur CreateProcess :  ")}},
        {.call = "worker FormatMessageW #1",
         .why = "without the system's description the prefix is alone",
         .changes = {Loses("messages", description)}},
        {.call = "worker CreateProcessW #1", .why = "it fails anyway", .changes = {Becomes("starts", "")}},
        {.call = "worker MessageBoxW #1",
         .why = "the failure is not reported",
         .changes = {Loses("messages", message + '\n')}},
        {.call = "worker MessageBoxW #2",
         .why = "the end is not reported",
         .changes = {Loses("messages", "\ninformation main Conversion terminée !")}},
        {.call = "worker malloc for a message's text #.",
         .why = "one of the two is not reported",
         .changes = {MayLose("messages", message + '\n'),
                     MayLose("messages", "\ninformation main Conversion terminée !")}},
    };
}

}  // namespace

Scenario ConverterNotStartedScenario() {
    return {
        "converter_not_started",
        [](Platform& platform) { platform.converters = {{.startError = ERROR_FILE_NOT_FOUND}}; }, &Use,
        Together({QuietRun(),
                  BatchOf(2, 0),
                  ControlsAfterBatch("done"),
                  List("done", {"C:\\in\\a.pdf\nC:\\in\\b.pdf", "00:00:00\n", -1, "fit with durations"}),
                  {{"starts",
                    "visible a.pdf in ~: /C \"pdf2djvu.exe -o \"C:\\in\\a.djvu\" -v  \"C:\\in\\a.pdf\"\""},
                   {"messages", "error main Erreur CreateProcess :  " + SystemText(ERROR_FILE_NOT_FOUND) +
                                    "\ninformation main Conversion terminée !"}}}),
        Joined({Rules(), BatchRules()})};
}
