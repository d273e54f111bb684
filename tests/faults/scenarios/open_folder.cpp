// The destination folder is opened: that of the selected PDF, then the output folder, which the shell
// refuses. Once with nothing but the system's own Explorer, once with others beside the program and in the
// current directory.
#include "tests/faults/scenarios/scenarios.h"

#include "tests/support/utf8.h"

#include <array>
#include <filesystem>
#include <fstream>

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

std::vector<Rule> Rules(const std::string& explorer) {
    const std::string description = SystemText(ERROR_FILE_NOT_FOUND);
    const std::string firstOnly = Exactly(Opened(explorer, {"C:\\in, out"}));
    const std::string secondOnly = Exactly(Opened(explorer, {"~"}));
    const std::string rowTwice = Exactly(Opened(explorer, {"C:\\in, out", "C:\\in, out"}));
    const std::vector<Rule> rules = {
        {.call = "ui ShellExecuteExW #1",
         .why = "the shell's refusal is reported",
         .changes = {Becomes("shell", secondOnly),
                     Becomes("messages",
                             Exactly("error main Erreur ShellExecute : " + SystemText(ERROR_NO_ASSOCIATION) +
                                     "\nerror main Erreur ShellExecute : " + description))}},
        {.call = "ui ShellExecuteExW #2",
         .why = "the shell's refusal is reported, whichever it is",
         .changes = {Becomes("shell", firstOnly),
                     Becomes("messages", Exactly("error main Erreur ShellExecute : " +
                                                 SystemText(ERROR_NO_ASSOCIATION)))}},
        {.call = "ui SendMessageW 1040 (LVM_GETNEXTITEM|LVM_GETITEMTEXTW) #1",
         .why = "without a path there is no folder, and nothing to open",
         .changes = {Becomes("shell", secondOnly)}},
        {.call = "ui PathRemoveFileSpecW #1",
         .why = "what the system leaves of the path is handed on",
         .changes = {Becomes("shell", Exactly(Opened(explorer, {"C:\\in, out\\a.b", "~"})))}},
        {.call = "ui IsDlgButtonChecked main 1026 #2",
         .why = "the folder of the row is opened instead",
         .changes = {Becomes("shell", rowTwice)}},
        {.call = "ui (GetDlgItem main|GetWindowTextLengthW|GetWindowTextW) 1027 #1",
         .why =
             "the edit that is left seems empty, which turns the option off: the folder of the row is opened",
         .changes = {Becomes("shell", rowTwice), Becomes("opened.1026", "ES"), Becomes("opened.1027", "-S ~"),
                     Becomes("opened.1028", "-S")}},
        {.call = "ui (GetDlgItem main|GetWindowTextLengthW|GetWindowTextW) 1027 #2",
         .why = "without a text there is nothing to open, and nothing to report",
         .changes = {Becomes("shell", firstOnly), Becomes("messages", "")}},
    };
    return Joined({rules, ShellFailureRules(description)});
}

Scenario Opening(const std::string& name, void (*prepare)(Platform& platform), const std::string& explorer,
                 const std::vector<Rule>& rules) {
    return {
        name, prepare, &Use,
        Together({QuietRun(),
                  IdleControls("opened"),
                  {{"opened.1", "ES"},
                   {"opened.1004", "ES C:\\in, out\\a.b.pdf"},
                   {"opened.1022", "ES"},
                   {"opened.1026", "ES C"},
                   {"opened.1027", "ES ~"},
                   {"opened.1028", "ES"},
                   {"shell", Opened(explorer, {"C:\\in, out", "~"})},
                   {"messages", "error main Erreur ShellExecute : " + SystemText(ERROR_FILE_NOT_FOUND)}}}),
        Joined({rules, Rules(explorer)})};
}

void PlantExplorers(Platform& platform) {
    for (const wchar_t* const place : {L"explorer.exe", L"ailleurs\\explorer.exe"}) {
        std::ofstream(std::filesystem::path(platform.File(place))) << "planted";
    }
}

}  // namespace

Scenario OpenFolderScenario() {
    const std::vector<Rule> rules = {
        {.call = "ui (SearchPathW none #.|CompareStringOrdinal #.|GetSystemWindowsDirectoryW #[24]|"
                 "PathAppendW explorer.exe #[36])",
         .why = "where the look-up is not known to lead to the system's own, that one's path is handed over",
         .changes = {Reads("shell", SystemsExplorer(), "explorer.exe")}},
        {.call = "ui (GetSystemWindowsDirectoryW|PathAppendW explorer.exe) #.",
         .why = "no other is beside the program or in the current directory anyway"}};
    return Opening(
        "open_folder", [](Platform&) {}, "explorer.exe", rules);
}

Scenario PlantedExplorerScenario() {
    const std::vector<Rule> rules = {
        {.call = "ui (GetSystemWindowsDirectoryW #[13]|PathAppendW explorer.exe #[15])",
         .why = "where the system's own is not known, its name is all there is",
         .changes = {Reads("shell", "explorer.exe", SystemsExplorer())}},
        {.call = "ui (GetSystemWindowsDirectoryW|PathAppendW explorer.exe) #.",
         .why = "the other planted one is found"}};
    Scenario scenario = Opening("planted_explorer", &PlantExplorers, SystemsExplorer(), rules);
    scenario.usual["strays"] = "explorer.exe";
    return scenario;
}
