// The destination folder is opened: that of the selected PDF, then the output folder, which the shell refuses.
#include "tests/faults/scenarios/scenarios.h"
#include "tests/faults/scenarios/usual.h"

#include "tests/faults/harness/window_facts.h"

#include "res/resource.h"

namespace {

void Use(User& user, CallWatch& watch, Facts& facts) {
    OpenWithFiles(user, {L"C:\\in, out\\a.b.pdf"});
    user.SelectRow(0);
    Platform& platform = user.Program().ThePlatform();
    watch.Begin();
    user.Press(IDC_OPEN_DESTINATION);
    watch.End();
    user.Press(IDC_OUTPUT_FOLDER_CHECK);
    user.SetText(IDC_OUTPUT_FOLDER, platform.Folder().c_str());
    platform.shellError = ERROR_FILE_NOT_FOUND;
    watch.Resume();
    user.Press(IDC_OPEN_DESTINATION);
    watch.End();
    AddControlFacts(user, "opened", facts);
}

}  // namespace

Scenario OpenFolderScenario() {
    return {"open_folder",
            [](Platform&) {},
            &Use,
            Together({QuietRun(),
                      IdleControls("opened"),
                      {{"opened.1", "ES"},
                       {"opened.1004", "ES C:\\in, out\\a.b.pdf"},
                       {"opened.1022", "ES"},
                       {"opened.1026", "ES C"},
                       {"opened.1027", "ES ~"},
                       {"opened.1028", "ES"},
                       {"shell", "explorer.exe C:\\in, out\nexplorer.exe ~"},
                       {"boxes", "error main Erreur ShellExecute : " + SystemText(ERROR_FILE_NOT_FOUND)}}}),
            {}};
}
