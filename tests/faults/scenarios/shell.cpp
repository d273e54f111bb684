// What the shell is asked to open. The destination folder: that of the selected PDF, then the output folder,
// which the shell refuses; once with nothing but the system's own Explorer, once with others beside the
// program and in the current directory. The log of an earlier batch: the second time no program opens it.
#include "tests/faults/scenarios/scenarios.h"

#include "tests/support/utf8.h"

#include <array>
#include <filesystem>
#include <fstream>

namespace {

void OpenFolders(User& user, CallWatch& watch, Facts& facts) {
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

void OpenLogs(User& user, CallWatch& watch, Facts& facts) {
    Open(user);
    watch.Begin();
    user.Press(IDC_OPEN_LOG);
    user.Program().ThePlatform().shellError = ERROR_NO_ASSOCIATION;
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

// What is handed to the shell for each of these folders: `explorer` is what Explorer is called.
std::string Opened(const std::string& explorer, std::initializer_list<const char*> folders) {
    std::vector<std::string> requests;
    for (const char* const folder : folders) requests.push_back(explorer + ' ' + folder);
    return Lines(requests);
}

std::vector<Rule> FolderRules(const std::string& explorer) {
    const std::string firstOnly = Opened(explorer, {"C:\\in, out"});
    const std::string secondOnly = Opened(explorer, {"~"});
    const std::string rowTwice = Opened(explorer, {"C:\\in, out", "C:\\in, out"});
    return {
        When("ui ShellExecuteExW #1", "the shell's refusal is reported",
             {Becomes("shell", secondOnly),
              Becomes("messages", Refusal(ERROR_NO_ASSOCIATION) + '\n' + Refusal(ERROR_FILE_NOT_FOUND))}),
        When("ui ShellExecuteExW #2", "the shell's refusal is reported, whichever it is",
             {Becomes("shell", firstOnly), Becomes("messages", Refusal(ERROR_NO_ASSOCIATION))}),
        When("ui SendMessageW FILE_LIST (LVM_GETNEXTITEM|LVM_GETITEMTEXTW) #1",
             "without a path there is no folder, and nothing to open", {Becomes("shell", secondOnly)}),
        When("ui PathRemoveFileSpecW #1", "what the system leaves of the path is handed on",
             {Becomes("shell", Opened(explorer, {"C:\\in, out\\a.b", "~"}))}),
        When("ui IsDlgButtonChecked main OUTPUT_FOLDER_CHECK #2", "the folder of the row is opened instead",
             {Becomes("shell", rowTwice)}),
        When("ui (GetDlgItem main|GetWindowText(Length)?W) OUTPUT_FOLDER #1",
             "the edit that is left seems empty, which turns the option off: the folder of the row is opened",
             {Becomes("shell", rowTwice), "opened.OUTPUT_FOLDER_CHECK: ES", "opened.OUTPUT_FOLDER: -S ~",
              "opened.BROWSE: -S"}),
        When("ui (GetDlgItem main|GetWindowText(Length)?W) OUTPUT_FOLDER #2",
             "without a text there is nothing to open, and nothing to report",
             {Becomes("shell", firstOnly), "messages: "}),
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

Scenario OpenFolder(const std::string& name, const std::string& explorer, const std::vector<Rule>& rules) {
    return {
        .name = name,
        .use = &OpenFolders,
        .usual = Usually({Idle("opened", {"OK: ES", "STATUS: ES C:\\in, out\\a.b.pdf", "OPEN_DESTINATION: ES",
                                          "OUTPUT_FOLDER_CHECK: ES C", "OUTPUT_FOLDER: ES ~", "BROWSE: ES"}),
                          {{"shell", Opened(explorer, {"C:\\in, out", "~"})},
                           {"messages", Refusal(ERROR_FILE_NOT_FOUND)}}}),
        .rules = Joined({rules, FolderRules(explorer), RefusalRules(ERROR_FILE_NOT_FOUND)})};
}

Scenario OpenFolderAlone() {
    return OpenFolder(
        "open_folder", "explorer.exe",
        {When("ui (SearchPathW none #.|CompareStringOrdinal #.|GetSystemWindowsDirectoryW #[24]|"
              "PathAppendW explorer.exe #[36])",
              "where the look-up is not known to lead to the system's own, that one's path is handed over",
              {Reads("shell", SystemsExplorer(), "explorer.exe")}),
         When("ui (GetSystemWindowsDirectoryW|PathAppendW explorer.exe) #.",
              "no other is beside the program or in the current directory anyway")});
}

Scenario OpenFolderBesidePlantedExplorers() {
    Scenario scenario =
        OpenFolder("planted_explorer", SystemsExplorer(),
                   {When("ui (GetSystemWindowsDirectoryW #[13]|PathAppendW explorer.exe #[15])",
                         "where the system's own is not known, its name is all there is",
                         {Reads("shell", "explorer.exe", SystemsExplorer())}),
                    When("ui (GetSystemWindowsDirectoryW|PathAppendW explorer.exe) #.",
                         "the other planted one is found")});
    scenario.prepare = [](Platform& platform) {
        for (const wchar_t* const place : {L"explorer.exe", L"ailleurs\\explorer.exe"}) {
            std::ofstream(std::filesystem::path(platform.File(place))) << "planted";
        }
    };
    scenario.usual["strays"] = "explorer.exe";
    return scenario;
}

}  // namespace

std::vector<Scenario> ShellScenarios() {
    return {OpenFolderAlone(),
            OpenFolderBesidePlantedExplorers(),
            {.name = "open_log",
             .prepare = &LeaveEarlierLog,
             .use = &OpenLogs,
             .usual = Usually({Idle("opened", {"OPEN_LOG: ES"}),
                               {{"log", "earlier"},
                                {"shell", "~\\TalvenorLog.txt \n~\\TalvenorLog.txt "},
                                {"messages", Refusal(ERROR_NO_ASSOCIATION)}}}),
             .rules = Joined({LogRules(), RefusalRules(ERROR_NO_ASSOCIATION)})}};
}
