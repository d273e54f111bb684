// The first of two files cannot be converted. Consoles are hidden.
#include "tests/faults/scenarios/scenarios.h"
#include "tests/faults/scenarios/usual.h"

#include "tests/faults/harness/window_facts.h"

#include "res/resource.h"

namespace {

void Use(User& user, CallWatch& watch, Facts& facts) {
    OpenWithFiles(user, {L"C:\\in\\a.pdf", L"C:\\in\\b.pdf"});
    user.Press(IDC_HIDE_OUTPUT);
    user.Press(IDOK);
    user.WaitForConverter(1);
    // What comes before is the same as in a batch that goes well.
    watch.Begin();
    user.Program().ThePlatform().EndConverters(1);
    user.WaitForWorkers();
    watch.End();
    AddControlFacts(user, "done", facts);
    AddListFacts(user, "done", facts);
}

}  // namespace

Scenario FailingConverterScenario() {
    return {"failing_converter",
            [](Platform& platform) { platform.converters = {{.held = true}, {}}; },
            &Use,
            Together({QuietRun(),
                      ControlsAfterBatch("done"),
                      {{"done.1019", "ES C"}, {"done.1024", "ES"}},
                      List("done",
                           {"C:\\in\\a.pdf\nC:\\in\\b.pdf", "*** Annulé !\n", -1, "fit with durations"}),
                      {{"starts",
                        "hidden a.pdf in ~: /C \"pdf2djvu.exe -o \"C:\\in\\a.djvu\" -v  \"C:\\in\\a.pdf\"\" "
                        "2>>TalvenorLog.txt"},
                       {"log", LogRecord("*** Annulé !", 90)}}}),
            {}};
}
