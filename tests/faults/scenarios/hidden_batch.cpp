// Two files with consoles hidden and every option that is read for them.
#include "tests/faults/scenarios/scenarios.h"

namespace {

void Use(User& user, CallWatch& watch, Facts& facts) {
    OpenWithFiles(user, {L"C:\\in\\a.pdf", L"C:\\in\\b.pdf"});
    user.Press(IDC_HIDE_OUTPUT);
    user.Press(IDC_PAGES_CHECK);
    user.SetText(IDC_PAGES, L"1-3");
    user.Press(IDC_RESOLUTION_CHECK);
    user.SetText(IDC_EXTRA_OPTIONS, L"--x");
    for (const int checkBox :
         {IDC_NO_METADATA, IDC_NO_OUTLINE, IDC_NO_HYPERLINKS, IDC_LINES, IDC_MONOCHROME}) {
        user.Press(checkBox);
    }
    watch.Begin();
    user.Press(IDOK);
    user.WaitForConverter(1);
    AddControlFacts(user, "running", facts);
    AddListFacts(user, "running", facts);
    User::Send(user.Window(), WM_TIMER, 2);
    AddListFacts(user, "ticked", facts);
    user.Program().ThePlatform().EndConverters(0);
    user.WaitForWorkers();
    watch.End();
    AddControlFacts(user, "done", facts);
    AddListFacts(user, "done", facts);
}

// Check boxes that are checked and edits that have a text keep both, whatever becomes of their enabling.
Facts Options(const std::string& moment, const std::string& enabled) {
    return {{moment + ".1019", enabled + "S C"},   {moment + ".1034", enabled + "S C"},
            {moment + ".1014", enabled + "S 1-3"}, {moment + ".1033", enabled + "S C"},
            {moment + ".1032", enabled + "S 300"}, {moment + ".1018", enabled + "S --x"},
            {moment + ".1017", enabled + "S C"},   {moment + ".1036", enabled + "S C"},
            {moment + ".1037", enabled + "S C"},   {moment + ".1016", enabled + "S C"},
            {moment + ".1030", enabled + "S C"}};
}

std::string Start(const std::string& name, const std::string& folder = "~") {
    return "hidden " + name + ".pdf in " + folder + ": /C \"pdf2djvu.exe -o \"C:\\in\\" + name +
           ".djvu\" -v -d 300 --no-metadata --no-outline --no-hyperlinks --lines --monochrome --x -p \"1-3\" "
           "\"C:\\in\\" +
           name + ".pdf\"\" 2>>TalvenorLog.txt";
}

// The same of a row that begins with the output shown.
std::string ShownStart(const std::string& name) {
    constexpr std::string_view hidden = "hidden";
    const std::string start = Start(name);
    return "visible" + start.substr(hidden.size(), start.rfind(" 2>>") - hidden.size());
}

std::string StartWithoutPath() {
    return "hidden  in ~: /C \"pdf2djvu.exe -o \".djvu\" -v -d 300 --no-metadata --no-outline "
           "--no-hyperlinks --lines "
           "--monochrome --x -p \"1-3\" \"\"\" 2>>TalvenorLog.txt";
}

constexpr char kFinished[] = "information main Conversion terminée !";

// What a control stands for on the command line: without an answer it is left out for that file.
Rule Option(const std::string& ids, const std::string& option) {
    return {.call = "(worker|ui) .* (" + ids + ") #.*",
            .why = "an option that cannot be read is left out, a control that is not reached stays as it was",
            .changes = {MayLose("starts", option), MayDiffer("\\w+\\.(" + ids + ")", "enabled")}};
}

// A converter that does not start, the first or the second: a message, and the batch ends as if it were done.
Rule NotStarted(const std::string& call, DWORD error, bool isFirst, const std::string& starts) {
    const std::string durations = isFirst ? "00:00:00\n" : "00:00:07\n00:00:00";
    const std::string log = (isFirst ? "" : LogRecord("00:00:07", 86)) + LogRecord("00:00:00", 86);
    std::vector<Change> changes = {
        Becomes("messages",
                Exactly("error main Erreur CreateProcess :  " + SystemText(error) + '\n' + kFinished)),
        Becomes("done.durations", Exactly(durations)), Becomes("log", Exactly(log)),
        Becomes("starts", Exactly(starts)),
        Becomes("taskbar", isFirst ? "0 of 2\nnone" : "0 of 2\n1 of 2\nnone")};
    // There was no converter to look on at.
    if (isFirst) changes.push_back(MayBeOver("running|ticked", "done"));
    return {.call = call,
            .why = "a converter that cannot be started is reported, and ends the batch",
            .changes = changes};
}

// A converter of which it is not known how it ended counts as failed.
Rule EndUnknown(const std::string& call, bool isFirst) {
    std::vector<Change> changes = {
        Becomes("messages", ""),
        Becomes("done.durations", Exactly(isFirst ? "*** Annulé !\n" : "00:00:07\n*** Annulé !")),
        Becomes("log", Exactly((isFirst ? "" : LogRecord("00:00:07", 86)) + LogRecord("*** Annulé !", 90))),
        Becomes("taskbar", isFirst ? "0 of 2\nnone" : "0 of 2\n1 of 2\nnone")};
    if (isFirst) {
        changes.push_back(Becomes("starts", Exactly(Start("a"))));
        changes.push_back(MayBeOver("running|ticked", "done"));
    }
    return {.call = call, .why = "what is not known to have gone well has not", .changes = changes};
}

std::vector<Rule> Rules() {
    const std::string oneRecord = Exactly(LogRecord("00:00:07", 86));
    const std::string bothRecords = Exactly(LogRecord("00:00:07", 86) + LogRecord("00:00:07", 86));
    return {
        NotStarted("worker CreateProcessW #1", ERROR_FILE_NOT_FOUND, true, ""),
        NotStarted("worker CreateProcessW #2", ERROR_FILE_NOT_FOUND, false, Start("a")),
        NotStarted("worker SHGetFolderPathW #1", ERROR_FILE_NOT_FOUND, true, Start("a")),
        NotStarted("worker SHGetFolderPathW #2", ERROR_FILE_NOT_FOUND, false, Start("a") + '\n' + Start("b")),
        NotStarted("worker GetModuleFileNameW #1", ERROR_DIRECTORY, true, Start("a", "")),
        NotStarted("worker PathRemoveFileSpecW #1", ERROR_DIRECTORY, true, Start("a", "~\\Talvenor.exe")),
        EndUnknown("worker (WaitForSingleObject|GetExitCodeProcess) #1", true),
        EndUnknown("worker GetExitCodeProcess #2", false),
        {.call = "worker WaitForSingleObject #2", .why = "the second converter has ended already"},
        {.call = "worker (DeleteFileW TalvenorLog.txt #1|GetModuleFileNameW #2|PathRemoveFileSpecW #2|"
                 "PathAppendW TalvenorLog.txt #1)",
         .why = "a log that cannot be deleted, or found, is added to",
         .changes = {Becomes("log", "earlier" + bothRecords)}},
        {.call = "worker GetModuleFileNameW #[34]",
         .why = "the log lands where its path points: without a folder, in the current directory",
         .changes = {Becomes("log", oneRecord), Becomes("strays", "TalvenorLog.txt")}},
        {.call = "worker (PathRemoveFileSpecW #[34]|PathAppendW TalvenorLog.txt #[23]|CreateFileW "
                 "TalvenorLog.txt #.|"
                 "WideCharToMultiByte #.|lstrlenA #.|WriteFile #.)",
         .why = "a record that cannot be written is lost without a word",
         .changes = {Becomes("log", oneRecord)}},
        {.call = "worker SetFilePointer #1", .why = "the log is empty: its end is its beginning"},
        {.call = "worker SetFilePointer #2",
         .why = "the record goes wherever the pointer is: over the first",
         .changes = {Becomes("log", oneRecord)}},
        {.call = "worker GetLocaleInfoW #.",
         .why = "a locale whose ordering is not known has year, month, day",
         .changes = {Reads("log", "2026/11, 16", "16/11, 2026")}},
        {.call = "worker CloseHandle #[12]",
         .why = "the log stays open, and nobody else can read it",
         .changes = {Becomes("log", ""), Becomes("handles", "1")}},
        {.call = "worker MessageBoxW #1",
         .why = "the end is not reported",
         .changes = {Becomes("messages", "")}},
        {.call = "worker malloc for a message's text #.",
         .why = "the end is not reported",
         .changes = {Becomes("messages", "")}},
        {.call = "ui IsDlgButtonChecked main 1019 #1",
         .why = "the row begins as if its output were shown",
         .changes = {Becomes("starts", Exactly(ShownStart("a") + '\n' + Start("b")))}},
        {.call = "ui IsDlgButtonChecked main 1019 #2",
         .why = "the row begins as if its output were shown",
         .changes = {Becomes("starts", Exactly(Start("a") + '\n' + ShownStart("b")))}},
        {.call = "worker .* 1019 #.*",
         .why = "the check box is read again for the record of each row and for the button",
         .changes = {MayBecome("log", oneRecord), MayBecome("done.1024", "-h"),
                     MayDiffer("\\w+\\.1019", "enabled")}},
        {.call = "ui SendMessageW 1040 LVM_GETITEMTEXTW #1",
         .why = "a row that cannot be read has an empty path, with which the converter does what it does",
         .changes = {Becomes("running.1004", "ES Conversion en cours : "),
                     Becomes("starts", Exactly(StartWithoutPath() + '\n' + Start("b")))}},
        {.call = "ui SendMessageW 1040 LVM_GETITEMTEXTW #3",
         .why = "the same for the second row, while nobody looks at the status line",
         .changes = {Becomes("starts", Exactly(Start("a") + '\n' + StartWithoutPath()))}},
        {.call = "ui SendMessageW 1040 LVM_GETITEMTEXTW #[24]",
         .why = "the path in the status line is followed by the one that is converted"},
        {.call = "ui PathRenameExtensionW #.",
         .why = "a path that the system refuses stays as it is",
         .changes = {Reads("starts", ".pdf\" -v", ".djvu\" -v")}},
        Option("1034|1014", " -p \"1-3\""),
        Option("1033|1032", "-d 300"),
        Option("1017", " --no-metadata"),
        Option("1036", " --no-outline"),
        Option("1037", " --no-hyperlinks"),
        Option("1016", " --lines"),
        Option("1030", " --monochrome"),
        Option("1018", " --x"),
    };
}

}  // namespace

Scenario HiddenBatchScenario() {
    const std::string rows = "C:\\in\\a.pdf\nC:\\in\\b.pdf";
    return {"hidden_batch",
            [](Platform& platform) {
                LeaveEarlierLog(platform);
                platform.converters = {{.held = true}, {}};
            },
            &Use,
            Together({QuietRun(),
                      BatchOf(2, 2),
                      RunningControls("running"),
                      Options("running", "-"),
                      List("running", {rows, "\n", 0, "fit with durations"}),
                      List("ticked", {rows, "00:00:07\n", 0, "fit with durations"}),
                      ControlsAfterBatch("done"),
                      Options("done", "E"),
                      {{"done.1024", "ES"}},
                      List("done", {rows, "00:00:07\n00:00:07", -1, "fit with durations"}),
                      {{"starts", Start("a") + '\n' + Start("b")},
                       {"messages", "information main Conversion terminée !"},
                       {"log", LogRecord("00:00:07", 86) + LogRecord("00:00:07", 86)}}}),
            Joined({Rules(), BatchRules()})};
}
