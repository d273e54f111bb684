// A batch of two files that the user thinks twice about and then stops, while the first is converted: its
// console has a window that can be asked to close, or none, or one that takes no requests.
#include "tests/faults/scenarios/scenarios.h"

namespace {

void Use(User& user, CallWatch& watch, Facts& facts) {
    // The job alone of the set-up, and of the start of the converter.
    watch.At("CreateJobObjectW", 1, [&] { watch.Begin(); });
    watch.At("CreateDialogParamW 102", 1, [&] { watch.End(); });
    watch.At("AssignProcessToJobObject", 1, [&] { watch.Resume(); });
    watch.At("worker WaitForSingleObject", 1, [&] { watch.End(); });
    OpenWithFiles(user, {L"C:\\in\\a.pdf", L"C:\\in\\b.pdf"});
    user.Press(IDOK);
    user.WaitForConverter(1);
    user.WaitForPosted();
    Platform& platform = user.Program().ThePlatform();
    watch.Resume();
    platform.answerToQuestions = IDNO;
    user.Press(IDCANCEL);
    AddControlFacts(user, "asked", facts);
    facts["asked.taskbar"] = platform.TaskbarShows();
    facts["asked.awake"] = std::to_string(platform.AwakeThreads());
    platform.answerToQuestions = IDYES;
    user.Press(IDCANCEL);
    facts["answered.taskbar"] = platform.TaskbarShows();
    platform.EndConverters(3);  // a person closes the console, should it still be there
    user.WaitForWorkers();
    watch.End();
    AddControlFacts(user, "stopped", facts);
    AddListFacts(user, "stopped", facts);
}

constexpr char kQuestion[] =
    "question main Un traitement est en cours.\r\nÊtes-vous sûr de vouloir l'interrompre ?";
// The exit code of a program whose console was closed.
constexpr char kEnded[] = "C000013A: 1";

std::vector<Rule> QuestionRules() {
    const std::string question = Exactly(kQuestion);
    return {
        {.call = "ui (MessageBoxW #1|malloc for a message's text #[12])",
         .why = "a question that cannot be asked is answered by no",
         .changes = {Becomes("messages", question)}},
        {.call = "ui (MessageBoxW #2|malloc for a message's text #[34])",
         .why =
             "a question that cannot be asked is answered by no: the batch goes on until its converter fails",
         .changes = {Becomes("messages", question), Becomes("closing", ""), Becomes("searches", ""),
                     Becomes("jobs", ""), Becomes("answered.taskbar", "0 of 2")}},
        {.call = "ui LoadStringW 144 #.",
         .why = "the question is empty",
         .changes = {Loses("messages",
                           "Un traitement est en cours.\r\nÊtes-vous sûr de vouloir l'interrompre ?")}},
        {.call = "ui GetWindowThreadProcessId #1",
         .why = "a window of which nothing is known is none of ours"},
        {.call = "ui (FindResourceExW|LoadResource|LockResource).* #.*",
         .why = "a text that is not there is empty, and the button keeps the one that it has",
         .changes = {MayBecome("\\w+\\.2", "ES (Quitter|Arrêter )")}},
        {.call = "worker (GetExitCodeProcess|WaitForSingleObject) #1",
         .why = "the batch has been stopped anyway"},
        {.call = "ui ITaskbarList3::SetProgressState #1",
         .why = "the taskbar goes on showing how far it was",
         .changes = {Loses("taskbar", "\nnone"), Becomes("shown", "0 of 2"),
                     Becomes("answered.taskbar", "0 of 2")}},
    };
}

// There is no window that would do what it is asked: the job ends the converter.
std::vector<Rule> JobRules() {
    return {
        {.call = "ui CreateJobObjectW #1",
         .why = "where there is no job, nothing is ended",
         .changes = {Becomes("jobs", ""), Becomes("outsideJob", "1")}},
        {.call = "worker AssignProcessToJobObject #1",
         .why = "what is not in the job is not ended with it",
         .changes = {Becomes("jobs", "C000013A:"), Becomes("outsideJob", "1")}},
        {.call = "ui TerminateJobObject #1",
         .why = "what cannot be ended goes on",
         .changes = {Becomes("jobs", "")}},
        {.call = "ui EnumWindows #1",
         .why = "what cannot be looked for is not found, and is ended by the job",
         .changes = {Becomes("closing", ""), Becomes("searches", "")}},
    };
}

Scenario Stopping(const std::string& name, void (*prepare)(Platform& platform),
                  const std::vector<Rule>& rules) {
    return {
        name, prepare, &Use,
        Together(
            {QuietRun(),
             BatchOf(2, 0),
             RunningControls("asked"),
             ControlsAfterBatch("stopped"),
             List("stopped", {"C:\\in\\a.pdf\nC:\\in\\b.pdf", "*** Annulé !\n", -1, "fit with durations"}),
             {{"starts",
               "visible a.pdf in ~: /C \"pdf2djvu.exe -o \"C:\\in\\a.djvu\" -v  \"C:\\in\\a.pdf\"\""},
              {"asked.taskbar", "0 of 2"},
              {"asked.awake", "1"},
              {"answered.taskbar", ""},
              {"searches", "1"},
              {"messages", std::string(kQuestion) + '\n' + kQuestion}}}),
        Joined({rules, QuestionRules(), BatchRules()})};
}

}  // namespace

Scenario StopScenario() {
    const std::vector<Rule> rules = {
        {.call = "ui CreateJobObjectW #1",
         .why = "where there is no job, there is a window to be asked",
         .changes = {Becomes("outsideJob", "1")}},
        {.call = "ui EnumWindows #1",
         .why = "a window that cannot be looked for is not found: the job ends what has none",
         .changes = {Becomes("closing", ""), Becomes("searches", ""), Becomes("jobs", kEnded)}},
        {.call = "ui GetWindowThreadProcessId #2",
         .why = "a window of which nothing is known is none of ours: the job ends what has none",
         .changes = {Becomes("closing", ""), Becomes("jobs", kEnded)}},
        {.call = "ui SendNotifyMessageW #1",
         .why = "the console is not asked to close",
         .changes = {Becomes("closing", "")}},
        {.call = "ui GetClassNameW #1", .why = "a window is an ordinary one unless it is known not to be"},
    };
    Scenario scenario = Stopping(
        "stop",
        [](Platform& platform) {
            platform.converters = {{.held = true}, {}};
        },
        rules);
    scenario.usual["closing"] = "console 1";
    return scenario;
}

Scenario StopWithoutWindowScenario() {
    Scenario scenario = Stopping(
        "stop_without_window",
        [](Platform& platform) {
            platform.converters = {{.held = true, .console = Console::None}, {}};
        },
        JobRules());
    scenario.usual["jobs"] = kEnded;
    return scenario;
}

Scenario StopInTerminalScenario() {
    const std::vector<Rule> rules = {
        {.call = "ui GetClassNameW #1",
         .why = "a window is an ordinary one unless it is known not to be, and is not ended by force",
         .changes = {Becomes("jobs", "")}},
        {.call = "ui (GetWindowThreadProcessId #2|SendNotifyMessageW #1)",
         .why = "the window would not do what it is asked: the job ends the converter",
         .changes = {Becomes("closing", "")}},
    };
    Scenario scenario = Stopping(
        "stop_in_terminal",
        [](Platform& platform) {
            platform.converters = {{.held = true, .console = Console::Terminal}, {}};
        },
        Joined({rules, JobRules()}));
    scenario.usual["closing"] = "terminal 1";
    scenario.usual["jobs"] = kEnded;
    return scenario;
}
