// One file with its console shown, converted into an output folder.
#include "tests/faults/scenarios/scenarios.h"
#include "tests/faults/scenarios/usual.h"

#include "tests/faults/harness/window_facts.h"

#include "res/resource.h"

namespace {

void Use(User& user, CallWatch& watch, Facts& facts) {
    OpenWithFiles(user, {L"C:\\in\\a.pdf"});
    user.Press(IDC_OUTPUT_FOLDER_CHECK);
    user.SetText(IDC_OUTPUT_FOLDER, user.Program().ThePlatform().Folder().c_str());
    watch.Begin();
    user.Press(IDOK);
    user.WaitForConverter(1);
    AddControlFacts(user, "running", facts);
    user.Program().ThePlatform().EndConverters(0);
    user.WaitForWorkers();
    watch.End();
    AddControlFacts(user, "done", facts);
    AddListFacts(user, "done", facts);
}

}  // namespace

Scenario VisibleBatchScenario() {
    return {"visible_batch",
            [](Platform& platform) { platform.converters = {{.held = true}}; },
            &Use,
            Together({QuietRun(),
                      RunningControls("running"),
                      {{"running.1026", "-S C"}, {"running.1027", "-S ~"}},
                      ControlsAfterBatch("done"),
                      {{"done.1026", "ES C"}, {"done.1027", "ES ~"}},
                      List("done", {"C:\\in\\a.pdf", "00:00:07", -1, "fit with durations"}),
                      {{"starts", "visible a.pdf in ~: /C \"pdf2djvu.exe -o \"~\\a.djvu\" -v  \"C:\\in\\a.pdf\"\""},
                       {"boxes", "information main Conversion terminée !"}}}),
            {}};
}
