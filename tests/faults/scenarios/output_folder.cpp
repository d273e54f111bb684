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
    user.WaitForWorkers();
}

}  // namespace

Scenario OutputFolderScenario() {
    return {"output_folder",
            [](Platform&) {},
            &Use,
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
            {}};
}
