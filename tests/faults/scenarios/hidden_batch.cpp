// Two files with consoles hidden and every option that is read for them.
#include "tests/faults/scenarios/scenarios.h"
#include "tests/faults/scenarios/usual.h"

#include "tests/faults/harness/window_facts.h"

#include "res/resource.h"

namespace {

void Use(User& user, CallWatch& watch, Facts& facts) {
    OpenWithFiles(user, {L"C:\\in\\a.pdf", L"C:\\in\\b.pdf"});
    user.Press(IDC_HIDE_OUTPUT);
    user.Press(IDC_PAGES_CHECK);
    user.SetText(IDC_PAGES, L"1-3");
    user.Press(IDC_RESOLUTION_CHECK);
    user.SetText(IDC_EXTRA_OPTIONS, L"--x");
    for (const int box : {IDC_NO_METADATA, IDC_NO_OUTLINE, IDC_NO_HYPERLINKS, IDC_LINES, IDC_MONOCHROME}) {
        user.Press(box);
    }
    watch.Begin();
    user.Press(IDOK);
    user.WaitForConverter(1);
    AddControlFacts(user, "running", facts);
    AddListFacts(user, "running", facts);
    User::Send(user.Window(), WM_TIMER, 2);
    AddListFacts(user, "ticked", facts);
    user.Program().ThePlatform().EndConverters(0);
    user.WaitForWorkers();
    watch.End();
    AddControlFacts(user, "done", facts);
    AddListFacts(user, "done", facts);
}

// Boxes that are ticked and edits that have a text keep both, whatever becomes of their enabling.
Facts Options(const std::string& moment, const std::string& enabled) {
    return {{moment + ".1019", enabled + "S C"},     {moment + ".1034", enabled + "S C"},
            {moment + ".1014", enabled + "S 1-3"},   {moment + ".1033", enabled + "S C"},
            {moment + ".1032", enabled + "S 300"},   {moment + ".1018", enabled + "S --x"},
            {moment + ".1017", enabled + "S C"},     {moment + ".1036", enabled + "S C"},
            {moment + ".1037", enabled + "S C"},     {moment + ".1016", enabled + "S C"},
            {moment + ".1030", enabled + "S C"}};
}

std::string Start(const std::string& name) {
    return "hidden " + name + ".pdf in ~: /C \"pdf2djvu.exe -o \"C:\\in\\" + name +
           ".djvu\" -v -d 300 --no-metadata --no-outline --no-hyperlinks --lines --monochrome --x -p \"1-3\" "
           "\"C:\\in\\" +
           name + ".pdf\"\" 2>>TalvenorLog.txt";
}

}  // namespace

Scenario HiddenBatchScenario() {
    const std::string rows = "C:\\in\\a.pdf\nC:\\in\\b.pdf";
    return {"hidden_batch",
            [](Platform& platform) {
                LeaveEarlierLog(platform);
                platform.converters = {{.held = true}, {}};
            },
            &Use,
            Together({QuietRun(),
                      RunningControls("running"),
                      Options("running", "-"),
                      List("running", {rows, "\n", 0, "fit with durations"}),
                      List("ticked", {rows, "00:00:07\n", 0, "fit with durations"}),
                      ControlsAfterBatch("done"),
                      Options("done", "E"),
                      {{"done.1024", "ES"}},
                      List("done", {rows, "00:00:07\n00:00:07", -1, "fit with durations"}),
                      {{"starts", Start("a") + '\n' + Start("b")},
                       {"boxes", "information main Conversion terminée !"},
                       {"log", LogRecord("00:00:07", 86) + LogRecord("00:00:07", 86)}}}),
            {}};
}
