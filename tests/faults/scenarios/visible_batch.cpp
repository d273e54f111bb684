// One file with its console shown, converted into an output folder.
#include "tests/faults/scenarios/scenarios.h"

namespace {

void Use(User& user, CallWatch& watch, Facts& facts) {
    OpenWithFiles(user, {L"C:\\in\\a.pdf"});
    user.Press(IDC_OUTPUT_FOLDER_CHECK);
    user.SetText(IDC_OUTPUT_FOLDER, user.Program().ThePlatform().Folder().c_str());
    watch.Begin();
    user.Press(IDOK);
    user.WaitForConverter(1);
    AddControlFacts(user, "running", facts);
    user.Program().ThePlatform().EndConverters(0);
    user.WaitForWorkers();
    watch.End();
    AddControlFacts(user, "done", facts);
    AddListFacts(user, "done", facts);
}

constexpr char kFinished[] = "information main Conversion terminée !";

// The converter's output path in the output folder, which is the program's own here.
std::string Start(const std::string& output, const std::string& folder = "~") {
    return "visible a.pdf in " + folder + ": /C \"pdf2djvu.exe -o \"" + output + "\" -v  \"C:\\in\\a.pdf\"\"";
}

Rule NotStarted(const std::string& call, DWORD error, const std::string& starts) {
    return {.call = call,
            .why = "a converter that cannot be started is reported, and ends the batch",
            .changes = {Becomes("messages", Exactly("error main Erreur CreateProcess :  " +
                                                    SystemText(error) + '\n' + kFinished)),
                        Becomes("done.durations", "00:00:00"), Becomes("starts", Exactly(starts)),
                        Becomes("taskbar", "0 of 1\nnone"), MayBeOver("running", "done")}};
}

std::vector<Rule> Rules() {
    return {
        NotStarted("worker CreateProcessW #1", ERROR_FILE_NOT_FOUND, ""),
        NotStarted("worker SHGetFolderPathW #1", ERROR_FILE_NOT_FOUND, Start("~\\a.djvu")),
        NotStarted("worker GetModuleFileNameW #1", ERROR_DIRECTORY, Start("~\\a.djvu", "")),
        NotStarted("worker PathRemoveFileSpecW #1", ERROR_DIRECTORY, Start("~\\a.djvu", "~\\Talvenor.exe")),
        {.call = "worker (WaitForSingleObject|GetExitCodeProcess) #1",
         .why = "what is not known to have gone well has not",
         .changes = {Becomes("messages", ""), Becomes("done.durations", Exactly("*** Annulé !")),
                     Becomes("taskbar", "0 of 1\nnone"), MayBeOver("running", "done")}},
        {.call = "ui (GetDlgItem main 1027|GetWindowTextLengthW 1027|GetWindowTextW 1027) #1",
         .why = "the edit that is left seems empty, which turns the option off",
         .changes = {Becomes("starts", Exactly(Start("C:\\in\\a.djvu"))),
                     Becomes("(running|done).1026", "[E-]S")}},
        {.call = "ui ((GetDlgItem main 1027|GetWindowTextLengthW 1027|GetWindowTextW 1027) "
                 "#2|PathIsDirectoryW #.)",
         .why = "a folder that is none starts no batch",
         .changes = {Becomes("messages", "error main Le dossier de destination est incorrect !"),
                     Becomes("starts", ""), Becomes("done.durations", ""), Becomes("taskbar", ""),
                     Becomes("awakeCalls", ""), MayBeOver("running", "done"), Becomes("done.columns", "fit"),
                     MayDiffer("done\\.(1022|1026|1027|1028)", "enabled")}},
        {.call = "ui IsDlgButtonChecked main 1026 #1",
         .why = "the folder is not looked at before the batch, which is what would have found it bad"},
        {.call = "ui IsDlgButtonChecked main 1026 #3",
         .why = "the file goes beside its PDF",
         .changes = {Becomes("starts", Exactly(Start("C:\\in\\a.djvu")))}},
        {.call = "ui (GetDlgItem main|GetWindowTextLengthW|GetWindowTextW) 1027 #3",
         .why = "a folder that cannot be read is empty",
         .changes = {Becomes("starts", Exactly(Start("a.djvu")))}},
        {.call = "worker GetDlgItem main 1027 #.",
         .why = "an edit that is not reached stays as it was",
         .changes = {MayDiffer("\\w+\\.1027", "enabled")}},
        {.call = "ui PathRenameExtensionW #1",
         .why = "a path that the system refuses stays as it is",
         .changes = {Becomes("starts", Exactly(Start("~\\a.pdf")))}},
        {.call = "ui PathAppendW a.djvu #1",
         .why = "what cannot be joined is what the system leaves: nothing",
         .changes = {Becomes("starts", Exactly(Start("")))}},
        {.call = "(worker|ui) IsDlgButtonChecked main 1019 #.", .why = "it is not checked"},
        {.call = "worker (MessageBoxW|malloc for a message's text) #.",
         .why = "the end is not reported",
         .changes = {Becomes("messages", "")}},
    };
}

}  // namespace

Scenario VisibleBatchScenario() {
    return {"visible_batch", [](Platform& platform) { platform.converters = {{.held = true}}; }, &Use,
            Together({QuietRun(),
                      BatchOf(1, 1),
                      RunningControls("running"),
                      {{"running.1026", "-S C"}, {"running.1027", "-S ~"}},
                      ControlsAfterBatch("done"),
                      {{"done.1026", "ES C"}, {"done.1027", "ES ~"}},
                      List("done", {"C:\\in\\a.pdf", "00:00:07", -1, "fit with durations"}),
                      {{"starts", Start("~\\a.djvu")}, {"messages", kFinished}}}),
            Joined({Rules(), BatchRules()})};
}
