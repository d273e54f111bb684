// Two files with consoles hidden and every option that is read for them, which go to an output folder.
#include "tests/faults/scenarios/scenarios.h"

#include <regex>

namespace {

void ConvertWithAllOptions(User& user, CallWatch& watch, Facts& facts) {
    OpenWithFiles(user, {L"C:\\in\\a.pdf", L"C:\\in\\b.pdf"});
    for (const int checkBox : {IDC_HIDE_OUTPUT, IDC_PAGES_CHECK, IDC_RESOLUTION_CHECK, IDC_NO_METADATA,
                               IDC_NO_OUTLINE, IDC_NO_HYPERLINKS, IDC_LINES, IDC_MONOCHROME}) {
        user.Press(checkBox);
    }
    user.SetText(IDC_PAGES, L"1-3");
    user.SetText(IDC_EXTRA_OPTIONS, L"--x");
    user.Press(IDC_OUTPUT_FOLDER_CHECK);  // last: its edit has the keyboard, and is left by the next press
    user.SetText(IDC_OUTPUT_FOLDER, user.Program().platform.Folder().c_str());
    watch.Begin();
    user.Press(IDOK);
    user.WaitForConverter(1);
    AddWindowFacts(user, "running", facts);
    User::Send(user.Window(), WM_TIMER, 2);
    AddListFacts(user, "ticked", facts);
    user.Program().platform.converters.ReleaseAll(0);
    WaitForEndOfBatch(user, watch, facts);
}

// The controls of all options. Check boxes that are checked and edits that have a text keep both, whatever
// becomes of their enabling.
std::vector<std::string> Options(const std::string& enabled) {
    std::vector<std::string> states = {"PAGES: " + enabled + "S 1-3", "RESOLUTION: " + enabled + "S 300",
                                       "EXTRA_OPTIONS: " + enabled + "S --x",
                                       "OUTPUT_FOLDER: " + enabled + "S ~"};
    for (const std::string checkBox :
         {"HIDE_OUTPUT", "PAGES_CHECK", "RESOLUTION_CHECK", "NO_METADATA", "NO_OUTLINE", "NO_HYPERLINKS",
          "LINES", "MONOCHROME", "OUTPUT_FOLDER_CHECK"}) {
        states.push_back(checkBox + ": " + enabled + "S C");
    }
    return states;
}

enum class Console { Hidden, Shown };

constexpr char kOptions[] =
    " -v -d 300 --no-metadata --no-outline --no-hyperlinks --lines --monochrome --x -p \"1-3\" ";

// The start for a row. Without a name: for one that cannot be read.
std::string Start(const std::string& row, const std::string& folder = "~",
                  Console console = Console::Hidden) {
    const bool isHidden = console == Console::Hidden;
    const std::string name = row.empty() ? "" : row + ".pdf";
    const std::string path = row.empty() ? "" : "C:\\in\\" + name;
    return (isHidden ? "hidden " : "visible ") + name + " in " + folder + ": /C \"pdf2djvu.exe -o \"~\\" +
           row + ".djvu\"" + kOptions + '"' + path + "\"\"" + (isHidden ? " 2>>TalvenorLog.txt" : "");
}

const std::string kStarts = Start("a") + '\n' + Start("b");

// The record that the log gets for a file that took `duration`, with a rule of `rule` asterisks.
std::string LogRecord(const std::string& duration, std::size_t rule) {
    return "\r\nTerminé le : 16/11, 2026 - 14:05:09\r\n*** Durée de conversion (hh:mm:ss) : " + duration +
           "\r\n" + std::string(rule, '*') + "\r\n\r\n";
}

const std::string kRecord = LogRecord("00:00:07", 86);

// What a control stands for on the command line: without an answer it is left out for that file.
Rule Option(const std::string& ids, const std::string& option) {
    return When("(worker|ui) .* (" + ids + ") #.*",
                "an option that cannot be read is left out, a control that is not reached stays as it was",
                {May(Loses("starts", option)), MayDiffer("\\w+.(" + ids + ")", "enabled")});
}

// A batch that ends with one of its rows, counted from 1, which took `duration`.
Rule EndsWith(int row, const std::string& call, const std::string& why, const std::string& duration,
              const std::string& record, const std::string& messages, const std::string& starts) {
    const bool isFirst = row == 1;
    Rule rule = When(call, why,
                     {Becomes("messages", messages), Becomes("starts", starts),
                      Becomes("log", (isFirst ? "" : kRecord) + record),
                      Becomes("done.durations", isFirst ? duration + '\n' : "00:00:07\n" + duration),
                      Becomes("taskbar", BatchOf(2, row - 1).at("taskbar"))});
    // Where no converter runs, what is looked at as the course of the batch may be its end. There the
    // selection is cleared before the status line is, which writes the path alone into it.
    if (isFirst) {
        rule.changes.push_back(MayBeOver("running|ticked", "done"));
        rule.changes.push_back(May("running.STATUS: ES C:\\in\\a.pdf"));
    }
    return rule;
}

Rule NotStarted(const std::string& call, DWORD error, int row, const std::string& starts) {
    return EndsWith(row, call, "a converter that cannot be started is reported, and ends the batch",
                    "00:00:00", LogRecord("00:00:00", 86),
                    "error main Erreur CreateProcess :  " + SystemText(error) + '\n' + kFinished, starts);
}

Rule EndUnknown(const std::string& call, int row, const std::string& starts) {
    return EndsWith(row, call, "what is not known to have gone well has not", "*** Annulé !",
                    LogRecord("*** Annulé !", 90), "", starts);
}

// The document of a row that is not written where it is to be: because of the `check`th look at the check
// box, the `edit`th at the edit, or the joined path.
std::vector<Rule> FolderRulesOf(const std::string& row, int check, int edit) {
    const auto writesTo = [&](const std::string& djvu) {
        return Reads("starts", "-o \"" + djvu + '"', "-o \"~\\" + row + ".djvu\"");
    };
    return {
        When("ui IsDlgButtonChecked main OUTPUT_FOLDER_CHECK #" + std::to_string(check),
             "the file goes beside its PDF", {writesTo("C:\\in\\" + row + ".djvu")}),
        When("ui (GetDlgItem main|GetWindowText(Length)?W) OUTPUT_FOLDER #" + std::to_string(edit),
             "a folder that cannot be read is empty", {writesTo(row + ".djvu")}),
        When("ui PathAppendW " + row + ".djvu #1", "what cannot be joined is what the system leaves: nothing",
             {writesTo("")}),
    };
}

std::vector<Rule> FolderRules() {
    return {
        When("ui (GetDlgItem main|GetWindowText(Length)?W) OUTPUT_FOLDER #1",
             "the edit that is left seems empty, which turns the option off",
             {Becomes("starts", std::regex_replace(kStarts, std::regex("-o \"~"), "-o \"C:\\in")),
              BecomesLike("(running|done).OUTPUT_FOLDER_CHECK", "[E-]S")}),
        When("ui ((GetDlgItem main|GetWindowText(Length)?W) OUTPUT_FOLDER #2|PathIsDirectoryW #.)",
             "a folder that is none starts no batch",
             {"messages: error main Le dossier de destination est incorrect !", "starts: ", "log: earlier",
              "done.durations: \n", "taskbar: ", "awakeCalls: ", MayBeOver("running|ticked", "done"),
              "done.columns: fit",
              MayDiffer("done.(OPEN_DESTINATION|OUTPUT_FOLDER_CHECK|OUTPUT_FOLDER|BROWSE)", "enabled")}),
        When("ui IsDlgButtonChecked main OUTPUT_FOLDER_CHECK #1",
             "the folder is not looked at before the batch, which is what would have found it bad"),
        When("worker GetDlgItem main OUTPUT_FOLDER #.", "an edit that is not reached stays as it was",
             {MayDiffer("\\w+.OUTPUT_FOLDER", "enabled")}),
    };
}

std::vector<Rule> Rules() {
    return {
        NotStarted("worker CreateProcessW #1", ERROR_FILE_NOT_FOUND, 1, ""),
        NotStarted("worker CreateProcessW #2", ERROR_FILE_NOT_FOUND, 2, Start("a")),
        NotStarted("worker SHGetFolderPathW #1", ERROR_FILE_NOT_FOUND, 1, Start("a")),
        NotStarted("worker SHGetFolderPathW #2", ERROR_FILE_NOT_FOUND, 2, kStarts),
        NotStarted("worker GetModuleFileNameW #1", ERROR_DIRECTORY, 1, Start("a", "")),
        NotStarted("worker PathRemoveFileSpecW #1", ERROR_DIRECTORY, 1, Start("a", "~\\Talvenor.exe")),
        EndUnknown("worker (WaitForSingleObject|GetExitCodeProcess) #1", 1, Start("a")),
        EndUnknown("worker GetExitCodeProcess #2", 2, kStarts),
        When("worker (DeleteFileW TalvenorLog.txt #1|GetModuleFileNameW #2|PathRemoveFileSpecW #2|"
             "PathAppendW TalvenorLog.txt #1)",
             "a log that cannot be deleted, or found, is added to",
             {Becomes("log", "earlier" + kRecord + kRecord)}),
        When("worker GetModuleFileNameW #[34]",
             "the log lands where its path points: without a folder, in the current directory",
             {Becomes("log", kRecord), "strays: TalvenorLog.txt"}),
        When("worker (PathRemoveFileSpecW #[34]|PathAppendW TalvenorLog.txt #[23]|"
             "(CreateFileW TalvenorLog.txt|WideCharToMultiByte|lstrlenA|WriteFile) #.|"
             "IsDlgButtonChecked main HIDE_OUTPUT #[12])",
             "a record that cannot be written is lost without a word", {Becomes("log", kRecord)}),
        When("worker GetLocaleInfoW #.", "a locale whose ordering is not known has year, month, day",
             {Reads("log", "2026/11, 16", "16/11, 2026")}),
        When("worker CloseHandle #[12]", "the log stays open, and nobody else can read it",
             {"log: ", "handles: 1"}),
        When("worker SetFilePointer #2", "the record goes wherever the pointer is: over the first",
             {Becomes("log", kRecord)}),
        When("ui IsDlgButtonChecked main HIDE_OUTPUT #1", "the row begins as if its output were shown",
             {Becomes("starts", Start("a", "~", Console::Shown) + '\n' + Start("b"))}),
        When("ui IsDlgButtonChecked main HIDE_OUTPUT #2", "the row begins as if its output were shown",
             {Becomes("starts", Start("a") + '\n' + Start("b", "~", Console::Shown))}),
        When("worker IsDlgButtonChecked main HIDE_OUTPUT #3", "the log has no button", {"done.OPEN_LOG: -h"}),
        When("worker .* HIDE_OUTPUT #.*", "a control that is not reached stays as it was",
             {MayDiffer("\\w+.HIDE_OUTPUT", "enabled")}),
        When("ui SendMessageW FILE_LIST LVM_GETITEMTEXTW #1",
             "a row that cannot be read has an empty path, with which the converter does what it does",
             {"running.STATUS: ES Conversion en cours : ", Becomes("starts", Start("") + '\n' + Start("b"))}),
        When("ui SendMessageW FILE_LIST LVM_GETITEMTEXTW #3",
             "the same for the second row, while nobody looks at the status line",
             {Becomes("starts", Start("a") + '\n' + Start(""))}),
        When("ui SendMessageW FILE_LIST LVM_GETITEMTEXTW #[24]",
             "the path in the status line is followed by the one that is converted"),
        When("ui PathRenameExtensionW #.", "a path that the system refuses stays as it is",
             {Reads("starts", ".pdf\" -v", ".djvu\" -v")}),
        Option("PAGES_CHECK|PAGES", " -p \"1-3\""),
        Option("RESOLUTION_CHECK|RESOLUTION", "-d 300"),
        Option("NO_METADATA", " --no-metadata"),
        Option("NO_OUTLINE", " --no-outline"),
        Option("NO_HYPERLINKS", " --no-hyperlinks"),
        Option("LINES", " --lines"),
        Option("MONOCHROME", " --monochrome"),
        Option("EXTRA_OPTIONS", " --x"),
    };
}

}  // namespace

std::vector<Scenario> HiddenBatchScenarios() {
    return {
        {.name = "hidden_batch",
         .prepare =
             [](Platform& platform) {
                 LeaveEarlierLog(platform);
                 HoldFirst(platform);
             },
         .use = &ConvertWithAllOptions,
         .usual = Usually(
             {BatchOf(2, 2),
              Running("running", Joined({Options("-"), {kTwoRows}})),
              At("ticked", {kTwoRows, "durations: 00:00:07\n", "selected: 0", "columns: fit with durations"}),
              AfterBatch("done",
                         Joined({Options("E"), {"OPEN_LOG: ES", kTwoRows, "durations: 00:00:07\n00:00:07"}})),
              {{"starts", kStarts}, {"messages", kFinished}, {"log", kRecord + kRecord}}}),
         .rules = Joined(
             {Rules(), FolderRulesOf("a", 3, 3), FolderRulesOf("b", 7, 4), FolderRules(), BatchRules()})},
    };
}
