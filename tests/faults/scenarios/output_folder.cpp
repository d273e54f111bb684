// The output folder: ticked, typed, chosen in the browser, left empty, and refused at the start of a batch.
#include "tests/faults/scenarios/scenarios.h"
#include "tests/faults/scenarios/usual.h"

#include "tests/faults/harness/window_facts.h"

#include "res/resource.h"

namespace {

void Use(User& user, CallWatch& watch, Facts& facts) {
    OpenWithFiles(user, {L"C:\\in\\a.pdf"});
    Platform& platform = user.Program().ThePlatform();
    watch.Begin();
    user.Press(IDC_OUTPUT_FOLDER_CHECK);
    AddControlFacts(user, "ticked", facts);
    user.SetText(IDC_OUTPUT_FOLDER, L"C:\\no such folder");
    AddControlFacts(user, "typed", facts);
    user.Press(IDOK);
    user.WaitForWorkers();  // of a batch that should not have begun
    platform.chosenFolder = platform.Folder();
    user.Press(IDC_BROWSE);
    AddControlFacts(user, "chosen", facts);
    user.ClickInto(IDC_OUTPUT_FOLDER);
    user.SetText(IDC_OUTPUT_FOLDER, L"");
    user.Press(IDC_MONOCHROME);
    AddControlFacts(user, "left", facts);
    user.Press(IDC_OUTPUT_FOLDER_CHECK);
    user.Press(IDC_OUTPUT_FOLDER_CHECK);
    AddControlFacts(user, "unticked", facts);
    watch.End();
}

// Controls of the option, and the button of the destination.
constexpr char kItsControls[] = "\\w+\\.(1022|1026|1027|1028)";

std::vector<Rule> Rules() {
    return {
        {.call = "ui (.* 1026|.* 1027|.* 1028|.* 1022|PathIsDirectoryW|GetFocus|SHGetPathFromIDListW|"
                 "SHBrowseForFolderW) #.*",
         .why = "a folder that is not read, found or chosen is none; controls that are not reached stay as "
                "they were. "
                "A batch that the bad folder would have stopped goes on",
         .changes = {MayBecome(kItsControls, "[E-]S.*"), MayBecome("boxes", kAnything),
                     MayBecome("starts", kAnything), MayBecome("taskbar", kAnything),
                     MayBecome("awakeCalls", kAnything)}},
        {.call = "ui LoadStringW 142 #1",
         .why = "the box is empty",
         .changes = {Loses("boxes", "Le dossier de destination est incorrect !")}},
        {.call = "ui (MessageBoxW #1|malloc for a box's text #.)",
         .why = "no box, and no batch either",
         .changes = {Becomes("boxes", "")}},
    };
}

}  // namespace

Scenario OutputFolderScenario() {
    return {
        "output_folder", [](Platform&) {}, &Use,
        Together({QuietRun(),
                  IdleControls("ticked"),
                  {{"ticked.1", "ES"}, {"ticked.1026", "ES C"}, {"ticked.1027", "ES"}, {"ticked.1028", "ES"}},
                  IdleControls("typed"),
                  {{"typed.1", "ES"},
                   {"typed.1026", "ES C"},
                   {"typed.1027", "ES C:\\no such folder"},
                   {"typed.1028", "ES"}},
                  IdleControls("chosen"),
                  {{"chosen.1", "ES"},
                   {"chosen.1022", "ES"},
                   {"chosen.1026", "ES C"},
                   {"chosen.1027", "ES ~"},
                   {"chosen.1028", "ES"}},
                  IdleControls("left"),
                  {{"left.1", "ES"}, {"left.1030", "ES C"}},
                  IdleControls("unticked"),
                  {{"unticked.1", "ES"},
                   {"unticked.1030", "ES C"},
                   {"boxes", "error main Le dossier de destination est incorrect !"}}}),
        Rules()};
}
