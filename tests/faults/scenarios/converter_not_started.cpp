// The interpreter cannot be started for the first of two files.
#include "tests/faults/scenarios/scenarios.h"
#include "tests/faults/scenarios/usual.h"

#include "tests/faults/harness/window_facts.h"

#include "res/resource.h"

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

}  // namespace

Scenario ConverterNotStartedScenario() {
    return {"converter_not_started",
            [](Platform& platform) { platform.converters = {{.startError = ERROR_FILE_NOT_FOUND}}; },
            &Use,
            Together({QuietRun(),
                      ControlsAfterBatch("done"),
                      List("done", {"C:\\in\\a.pdf\nC:\\in\\b.pdf", "00:00:00\n", -1, "fit with durations"}),
                      {{"starts", "visible a.pdf in ~: /C \"pdf2djvu.exe -o \"C:\\in\\a.djvu\" -v  \"C:\\in\\a.pdf\"\""},
                       {"boxes",
                        "error main Erreur CreateProcess :  " + SystemText(ERROR_FILE_NOT_FOUND) +
                            "\ninformation main Conversion terminée !"}}}),
            {}};
}
