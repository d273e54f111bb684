// The window is opened, used and left while a screen reader runs.
#include "tests/faults/scenarios/scenarios.h"

namespace {

// Counted from the question whether one runs to the end of the set-up, then what becomes of the status line,
// and the end of the window.
void Use(User& user, CallWatch& watch, Facts& facts) {
    const Platform& platform = user.Program().platform;
    watch.At("SystemParametersInfoW", 1, [&] { watch.Begin(); });
    Open(user);
    watch.End();
    facts["start.names"] = platform.Fact("names");
    user.Drop({L"C:\\in\\a.pdf"});
    watch.Resume();
    user.SelectRow(0);
    facts["selected.names"] = platform.Fact("names");
    user.Press(IDC_CLEAR);
    facts["cleared.names"] = platform.Fact("names");
    user.Quit();
    watch.End();
}

// The names, with and without that of the status line, whose own text is what is said while it has one.
const std::string kBrowse = "BROWSE: Convertir les DjVu dans ce dossier :\n";
const std::string kOptions = "EXTRA_OPTIONS: Options supplémentaires\n";
const std::string kList = "FILE_LIST: Fichiers PDF\n";
const std::string kFolder = "OUTPUT_FOLDER: Convertir les DjVu dans ce dossier :\n";
const std::string kPages = "PAGES: Pages :\n";
const std::string kResolution = "RESOLUTION: DPI (-d) : ";
const std::string kOthers = kBrowse + kOptions + kList + kFolder + kPages + kResolution;
const std::string kAll = kOthers + "\nSTATUS: Fichiers PDF";

Rule Unnamed(const std::string& call, const std::string& line) {
    return When("ui " + call, "one control has no name", {Loses("(start|selected|cleared).names", line)});
}

std::vector<Rule> Rules() {
    return {
        When("ui SystemParametersInfoW #1", "without an answer there is no screen reader", {"\\w+.names: "}),
        When("ui (FindResourceExW 9|LoadResource|LockResource) #1",
             "without their text neither the list nor the status line has a name",
             {Becomes("\\w+.names", kBrowse + kOptions + kFolder + kPages + kResolution)}),
        Unnamed("(GetDlgItem main (PAGES|PAGES_CHECK)|GetWindowText(Length)?W PAGES_CHECK|"
                "CoCreateInstance names|IAccPropServices::SetHwndPropStr) #1",
                kPages),
        Unnamed(
            "((GetDlgItem main (RESOLUTION|RESOLUTION_CHECK)|GetWindowText(Length)?W RESOLUTION_CHECK) #1|"
            "IAccPropServices::SetHwndPropStr #2)",
            '\n' + kResolution),
        Unnamed("((GetDlgItem main (OUTPUT_FOLDER|OUTPUT_FOLDER_CHECK)|"
                "GetWindowText(Length)?W OUTPUT_FOLDER_CHECK) #1|IAccPropServices::SetHwndPropStr #3)",
                kFolder),
        Unnamed("(GetDlgItem main BROWSE #1|GetDlgItem main OUTPUT_FOLDER_CHECK #2|"
                "GetWindowText(Length)?W OUTPUT_FOLDER_CHECK #2|IAccPropServices::SetHwndPropStr #4)",
                kBrowse),
        Unnamed(
            "((GetDlgItem main EXTRA_OPTIONS|GetWindow EXTRA_OPTIONS|GetWindowText(Length)?W (other|65535))"
            " #1|IAccPropServices::SetHwndPropStr #5)",
            kOptions),
        Unnamed("IAccPropServices::SetHwndPropStr #6", kList),
        When("ui IAccPropServices::SetHwndPropStr #7",
             "the status line has no name until its text goes for the first time",
             {Becomes("start.names", kOthers)}),
        When("ui GetDlgItem main STATUS #1", "the status line has no name",
             {Becomes("(start|cleared).names", kOthers)}),
        When("ui (SetWindowLongPtrW STATUS GWLP_(USERDATA|WNDPROC) #1|GetDlgItem main STATUS #2|"
             "SetWindowTextW STATUS #1|SendMessageW FILE_LIST LVM_GETITEMTEXTW #1|"
             "IAccPropServices::ClearHwndProps #1)",
             "the status line has its name still, or still no text", {Becomes("selected.names", kAll)}),
        When("ui (GetDlgItem main STATUS #3|SetWindowTextW STATUS #2|IAccPropServices::SetHwndPropStr #8)",
             "the status line has its text still, or not yet a name again",
             {Becomes("cleared.names", kOthers)}),
        When("ui DestroyWindow main #1", "the names go with the window, which goes with its thread",
             {Becomes("names", kAll), May(BecomesLike("gdi", "[0-9]+"))}),
        When("ui IAccPropServices::ClearHwndProps #.", "one name goes with its window",
             {BecomesLike("names",
                          "(BROWSE|EXTRA_OPTIONS|FILE_LIST|OUTPUT_FOLDER|PAGES|RESOLUTION|STATUS): .*")}),
    };
}

}  // namespace

std::vector<Scenario> ScreenReaderScenarios() {
    return {
        {.name = "screen_reader",
         .prepare = [](Platform& platform) { platform.screenReader = true; },
         .use = &Use,
         .usual = Usually({{{"start.names", kAll}, {"selected.names", kOthers}, {"cleared.names", kAll}}}),
         .rules = Rules()}};
}
