// A batch of two files that the user thinks twice about and then stops, while the first is converted.
#include "tests/faults/scenarios/rules.h"
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

std::vector<Rule> Rules() {
    const std::string question = Exactly(kQuestion);
    return {
        {.call = "ui (MessageBoxW #1|malloc for a box's text #[12])",
         .why = "a question that cannot be asked is answered by no",
         .changes = {Becomes("boxes", question)}},
        {.call = "ui (MessageBoxW #2|malloc for a box's text #[34])",
         .why =
             "a question that cannot be asked is answered by no: the batch goes on until its converter fails",
         .changes = {Becomes("boxes", question), Becomes("closing", "")}},
        {.call = "ui LoadStringW 144 #.",
         .why = "the question is empty",
         .changes = {Loses("boxes",
                           "Un traitement est en cours.\r\nÊtes-vous sûr de vouloir l'interrompre ?")}},
        {.call = "ui (EnumWindows #1|GetWindowThreadProcessId #2|SendNotifyMessageW #1)",
         .why = "the console is not asked to close",
         .changes = {Becomes("closing", "")}},
        {.call = "ui GetWindowThreadProcessId #1",
         .why = "a window of which nothing is known is none of ours"},
        {.call = "ui (FindResourceExW|LoadResource|LockResource).* #.*",
         .why = "a text that is not there is empty, and the button keeps the one that it has",
         .changes = {MayBecome("\\w+\\.2", "ES (Quitter|Arrêter )")}},
        {.call = "worker (GetExitCodeProcess|WaitForSingleObject) #1",
         .why = "the batch has been stopped anyway"},
    };
}

}  // namespace

Scenario StopScenario() {
    return {
        "stop",
        [](Platform& platform) {
            platform.converters = {{.held = true}, {}};
        },
        &Use,
        Together(
            {QuietRun(),
             RunningControls("asked"),
             ControlsAfterBatch("stopped"),
             List("stopped", {"C:\\in\\a.pdf\nC:\\in\\b.pdf", "*** Annulé !\n", -1, "fit with durations"}),
             {{"starts",
               "visible a.pdf in ~: /C \"pdf2djvu.exe -o \"C:\\in\\a.djvu\" -v  \"C:\\in\\a.pdf\"\""},
              {"closing", "console"},
              {"boxes", std::string(kQuestion) + '\n' + kQuestion}}}),
        Joined({Rules(), BatchRules()})};
}
