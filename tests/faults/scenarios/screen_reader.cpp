// The window is opened, used and left while a screen reader runs.
#include "tests/faults/scenarios/scenarios.h"

namespace {

// Counted from the question whether one runs to the end of the set-up, then what becomes of the status line,
// and the end of the window.
void Use(User& user, CallWatch& watch, Facts& facts) {
    const Platform& platform = user.Program().ThePlatform();
    watch.At("SystemParametersInfoW", 1, [&] { watch.Begin(); });
    Open(user);
    watch.End();
    facts["start.names"] = platform.Names();
    user.Drop({L"C:\\in\\a.pdf"});
    watch.Resume();
    user.SelectRow(0);
    facts["selected.names"] = platform.Names();
    user.Press(IDC_CLEAR);
    facts["cleared.names"] = platform.Names();
    user.Quit();
    watch.End();
}

// The names, with and without that of the status line, whose own text is what is said while it has one.
constexpr char kStatus[] = "1004: Fichiers PDF";
constexpr char kOptions[] =
    "1014: Pages :\n1018: Options supplémentaires\n1027: Convertir les DjVu dans ce dossier :\n"
    "1028: Convertir les DjVu dans ce dossier :\n1032: DPI (-d) : ";
const std::string kOthers = std::string(kOptions) + "\n1040: Fichiers PDF";
const std::string kAll = std::string(kStatus) + '\n' + kOthers;

Rule Unnamed(const std::string& call, const std::string& line) {
    return {.call = "ui " + call,
            .why = "one control has no name",
            .changes = {Loses("(start|selected|cleared)\\.names", line)}};
}

std::vector<Rule> Rules() {
    return {
        {.call = "ui SystemParametersInfoW #1",
         .why = "without an answer there is no screen reader",
         .changes = {Becomes("\\w+\\.names", "")}},
        {.call = "ui (FindResourceExW 9|LoadResource|LockResource) #1",
         .why = "without their text neither the list nor the status line has a name",
         .changes = {Becomes("\\w+\\.names", Exactly(kOptions))}},
        Unnamed("(GetDlgItem main (1014|1034)|GetWindowTextLengthW 1034|GetWindowTextW 1034|CoCreateInstance "
                "names|IAccPropServices::SetHwndPropStr) #1",
                "1014: Pages :\n"),
        Unnamed("(GetDlgItem main (1032|1033) #1|GetWindowTextLengthW 1033 #1|GetWindowTextW 1033 #1|"
                "IAccPropServices::SetHwndPropStr #2)",
                "1032: DPI (-d) : \n"),
        Unnamed("(GetDlgItem main (1027|1026) #1|GetWindowTextLengthW 1026 #1|GetWindowTextW 1026 #1|"
                "IAccPropServices::SetHwndPropStr #3)",
                "1027: Convertir les DjVu dans ce dossier :\n"),
        Unnamed("(GetDlgItem main 1028 #1|GetDlgItem main 1026 #2|GetWindowTextLengthW 1026 #2|"
                "GetWindowTextW 1026 #2|IAccPropServices::SetHwndPropStr #4)",
                "1028: Convertir les DjVu dans ce dossier :\n"),
        Unnamed("(GetDlgItem main 1018 #1|GetWindow 1018 #1|GetWindowTextLengthW (other|65535) #1|"
                "GetWindowTextW (other|65535) #1|IAccPropServices::SetHwndPropStr #5)",
                "1018: Options supplémentaires\n"),
        Unnamed("IAccPropServices::SetHwndPropStr #6", "\n1040: Fichiers PDF"),
        {.call = "ui IAccPropServices::SetHwndPropStr #7",
         .why = "the status line has no name until its text goes for the first time",
         .changes = {Becomes("start.names", Exactly(kOthers))}},
        {.call = "ui GetDlgItem main 1004 #1",
         .why = "the status line has no name",
         .changes = {Becomes("(start|cleared).names", Exactly(kOthers))}},
        {.call = "ui (SetWindowLongPtrW 1004 GWLP_(USERDATA|WNDPROC) #1|GetDlgItem main 1004 "
                 "#2|SetWindowTextW 1004 #1|"
                 "SendMessageW 1040 LVM_GETITEMTEXTW #1|IAccPropServices::ClearHwndProps #1)",
         .why = "the status line has its name still, or still no text",
         .changes = {Becomes("selected.names", Exactly(kAll))}},
        {.call = "ui (GetDlgItem main 1004 #3|SetWindowTextW 1004 #2|IAccPropServices::SetHwndPropStr #8)",
         .why = "the status line has its text still, or not yet a name again",
         .changes = {Becomes("cleared.names", Exactly(kOthers))}},
        {.call = "ui DestroyWindow main #1",
         .why = "the names go with the window, which goes with its thread",
         .changes = {Becomes("names", Exactly(kAll)), MayBecome("gdi", "[0-9]+")}},
        {.call = "ui IAccPropServices::ClearHwndProps #.",
         .why = "one name goes with its window",
         .changes = {Becomes("names", "(1004|1014|1018|1027|1028|1032|1040): .*")}},
    };
}

}  // namespace

Scenario ScreenReaderScenario() {
    return {
        "screen_reader", [](Platform& platform) { platform.screenReader = true; }, &Use,
        Together({QuietRun(), {{"start.names", kAll}, {"selected.names", kOthers}, {"cleared.names", kAll}}}),
        Rules()};
}
