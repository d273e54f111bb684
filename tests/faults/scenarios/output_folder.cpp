// The output folder: checked, typed, chosen in the browser, left empty, and refused at the start of a batch.
#include "tests/faults/scenarios/scenarios.h"

namespace {

void Use(User& user, CallWatch& watch, Facts& facts) {
    OpenWithFiles(user, {L"C:\\in\\a.pdf"});
    Platform& platform = user.Program().ThePlatform();
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
    user.ClickInto(IDC_OUTPUT_FOLDER);
    user.SetText(IDC_OUTPUT_FOLDER, L"");
    user.Press(IDC_MONOCHROME);
    AddControlFacts(user, "left", facts);
    user.Press(IDC_OUTPUT_FOLDER_CHECK);
    user.Press(IDC_OUTPUT_FOLDER_CHECK);
    AddControlFacts(user, "unchecked", facts);
    watch.End();
}

constexpr char kMissing[] = "C:\\no such folder";

// A batch that the bad folder would have stopped: its document is written to `djvu`.
std::vector<Change> BatchGoesOn(const std::string& djvu) {
    return {Becomes("messages", "information main Conversion terminée !"),
            Becomes("starts", Exactly("visible a.pdf in ~: /C \"pdf2djvu.exe -o \"" + djvu +
                                      "\" -v  \"C:\\in\\a.pdf\"\"")),
            Becomes("taskbar", "0 of 1\n1 of 1\nnone"), Becomes("awakeCalls", "kept\ngiven back")};
}

std::vector<Rule> Rules() {
    // The option was turned off when its edit was left, or not: then the presses at the end do the opposite.
    const std::vector<Change> onAtTheEnd = {Becomes("unchecked.1026", "ES C"),
                                            Becomes("unchecked.(1027|1028)", "ES")};
    std::vector<Change> batchWithoutTheOption = BatchGoesOn("C:\\in\\a.djvu");
    batchWithoutTheOption.push_back(Becomes("chosen.1026", "ES"));
    return {
        {.call = "ui IsDlgButtonChecked main 1026 #1",
         .why = "the check box seems unchecked: edit and browser stay disabled, nothing is chosen, and the "
                "edit is not "
                "left empty",
         .changes =
             Also(onAtTheEnd, {Becomes("(checked|typed|chosen).1028", "-S"), Becomes("checked.1027", "-S"),
                               Becomes("(typed|chosen).1027", Exactly("-S " + std::string(kMissing))),
                               Becomes("chosen.1022", "-S"), Becomes("left.1026", "ES C")})},
        {.call = "ui (GetDlgItem main|EnableWindow) 1028 #1",
         .why = "the browser stays disabled, and nothing is chosen",
         .changes = {Becomes("(checked|typed|chosen).1028", "-S"), Becomes("chosen.1022", "-S"),
                     Becomes("chosen.1027", Exactly("ES " + std::string(kMissing)))}},
        {.call = "ui (GetDlgItem main|EnableWindow) 1027 #1",
         .why = "the edit stays disabled, is chosen for all the same, and is not left empty",
         .changes = Also(
             onAtTheEnd,
             {Becomes("checked.1027", "-S"), Becomes("typed.1027", Exactly("-S " + std::string(kMissing))),
              Becomes("chosen.1027", "-S ~"), Becomes("left.1026", "ES C"), Becomes("left.1028", "ES")})},
        {.call = "ui (GetDlgItem main 1027 #5|GetWindowTextLengthW 1027 #3|GetWindowTextW 1027 #3)",
         .why = "the edit that is left seems empty, which turns the option off: the batch goes on without it",
         .changes = batchWithoutTheOption},
        {.call = "ui IsDlgButtonChecked main 1026 #2",
         .why = "the folder is not looked at before the batch, which goes on with it",
         .changes = BatchGoesOn(std::string(kMissing) + "\\a.djvu")},
        {.call = "ui LoadStringW 142 #1",
         .why = "the message box is empty",
         .changes = {Loses("messages", "Le dossier de destination est incorrect !")}},
        {.call = "ui (MessageBoxW #1|malloc for a message's text #.)",
         .why = "no message box, and no batch either",
         .changes = {Becomes("messages", "")}},
        {.call = "ui (SHBrowseForFolderW #1|SHGetPathFromIDListW #1|GetDlgItem main 1027 #7|SetWindowTextW "
                 "1027 #1)",
         .why = "nothing is chosen",
         .changes = {Becomes("chosen.1022", "-S"),
                     Becomes("chosen.1027", Exactly("ES " + std::string(kMissing)))}},
        {.call = "ui (GetDlgItem main 1022 #2|GetDlgItem main 1027 #8|GetWindowTextLengthW 1027 #5|"
                 "GetWindowTextW 1027 #5|PathIsDirectoryW #4|EnableWindow 1022 #2)",
         .why = "the destination's button is not enabled for the chosen folder",
         .changes = {Becomes("chosen.1022", "-S")}},
        {.call = "ui (GetDlgItem main|EnableWindow) 1022 #3",
         .why = "the destination's button stays enabled when the edit is emptied",
         .changes = {Becomes("(left|unchecked).1022", "ES")}},
        {.call = "ui CheckDlgButton main 1026 #1",
         .why = "the check box stays checked when the empty edit is left",
         .changes = Also(onAtTheEnd, {Becomes("left.1026", "ES C")})},
        {.call = "ui (GetDlgItem main 1028 #4|EnableWindow 1028 #2)",
         .why = "the browser stays enabled when the empty edit is left",
         .changes = {Becomes("left.1028", "ES")}},
        {.call = "ui (GetDlgItem main 1027 #11|EnableWindow 1027 #2)",
         .why = "the edit stays enabled when it is left empty",
         .changes = {Becomes("left.1027", "ES")}},
        {.call = "ui (GetFocus #3|GetDlgItem main 1026 #3)",
         .why = "the empty edit seems to be left for another control than its check box: the option goes "
                "off, and the "
                "press on the check box turns it on again",
         .changes = onAtTheEnd},
        {.call = "ui (GetDlgItem main 1028 #6|EnableWindow 1028 #4)",
         .why = "the browser stays enabled at the end",
         .changes = {Becomes("unchecked.1028", "ES")}},
        {.call = "ui (GetDlgItem main 1027 #15|EnableWindow 1027 #4)",
         .why = "the edit stays enabled at the end",
         .changes = {Becomes("unchecked.1027", "ES")}},
        {.call = "ui (.* (1022|1026|1027|1028)|PathIsDirectoryW|GetFocus) #.*",
         .why = "the control or the folder is as it would be after the call"},
    };
}

}  // namespace

Scenario OutputFolderScenario() {
    return {
        "output_folder", [](Platform&) {}, &Use,
        Together(
            {QuietRun(),
             IdleControls("checked"),
             {{"checked.1", "ES"}, {"checked.1026", "ES C"}, {"checked.1027", "ES"}, {"checked.1028", "ES"}},
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
             IdleControls("unchecked"),
             {{"unchecked.1", "ES"},
              {"unchecked.1030", "ES C"},
              {"messages", "error main Le dossier de destination est incorrect !"}}}),
        Rules()};
}
