// The output folder: checked, typed, chosen in the browser, left empty, and refused at the start of a batch.
#include "tests/faults/scenarios/scenarios.h"

namespace {

void Use(User& user, CallWatch& watch, Facts& facts) {
    OpenWithFiles(user, {L"C:\\in\\a.pdf"});
    Platform& platform = user.Program().platform;
    watch.Begin();
    user.Press(IDC_OUTPUT_FOLDER_CHECK);
    AddControlFacts(user, "checked", facts);
    user.SetText(IDC_OUTPUT_FOLDER, L"C:\\no such folder");
    AddControlFacts(user, "typed", facts);
    user.Press(IDOK);
    user.WaitForWorkers();  // of a batch that should not have begun
    platform.chosenFolder = platform.Folder();
    user.Press(IDC_BROWSE);
    AddControlFacts(user, "chosen", facts);
    // A click gives the edit the keyboard, so that it can be left.
    User::Send(user.Control(IDC_OUTPUT_FOLDER), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(2, 2));
    User::Send(user.Control(IDC_OUTPUT_FOLDER), WM_LBUTTONUP, 0, MAKELPARAM(2, 2));
    user.SetText(IDC_OUTPUT_FOLDER, L"");
    user.Press(IDC_MONOCHROME);
    AddControlFacts(user, "left", facts);
    user.Press(IDC_OUTPUT_FOLDER_CHECK);
    user.Press(IDC_OUTPUT_FOLDER_CHECK);
    AddControlFacts(user, "unchecked", facts);
    watch.End();
}

const std::string kMissing = "C:\\no such folder";

// A batch that the bad folder would have stopped: its document is written to `djvu`.
std::vector<Change> BatchGoesOn(const std::string& djvu) {
    return {Becomes("messages", kFinished), Becomes("starts", ShownStart(djvu)),
            "taskbar: 0 of 1\n1 of 1\nnone", "awakeCalls: kept\ngiven back"};
}

std::vector<Rule> Rules() {
    // The option was turned off when its edit was left, or not: then the presses at the end do the opposite.
    const std::vector<Change> onAtTheEnd = {"unchecked.OUTPUT_FOLDER_CHECK: ES C",
                                            "unchecked.(OUTPUT_FOLDER|BROWSE): ES"};
    std::vector<Change> batchWithoutTheOption = BatchGoesOn("C:\\in\\a.djvu");
    batchWithoutTheOption.push_back("chosen.OUTPUT_FOLDER_CHECK: ES");
    return {
        When("ui IsDlgButtonChecked main OUTPUT_FOLDER_CHECK #1",
             "the check box seems unchecked: edit and browser stay disabled, nothing is chosen, and the "
             "edit is not left empty",
             Joined({onAtTheEnd,
                     {"(checked|typed|chosen).BROWSE: -S", "checked.OUTPUT_FOLDER: -S",
                      Becomes("(typed|chosen).OUTPUT_FOLDER", "-S " + kMissing),
                      "chosen.OPEN_DESTINATION: -S", "left.OUTPUT_FOLDER_CHECK: ES C"}})),
        When("ui (GetDlgItem main|EnableWindow) BROWSE #1",
             "the browser stays disabled, and nothing is chosen",
             {"(checked|typed|chosen).BROWSE: -S", "chosen.OPEN_DESTINATION: -S",
              Becomes("chosen.OUTPUT_FOLDER", "ES " + kMissing)}),
        When("ui (GetDlgItem main|EnableWindow) OUTPUT_FOLDER #1",
             "the edit stays disabled, is chosen for all the same, and is not left empty",
             Joined({onAtTheEnd,
                     {"checked.OUTPUT_FOLDER: -S", Becomes("typed.OUTPUT_FOLDER", "-S " + kMissing),
                      "chosen.OUTPUT_FOLDER: -S ~", "left.OUTPUT_FOLDER_CHECK: ES C", "left.BROWSE: ES"}})),
        When("ui (GetDlgItem main OUTPUT_FOLDER #5|GetWindowText(Length)?W OUTPUT_FOLDER #3)",
             "the edit that is left seems empty, which turns the option off: the batch goes on without it",
             batchWithoutTheOption),
        When("ui IsDlgButtonChecked main OUTPUT_FOLDER_CHECK #2",
             "the folder is not looked at before the batch, which goes on with it",
             BatchGoesOn(kMissing + "\\a.djvu")),
        When("ui LoadStringW 142 #1", "the message box is empty",
             {Loses("messages", "Le dossier de destination est incorrect !")}),
        When("ui (SHBrowseForFolderW #1|SHGetPathFromIDListW #1|GetDlgItem main OUTPUT_FOLDER #7|"
             "SetWindowTextW OUTPUT_FOLDER #1)",
             "nothing is chosen",
             {"chosen.OPEN_DESTINATION: -S", Becomes("chosen.OUTPUT_FOLDER", "ES " + kMissing)}),
        When("ui (GetDlgItem main (OPEN_DESTINATION #2|OUTPUT_FOLDER #8)|GetWindowText(Length)?W "
             "OUTPUT_FOLDER #5|"
             "PathIsDirectoryW #4|EnableWindow OPEN_DESTINATION #2)",
             "the destination's button is not enabled for the chosen folder",
             {"chosen.OPEN_DESTINATION: -S"}),
        When("ui (GetDlgItem main|EnableWindow) OPEN_DESTINATION #3",
             "the destination's button stays enabled when the edit is emptied",
             {"(left|unchecked).OPEN_DESTINATION: ES"}),
        When("ui CheckDlgButton main OUTPUT_FOLDER_CHECK #1",
             "the check box stays checked when the empty edit is left",
             Joined({onAtTheEnd, {"left.OUTPUT_FOLDER_CHECK: ES C"}})),
        When("ui (GetDlgItem main BROWSE #4|EnableWindow BROWSE #2)",
             "the browser stays enabled when the empty edit is left", {"left.BROWSE: ES"}),
        When("ui (GetDlgItem main OUTPUT_FOLDER #11|EnableWindow OUTPUT_FOLDER #2)",
             "the edit stays enabled when it is left empty", {"left.OUTPUT_FOLDER: ES"}),
        When("ui (GetFocus #3|GetDlgItem main OUTPUT_FOLDER_CHECK #3)",
             "the empty edit seems to be left for another control than its check box: the option goes off, "
             "and the press on the check box turns it on again",
             onAtTheEnd),
        When("ui (GetDlgItem main BROWSE #6|EnableWindow BROWSE #4)", "the browser stays enabled at the end",
             {"unchecked.BROWSE: ES"}),
        When("ui (GetDlgItem main OUTPUT_FOLDER #15|EnableWindow OUTPUT_FOLDER #4)",
             "the edit stays enabled at the end", {"unchecked.OUTPUT_FOLDER: ES"}),
        When("ui (.* (OPEN_DESTINATION|OUTPUT_FOLDER(_CHECK)?|BROWSE)|PathIsDirectoryW|GetFocus) #.*",
             "the control or the folder is as it would be after the call"),
    };
}

}  // namespace

std::vector<Scenario> OutputFolderScenarios() {
    return {{.name = "output_folder",
             .use = &Use,
             .usual = Usually(
                 {Idle("checked", {"OK: ES", "OUTPUT_FOLDER: ES", "OUTPUT_FOLDER_CHECK: ES C", "BROWSE: ES"}),
                  Idle("typed", {"OK: ES", "OUTPUT_FOLDER: ES " + kMissing, "OUTPUT_FOLDER_CHECK: ES C",
                                 "BROWSE: ES"}),
                  Idle("chosen", {"OK: ES", "OUTPUT_FOLDER: ES ~", "OUTPUT_FOLDER_CHECK: ES C", "BROWSE: ES",
                                  "OPEN_DESTINATION: ES"}),
                  Idle("left", {"OK: ES", "MONOCHROME: ES C"}),
                  Idle("unchecked", {"OK: ES", "MONOCHROME: ES C"}),
                  {{"messages", "error main Le dossier de destination est incorrect !"}}}),
             .rules = Rules()}};
}
