// Two files with consoles hidden and every option that is read for them.
#include "tests/faults/scenarios/scenarios.h"

namespace {

void ConvertWithAllOptions(User& user, CallWatch& watch, Facts& facts) {
    OpenWithFiles(user, {L"C:\\in\\a.pdf", L"C:\\in\\b.pdf"});
    for (const int checkBox : {IDC_HIDE_OUTPUT, IDC_PAGES_CHECK, IDC_RESOLUTION_CHECK, IDC_NO_METADATA,
                               IDC_NO_OUTLINE, IDC_NO_HYPERLINKS, IDC_LINES, IDC_MONOCHROME}) {
        user.Press(checkBox);
    }
    user.SetText(IDC_PAGES, L"1-3");
    user.SetText(IDC_EXTRA_OPTIONS, L"--x");
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
                                       "EXTRA_OPTIONS: " + enabled + "S --x"};
    for (const std::string checkBox : {"HIDE_OUTPUT", "PAGES_CHECK", "RESOLUTION_CHECK", "NO_METADATA",
                                       "NO_OUTLINE", "NO_HYPERLINKS", "LINES", "MONOCHROME"}) {
        states.push_back(checkBox + ": " + enabled + "S C");
    }
    return states;
}

// "/C "pdf2djvu.exe ..."" with all options.
std::string Arguments(const std::string& djvu, const std::string& pdf) {
    return "/C \"pdf2djvu.exe -o \"" + djvu +
           "\" -v -d 300 --no-metadata --no-outline --no-hyperlinks --lines --monochrome --x -p \"1-3\" \"" +
           pdf + "\"\"";
}

std::string Start(const std::string& name, const std::string& folder = "~") {
    return "hidden " + name + ".pdf in " + folder + ": " +
           Arguments("C:\\in\\" + name + ".djvu", "C:\\in\\" + name + ".pdf") + " 2>>TalvenorLog.txt";
}

// The same of a row that begins with the output shown.
std::string StartWithoutHiding(const std::string& name) {
    return "visible " + name +
           ".pdf in ~: " + Arguments("C:\\in\\" + name + ".djvu", "C:\\in\\" + name + ".pdf");
}

std::string StartWithoutPath() {
    return "hidden  in ~: " + Arguments(".djvu", "") + " 2>>TalvenorLog.txt";
}

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

// A converter that does not start: a message, and the batch ends as if it were done.
Rule NotStarted(const std::string& call, DWORD error, int row, const std::string& starts) {
    const std::string before = row == 1 ? "" : kRecord;
    return When(call, "a converter that cannot be started is reported, and ends the batch",
                Joined({EndsWith(row, 2, "00:00:00", StartFailure(error)),
                        {Becomes("log", before + LogRecord("00:00:00", 86)), Becomes("starts", starts)}}));
}

// A converter of which it is not known how it ended counts as failed.
Rule EndUnknown(const std::string& call, int row, const std::string& starts) {
    const std::string before = row == 1 ? "" : kRecord;
    return When(
        call, "what is not known to have gone well has not",
        Joined({EndsWith(row, 2, "*** Annulé !", ""),
                {Becomes("log", before + LogRecord("*** Annulé !", 90)), Becomes("starts", starts)}}));
}

std::vector<Rule> Rules() {
    return {
        NotStarted("worker CreateProcessW #1", ERROR_FILE_NOT_FOUND, 1, ""),
        NotStarted("worker CreateProcessW #2", ERROR_FILE_NOT_FOUND, 2, Start("a")),
        NotStarted("worker SHGetFolderPathW #1", ERROR_FILE_NOT_FOUND, 1, Start("a")),
        NotStarted("worker SHGetFolderPathW #2", ERROR_FILE_NOT_FOUND, 2, Start("a") + '\n' + Start("b")),
        NotStarted("worker GetModuleFileNameW #1", ERROR_DIRECTORY, 1, Start("a", "")),
        NotStarted("worker PathRemoveFileSpecW #1", ERROR_DIRECTORY, 1, Start("a", "~\\Talvenor.exe")),
        EndUnknown("worker (WaitForSingleObject|GetExitCodeProcess) #1", 1, Start("a")),
        EndUnknown("worker GetExitCodeProcess #2", 2, Start("a") + '\n' + Start("b")),
        When("worker WaitForSingleObject #2", "the second converter has ended already"),
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
        When("worker SetFilePointer #1", "the log is empty: its end is its beginning"),
        When("worker SetFilePointer #2", "the record goes wherever the pointer is: over the first",
             {Becomes("log", kRecord)}),
        When("ui IsDlgButtonChecked main HIDE_OUTPUT #1", "the row begins as if its output were shown",
             {Becomes("starts", StartWithoutHiding("a") + '\n' + Start("b"))}),
        When("ui IsDlgButtonChecked main HIDE_OUTPUT #2", "the row begins as if its output were shown",
             {Becomes("starts", Start("a") + '\n' + StartWithoutHiding("b"))}),
        When("worker IsDlgButtonChecked main HIDE_OUTPUT #3", "the log has no button", {"done.OPEN_LOG: -h"}),
        When("worker .* HIDE_OUTPUT #.*", "a control that is not reached stays as it was",
             {MayDiffer("\\w+.HIDE_OUTPUT", "enabled")}),
        When("ui SendMessageW FILE_LIST LVM_GETITEMTEXTW #1",
             "a row that cannot be read has an empty path, with which the converter does what it does",
             {"running.STATUS: ES Conversion en cours : ",
              Becomes("starts", StartWithoutPath() + '\n' + Start("b"))}),
        When("ui SendMessageW FILE_LIST LVM_GETITEMTEXTW #3",
             "the same for the second row, while nobody looks at the status line",
             {Becomes("starts", Start("a") + '\n' + StartWithoutPath())}),
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
              {{"starts", Start("a") + '\n' + Start("b")},
               {"messages", kFinished},
               {"log", kRecord + kRecord}}}),
         .rules = Joined({Rules(), BatchRules()})},
    };
}
