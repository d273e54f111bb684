// The log of an earlier batch is opened; the second time no program opens it.
#include "tests/faults/scenarios/scenarios.h"

namespace {

void Use(User& user, CallWatch& watch, Facts& facts) {
    Open(user);
    watch.Begin();
    user.Press(IDC_OPEN_LOG);
    user.Program().ThePlatform().shellError = ERROR_NO_ASSOCIATION;
    user.Press(IDC_OPEN_LOG);
    watch.End();
    AddControlFacts(user, "opened", facts);
}

std::vector<Rule> Rules() {
    const std::string description = SystemText(ERROR_NO_ASSOCIATION);
    const std::string failure = "error main Erreur ShellExecute : " + description;
    const std::vector<Rule> rules = {
        {.call = "ui ShellExecuteExW #1",
         .why = "the shell's refusal is reported",
         .changes = {Becomes("shell", Exactly("~\\TalvenorLog.txt ")),
                     Becomes("messages", Exactly(failure + '\n' + failure))}},
        {.call = "ui ShellExecuteExW #2",
         .why = "the shell's refusal is reported, whichever it is",
         .changes = {Becomes("shell", Exactly("~\\TalvenorLog.txt "))}},
        {.call = "ui GetModuleFileNameW #.",
         .why = "the log is looked for where its path points",
         .changes = {Reads("shell", "TalvenorLog.txt", "~\\TalvenorLog.txt")}},
        {.call = "ui PathRemoveFileSpecW #.",
         .why = "the log is looked for where its path points",
         .changes = {Reads("shell", "~\\Talvenor\\TalvenorLog.txt", "~\\TalvenorLog.txt")}},
        {.call = "ui PathAppendW TalvenorLog.txt #.",
         .why = "the log is looked for where its path points",
         .changes = {Loses("shell", "~\\TalvenorLog.txt")}},
    };
    return Joined({rules, ShellFailureRules(description)});
}

}  // namespace

Scenario OpenLogScenario() {
    return {
        "open_log", &LeaveEarlierLog, &Use,
        Together({QuietRun(),
                  IdleControls("opened"),
                  {{"opened.1024", "ES"},
                   {"log", "earlier"},
                   {"shell", "~\\TalvenorLog.txt \n~\\TalvenorLog.txt "},
                   {"messages", "error main Erreur ShellExecute : " + SystemText(ERROR_NO_ASSOCIATION)}}}),
        Rules()};
}
