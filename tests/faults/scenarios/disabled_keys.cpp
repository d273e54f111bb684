// Keys for controls that a batch has disabled, and then for one that is enabled again.
#include "tests/faults/scenarios/scenarios.h"

namespace {

void Use(User& user, CallWatch& watch, Facts& facts) {
    OpenWithFiles(user, {L"C:\\in\\a.pdf", L"C:\\in\\b.pdf"});
    user.Press(IDOK);
    user.WaitForConverter(1);
    user.WaitForPosted();
    watch.Begin();
    user.PressKeyIn(IDC_FILE_LIST, VK_DOWN);
    AddListFacts(user, "down", facts);
    user.PressKeyIn(IDC_EXTRA_OPTIONS, 'X');
    user.PressKeyIn(IDC_SHUT_DOWN, VK_SPACE);
    user.PressKeyIn(IDOK, VK_SPACE);
    watch.End();
    AddControlFacts(user, "pressed", facts);
    facts["pressed.workers"] = std::to_string(user.Program().ThePlatform().Workers());
    user.Program().ThePlatform().EndConverters(0);
    user.WaitForWorkers();
    watch.Resume();
    user.PressKeyIn(IDC_SHUT_DOWN, VK_SPACE);
    watch.End();
    AddControlFacts(user, "after", facts);
    AddListFacts(user, "after", facts);
}

std::vector<Rule> Rules() {
    return {
        {.call = "ui GetParent 1040 #1",
         .why = "a control of which it is not known whose it is gets its key: the selection moves",
         .changes = {Becomes("down.selected", "1"), Becomes("pressed.1004", "ES C:\\\\in\\\\b\\.pdf"),
                     MayBecome("after.durations", "\n00:00:07|00:00:07\n00:00:07|\n")}},
        {.call = "ui GetParent 1018 #.",
         .why = "a control of which it is not known whose it is gets its key",
         .changes = {MayBecome("(pressed|after)\\.1018", "[E-]S x")}},
        {.call = "ui GetParent 1038 #.",
         .why = "a control of which it is not known whose it is gets its key, which may be half of a press",
         .changes = {MayBecome("(pressed|after)\\.1038", "[E-]S( C)?")}},
        {.call = "ui GetParent 1 #.",
         .why = "a control of which it is not known whose it is gets its key, which is half of a press"},
        {.call = "ui IsWindowEnabled 1038 #.",
         .why = "a key of a control of which it is not known that it is enabled is lost",
         .changes = {MayBecome("after\\.1038", "ES")}},
        {.call = "ui GetMessageW #.*", .why = "the next one is fetched instead"},
    };
}

}  // namespace

Scenario DisabledKeysScenario() {
    const std::string rows = "C:\\in\\a.pdf\nC:\\in\\b.pdf";
    return {
        "disabled_keys",
        [](Platform& platform) {
            platform.converters = {{.held = true}, {}};
        },
        &Use,
        Together({QuietRun(),
                  BatchOf(2, 2),
                  List("down", {rows, "\n", 0, "fit with durations"}),
                  RunningControls("pressed"),
                  {{"pressed.workers", "1"}},
                  ControlsAfterBatch("after"),
                  {{"after.1038", "ES C"}},
                  List("after", {rows, "00:00:07\n00:00:07", -1, "fit with durations"}),
                  {{"starts",
                    "visible a.pdf in ~: /C \"pdf2djvu.exe -o \"C:\\in\\a.djvu\" -v  \"C:\\in\\a.pdf\"\"\n"
                    "visible b.pdf in ~: /C \"pdf2djvu.exe -o \"C:\\in\\b.djvu\" -v  \"C:\\in\\b.pdf\"\""},
                   {"messages", "information main Conversion terminée !"}}}),
        Joined({Rules(), BatchRules()})};
}
