// What the shell is asked to open. The destination folder: that of the selected PDF, then the output folder,
// which the shell refuses. The log of an earlier batch: the second time no program opens it.
#include "tests/faults/scenarios/scenarios.h"

#include "tests/support/utf8.h"

#include <array>

namespace {

void OpenFolders(User& user, CallWatch& watch, Facts& facts) {
    OpenWithFiles(user, {L"C:\\in, out\\a.b.pdf"});
    user.SelectRow(0);
    Platform& platform = user.Program().platform;
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

void OpenLogs(User& user, CallWatch& watch, Facts& facts) {
    Open(user);
    watch.Begin();
    user.Press(IDC_OPEN_LOG);
    user.Program().platform.shellError = ERROR_NO_ASSOCIATION;
    user.Press(IDC_OPEN_LOG);
    watch.End();
    AddControlFacts(user, "opened", facts);
}

std::string Refusal(DWORD error) {
    return "error main Erreur ShellExecute : " + SystemText(error);
}

std::string SystemsExplorer() {
    std::array<wchar_t, MAX_PATH> folder{};
    ::GetSystemWindowsDirectoryW(folder.data(), MAX_PATH);
    return Utf8(folder.data()) + "\\explorer.exe";
}

std::vector<Rule> FolderRules() {
    const std::string first = "explorer.exe C:\\in, out";
    const std::string second = "explorer.exe ~";
    return {
        When("ui ShellExecuteExW #1", "the shell's refusal is reported",
             {Becomes("shell", second),
              Becomes("messages", Refusal(ERROR_NO_ASSOCIATION) + '\n' + Refusal(ERROR_FILE_NOT_FOUND))}),
        When("ui ShellExecuteExW #2", "the shell's refusal is reported, whichever it is",
             {Becomes("shell", first), Becomes("messages", Refusal(ERROR_NO_ASSOCIATION))}),
        When("ui SendMessageW FILE_LIST (LVM_GETNEXTITEM|LVM_GETITEMTEXTW) #1",
             "without a path there is no folder, and nothing to open", {Becomes("shell", second)}),
        When("ui PathRemoveFileSpecW #1", "what the system leaves of the path is handed on",
             {Becomes("shell", first + "\\a.b\n" + second)}),
        When("ui IsDlgButtonChecked main OUTPUT_FOLDER_CHECK #2", "the folder of the row is opened instead",
             {Becomes("shell", first + '\n' + first)}),
        When("ui (GetDlgItem main|GetWindowText(Length)?W) OUTPUT_FOLDER #1",
             "the edit that is left seems empty, which turns the option off: the folder of the row is opened",
             {Becomes("shell", first + '\n' + first), "opened.OUTPUT_FOLDER_CHECK: ES",
              "opened.OUTPUT_FOLDER: -S ~", "opened.BROWSE: -S"}),
        When("ui (GetDlgItem main|GetWindowText(Length)?W) OUTPUT_FOLDER #2",
             "without a text there is nothing to open, and nothing to report",
             {Becomes("shell", first), "messages: "}),
        When("ui (SearchPathW none #.|CompareStringOrdinal #.|GetSystemWindowsDirectoryW #[24]|"
             "PathAppendW explorer.exe #[36])",
             "where the look-up is not known to lead to the system's own, that one's path is handed over",
             {Reads("shell", SystemsExplorer(), "explorer.exe")}),
    };
}

std::vector<Rule> LogRules() {
    return {
        When("ui ShellExecuteExW #1", "the shell's refusal is reported",
             {"shell: ~\\TalvenorLog.txt ",
              Becomes("messages", Refusal(ERROR_NO_ASSOCIATION) + '\n' + Refusal(ERROR_NO_ASSOCIATION))}),
        When("ui ShellExecuteExW #2", "the shell's refusal is reported, whichever it is",
             {"shell: ~\\TalvenorLog.txt "}),
        When("ui GetModuleFileNameW #.", "the log is looked for where its path points",
             {Reads("shell", "TalvenorLog.txt", "~\\TalvenorLog.txt")}),
        When("ui PathRemoveFileSpecW #.", "the log is looked for where its path points",
             {Reads("shell", "~\\Talvenor\\TalvenorLog.txt", "~\\TalvenorLog.txt")}),
        When("ui PathAppendW TalvenorLog.txt #.", "the log is looked for where its path points",
             {Loses("shell", "~\\TalvenorLog.txt")}),
    };
}

// The message about the first refusal of the shell.
std::vector<Rule> RefusalRules(DWORD error) {
    return {
        When("ui (FindResourceExW 9|LoadResource|LockResource) #1",
             "without its own the message has the usual prefix",
             {Reads("messages", "Err : ", "Erreur ShellExecute : ")}),
        When("ui FormatMessageW #1", "without the system's description the prefix is alone",
             {Loses("messages", SystemText(error))}),
    };
}

}  // namespace

std::vector<Scenario> ShellScenarios() {
    return {
        {.name = "open_folder",
         .use = &OpenFolders,
         .usual =
             Usually({Idle("opened", {"OK: ES", "STATUS: ES C:\\in, out\\a.b.pdf", "OPEN_DESTINATION: ES",
                                      "OUTPUT_FOLDER_CHECK: ES C", "OUTPUT_FOLDER: ES ~", "BROWSE: ES"}),
                      {{"shell", "explorer.exe C:\\in, out\nexplorer.exe ~"},
                       {"messages", Refusal(ERROR_FILE_NOT_FOUND)}}}),
         .rules = Joined({FolderRules(), RefusalRules(ERROR_FILE_NOT_FOUND)})},
        {.name = "open_log",
         .prepare = &LeaveEarlierLog,
         .use = &OpenLogs,
         .usual = Usually({Idle("opened", {"OPEN_LOG: ES"}),
                           {{"log", "earlier"},
                            {"shell", "~\\TalvenorLog.txt \n~\\TalvenorLog.txt "},
                            {"messages", Refusal(ERROR_NO_ASSOCIATION)}}}),
         .rules = Joined({LogRules(), RefusalRules(ERROR_NO_ASSOCIATION)})},
    };
}
