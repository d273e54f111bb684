// A batch of two files that the user thinks twice about and then stops, while the first is converted.
#include "tests/faults/scenarios/scenarios.h"
#include "tests/faults/scenarios/usual.h"

#include "tests/faults/harness/window_facts.h"

#include "res/resource.h"

namespace {

void Use(User& user, CallWatch& watch, Facts& facts) {
    OpenWithFiles(user, {L"C:\\in\\a.pdf", L"C:\\in\\b.pdf"});
    user.Press(IDOK);
    user.WaitForConverter(1);
    Platform& platform = user.Program().ThePlatform();
    watch.Begin();
    platform.answerToQuestions = IDNO;
    user.Press(IDCANCEL);
    AddControlFacts(user, "asked", facts);
    platform.answerToQuestions = IDYES;
    user.Press(IDCANCEL);
    platform.EndConverters(3);  // a person closes the console, should it still be there
    user.WaitForWorkers();
    watch.End();
    AddControlFacts(user, "stopped", facts);
    AddListFacts(user, "stopped", facts);
}

constexpr char kQuestion[] =
    "question main Un traitement est en cours.\r\nÊtes-vous sûr de vouloir l'interrompre ?";

}  // namespace

Scenario StopScenario() {
    return {"stop",
            [](Platform& platform) { platform.converters = {{.held = true}, {}}; },
            &Use,
            Together({QuietRun(),
                      RunningControls("asked"),
                      ControlsAfterBatch("stopped"),
                      List("stopped",
                           {"C:\\in\\a.pdf\nC:\\in\\b.pdf", "*** Annulé !\n", -1, "fit with durations"}),
                      {{"starts", "visible a.pdf in ~: /C \"pdf2djvu.exe -o \"C:\\in\\a.djvu\" -v  \"C:\\in\\a.pdf\"\""},
                       {"closing", "console"},
                       {"boxes", std::string(kQuestion) + '\n' + kQuestion}}}),
            {}};
}
