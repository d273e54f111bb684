// Keys for controls that a batch has disabled, and then for one that is enabled again.
#include "tests/faults/scenarios/scenarios.h"

namespace {

void Use(User& user, CallWatch& watch, Facts& facts) {
    Platform& platform = user.Program().platform;
    OpenWithFiles(user, {L"C:\\in\\a.pdf", L"C:\\in\\b.pdf"});
    user.Press(IDOK);
    user.WaitForConverter(1);
    user.WaitForPosted();
    watch.Begin();
    user.PressKeyIn(IDC_FILE_LIST, VK_DOWN);
    AddListFacts(user, "down", facts);
    user.PressKeyIn(IDC_SHUT_DOWN, VK_SPACE);
    watch.End();
    AddControlFacts(user, "pressed", facts);
    facts["pressed.workers"] = std::to_string(platform.Workers());
    platform.converters.ReleaseAll(0);
    user.WaitForWorkers();
    watch.Resume();
    user.PressKeyIn(IDC_SHUT_DOWN, VK_SPACE);
    watch.End();
    AddWindowFacts(user, "after", facts);
}

}  // namespace

std::vector<Scenario> DisabledKeyScenarios() {
    const std::vector<Rule> rules = {
        When("ui GetParent FILE_LIST #1",
             "a control of which it is not known whose it is gets its key: the selection moves",
             {"down.selected: 1", "pressed.STATUS: ES C:\\in\\b.pdf",
              May(BecomesLike("after.durations", "\n00:00:07|00:00:07\n00:00:07|\n"))}),
        When("ui GetParent SHUT_DOWN #.",
             "a control of which it is not known whose it is gets its key, which may be half of a press",
             {May(BecomesLike("(pressed|after).SHUT_DOWN", "[E-]S( C)?"))}),
        When("ui IsWindowEnabled SHUT_DOWN #.",
             "a key of a control of which it is not known that it is enabled is lost",
             {May("after.SHUT_DOWN: ES")}),
    };
    return {
        {.name = "disabled_keys",
         .prepare = &HoldFirst<>,
         .use = &Use,
         .usual = Usually(
             {BatchOf(2, 2),
              At("down", {kTwoRows, "durations: \n", "selected: 0", "columns: fit with durations"}),
              Running("pressed", {"workers: 1"}),
              AfterBatch("after", {"SHUT_DOWN: ES C", kTwoRows, "durations: 00:00:07\n00:00:07"}),
              {{"starts",
                ShownStart() +
                    "\nvisible b.pdf in ~: /C \"pdf2djvu.exe -o \"C:\\in\\b.djvu\" -v  \"C:\\in\\b.pdf\"\""},
               {"messages", kFinished}}}),
         .rules = Joined({rules, BatchRules()})}};
}
