// A file with its console shown, which is converted into an output folder.
#include "tests/faults/scenarios/scenarios.h"

namespace {

void ConvertIntoFolder(User& user, CallWatch& watch, Facts& facts) {
    OpenWithFiles(user, {L"C:\\in\\a.pdf"});
    user.Press(IDC_OUTPUT_FOLDER_CHECK);
    user.SetText(IDC_OUTPUT_FOLDER, user.Program().platform.Folder().c_str());
    watch.Begin();
    user.Press(IDOK);
    user.WaitForConverter(1);
    AddControlFacts(user, "running", facts);
    user.Program().platform.converters.ReleaseAll(0);
    WaitForEndOfBatch(user, watch, facts);
}

Rule NotStarted(const std::string& call, DWORD error, const std::string& starts) {
    return When(call, "a converter that cannot be started is reported, and ends the batch",
                Joined({EndsWith(1, 1, "00:00:00", StartFailure(error)), {Becomes("starts", starts)}}));
}

std::vector<Rule> Rules() {
    return {
        NotStarted("worker CreateProcessW #1", ERROR_FILE_NOT_FOUND, ""),
        NotStarted("worker SHGetFolderPathW #1", ERROR_FILE_NOT_FOUND, ShownStart("~\\a.djvu")),
        NotStarted("worker GetModuleFileNameW #1", ERROR_DIRECTORY, ShownStart("~\\a.djvu", "")),
        NotStarted("worker PathRemoveFileSpecW #1", ERROR_DIRECTORY,
                   ShownStart("~\\a.djvu", "~\\Talvenor.exe")),
        When("worker (WaitForSingleObject|GetExitCodeProcess) #1",
             "what is not known to have gone well has not", EndsWith(1, 1, "*** Annulé !", "")),
        When("ui (GetDlgItem main|GetWindowText(Length)?W) OUTPUT_FOLDER #1",
             "the edit that is left seems empty, which turns the option off",
             {Becomes("starts", ShownStart()), BecomesLike("(running|done).OUTPUT_FOLDER_CHECK", "[E-]S")}),
        When("ui ((GetDlgItem main|GetWindowText(Length)?W) OUTPUT_FOLDER #2|PathIsDirectoryW #.)",
             "a folder that is none starts no batch",
             {"messages: error main Le dossier de destination est incorrect !",
              "starts: ", "done.durations: ", "taskbar: ", "awakeCalls: ", MayBeOver("running", "done"),
              "done.columns: fit",
              MayDiffer("done.(OPEN_DESTINATION|OUTPUT_FOLDER_CHECK|OUTPUT_FOLDER|BROWSE)", "enabled")}),
        When("ui IsDlgButtonChecked main OUTPUT_FOLDER_CHECK #1",
             "the folder is not looked at before the batch, which is what would have found it bad"),
        When("ui IsDlgButtonChecked main OUTPUT_FOLDER_CHECK #3", "the file goes beside its PDF",
             {Becomes("starts", ShownStart())}),
        When("ui (GetDlgItem main|GetWindowText(Length)?W) OUTPUT_FOLDER #3",
             "a folder that cannot be read is empty", {Becomes("starts", ShownStart("a.djvu"))}),
        When("worker GetDlgItem main OUTPUT_FOLDER #.", "an edit that is not reached stays as it was",
             {MayDiffer("\\w+.OUTPUT_FOLDER", "enabled")}),
        When("ui PathRenameExtensionW #1", "a path that the system refuses stays as it is",
             {Becomes("starts", ShownStart("~\\a.pdf"))}),
        When("ui PathAppendW a.djvu #1", "what cannot be joined is what the system leaves: nothing",
             {Becomes("starts", ShownStart(""))}),
        When("(worker|ui) IsDlgButtonChecked main HIDE_OUTPUT #.", "it is not checked"),
    };
}

}  // namespace

std::vector<Scenario> VisibleBatchScenarios() {
    return {
        {.name = "visible_batch",
         .prepare = &HoldFirst<>,
         .use = &ConvertIntoFolder,
         .usual = Usually({BatchOf(1, 1),
                           Running("running", {"OUTPUT_FOLDER_CHECK: -S C", "OUTPUT_FOLDER: -S ~"}),
                           AfterBatch("done", {"OUTPUT_FOLDER_CHECK: ES C", "OUTPUT_FOLDER: ES ~",
                                               "rows: C:\\in\\a.pdf", "durations: 00:00:07"}),
                           {{"starts", ShownStart("~\\a.djvu")}, {"messages", kFinished}}}),
         .rules = Joined({Rules(), BatchRules()})},
    };
}
