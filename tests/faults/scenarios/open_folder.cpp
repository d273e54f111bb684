// The destination folder is opened: that of the selected PDF, then the output folder, which the shell
// refuses.
#include "tests/faults/scenarios/rules.h"
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

std::vector<Rule> Rules() {
    const std::string description = SystemText(ERROR_FILE_NOT_FOUND);
    const std::string firstOnly = Exactly("explorer.exe C:\\in, out");
    const std::vector<Rule> rules = {
        {.call = "ui ShellExecuteExW #1",
         .why = "the shell's refusal is told",
         .changes = {Becomes("shell", Exactly("explorer.exe ~")),
                     Becomes("boxes",
                             Exactly("error main Erreur ShellExecute : " + SystemText(ERROR_NO_ASSOCIATION) +
                                     "\nerror main Erreur ShellExecute : " + description))}},
        {.call = "ui ShellExecuteExW #2",
         .why = "the shell's refusal is told, whichever it is",
         .changes = {Becomes("shell", firstOnly),
                     Becomes("boxes", Exactly("error main Erreur ShellExecute : " +
                                              SystemText(ERROR_NO_ASSOCIATION)))}},
        {.call = "ui SendMessageW 1040 (LVM_GETNEXTITEM|LVM_GETITEMTEXTW) #1",
         .why = "without a path there is no folder, and nothing to open",
         .changes = {Becomes("shell", Exactly("explorer.exe ~"))}},
        {.call = "ui PathRemoveFileSpecW #1",
         .why = "what the system leaves of the path is handed on",
         .changes = {Becomes("shell", Exactly("explorer.exe C:\\in, out\\a.b\nexplorer.exe ~"))}},
        {.call = "ui IsDlgButtonChecked main 1026 #2",
         .why = "the folder of the row is opened instead",
         .changes = {Becomes("shell", Exactly("explorer.exe C:\\in, out\nexplorer.exe C:\\in, out"))}},
        {.call = "ui (GetDlgItem main|GetWindowTextLengthW|GetWindowTextW) 1027 #1",
         .why =
             "the edit that is left seems empty, which turns the option off: the folder of the row is opened",
         .changes = {Becomes("shell", Exactly("explorer.exe C:\\in, out\nexplorer.exe C:\\in, out")),
                     MayBecome("opened\\.(1026|1027|1028)", "[E-]S.*")}},
        {.call = "ui (GetDlgItem main|GetWindowTextLengthW|GetWindowTextW) 1027 #2",
         .why = "without a text there is nothing to open, and nothing to tell",
         .changes = {Becomes("shell", firstOnly), Becomes("boxes", "")}},
    };
    return Joined({rules, ShellFailureRules(description)});
}

}  // namespace

Scenario OpenFolderScenario() {
    return {"open_folder", [](Platform&) {}, &Use,
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
            Rules()};
}
