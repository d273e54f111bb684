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
    Platform& platform = user.Program().platform;
    watch.Resume();
    platform.answerToQuestions = IDNO;
    user.Press(IDCANCEL);
    AddControlFacts(user, "asked", facts);
    facts["asked.taskbar"] = platform.Fact("shown");
    facts["asked.awake"] = platform.Fact("awake");
    platform.answerToQuestions = IDYES;
    user.Press(IDCANCEL);
    facts["answered.taskbar"] = platform.Fact("shown");
    platform.converters.ReleaseAll(3);  // a person closes the console, should it still be there
    user.WaitForWorkers();
    watch.End();
    AddWindowFacts(user, "stopped", facts);
}

// The exit code of a program whose console was closed.
constexpr char kEnded[] = "C000013A: 1";

std::vector<Rule> QuestionRules() {
    return {
        When("ui (MessageBoxW #1|malloc for a message's text #[12])",
             "a question that cannot be asked is answered by no", {Becomes("messages", kQuestion)}),
        When("ui (MessageBoxW #2|malloc for a message's text #[34])",
             "a question that cannot be asked is answered by no: the batch goes on until its converter fails",
             {Becomes("messages", kQuestion),
              "closing: ", "searches: ", "jobs: ", "answered.taskbar: 0 of 2"}),
        When("ui LoadStringW 144 #.", "the question is empty",
             {Loses("messages", "Un traitement est en cours.\r\nÊtes-vous sûr de vouloir l'interrompre ?")}),
        When("ui (FindResourceExW|LoadResource|LockResource).* #.*",
             "a text that is not there is empty, and the button keeps the one that it has",
             {May(BecomesLike("\\w+.CANCEL", "ES (Quitter|Arrêter )"))}),
        When("ui ITaskbarList3::SetProgressState #1", "the taskbar goes on showing how far it was",
             {Loses("taskbar", "\nnone"), "shown: 0 of 2", "answered.taskbar: 0 of 2"}),
    };
}

// There is no window that would do what it is asked: the job ends the converter.
std::vector<Rule> JobRules() {
    return {
        When("ui CreateJobObjectW #1", "where there is no job, nothing is ended",
             {"jobs: ", "outsideJob: 1"}),
        When("worker AssignProcessToJobObject #1", "what is not in the job is not ended with it",
             {"jobs: C000013A:", "outsideJob: 1"}),
        When("ui TerminateJobObject #1", "what cannot be ended goes on", {"jobs: "}),
        When("ui EnumWindows #1", "what cannot be looked for is not found, and is ended by the job",
             {"closing: ", "searches: "}),
    };
}

Scenario Stopping(const std::string& name, void (*prepare)(Platform& platform), const Facts& requests,
                  const std::vector<Rule>& rules) {
    return {.name = name,
            .prepare = prepare,
            .use = &Use,
            .usual = Usually({BatchOf(2, 0),
                              Running("asked", {"taskbar: 0 of 2", "awake: 1"}),
                              AfterBatch("stopped", {kTwoRows, "durations: *** Annulé !\n"}),
                              {{"starts", ShownStart()},
                               {"answered.taskbar", ""},
                               {"searches", "1"},
                               {"messages", std::string(kQuestion) + '\n' + kQuestion}},
                              requests}),
            .rules = Joined({rules, QuestionRules(), BatchRules()})};
}

std::vector<Rule> WindowRules() {
    return {
        When("ui CreateJobObjectW #1", "where there is no job, there is a window to be asked",
             {"outsideJob: 1"}),
        When("ui EnumWindows #1",
             "a window that cannot be looked for is not found: the job ends what has none",
             {"closing: ", "searches: ", Becomes("jobs", kEnded)}),
        When("ui GetWindowThreadProcessId #2",
             "a window of which nothing is known is none of ours: the job ends what has none",
             {"closing: ", Becomes("jobs", kEnded)}),
        When("ui SendNotifyMessageW #1", "the console is not asked to close", {"closing: "}),
    };
}

std::vector<Rule> TerminalRules() {
    return {
        When("ui GetClassNameW #1",
             "a window is an ordinary one unless it is known not to be, and is not ended by force",
             {"jobs: "}),
        When("ui (GetWindowThreadProcessId #2|SendNotifyMessageW #1)",
             "the window would not do what it is asked: the job ends the converter", {"closing: "}),
    };
}

}  // namespace

std::vector<Scenario> StopScenarios() {
    return {
        Stopping("stop", &HoldFirst<>, {{"closing", "console 1"}}, WindowRules()),
        Stopping("stop_without_window", &HoldFirst<nullptr>, {{"jobs", kEnded}}, JobRules()),
        Stopping("stop_in_terminal", &HoldFirst<kTerminalClass>,
                 {{"closing", "terminal 1"}, {"jobs", kEnded}}, Joined({TerminalRules(), JobRules()})),
    };
}
