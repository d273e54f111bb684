// The countdown after a batch: to its end, and past it by "Annuler"; and cut short by "Éteindre
// immédiatement".
#include "tests/faults/scenarios/scenarios.h"

namespace {

std::string Seconds(HWND countdown) {
    return User::TextOf(::GetDlgItem(countdown, IDC_SECONDS));
}

// A batch whose countdown has opened. The calls count from the moment when it is due.
HWND ConvertUntilCountdown(User& user, CallWatch& watch) {
    OpenWithFiles(user, {L"C:\\in\\a.pdf"});
    user.Press(IDC_SHUT_DOWN);
    watch.At("IsDlgButtonChecked main SHUT_DOWN", 1, [&] { watch.Begin(); });
    user.Press(IDOK);
    return user.WaitForWorkersDialog(IDC_SECONDS);
}

void LetItEnd(User& user, CallWatch& watch, Facts& facts) {
    const HWND countdown = ConvertUntilCountdown(user, watch);
    facts["count.first"] = Seconds(countdown);
    for (int tick = 0; tick < 29; ++tick) User::Send(countdown, WM_TIMER, 1);
    facts["count.last"] = Seconds(countdown);
    User::Send(countdown, WM_TIMER, 1);
    facts["count.over"] = Seconds(countdown);
    facts["count.timers"] = user.Program().platform.Fact("timers");
    user.CloseDialog(countdown, IDCANCEL);
    WaitForEndOfBatch(user, watch, facts);
}

void ShutDownNow(User& user, CallWatch& watch, Facts& facts) {
    const HWND countdown = ConvertUntilCountdown(user, watch);
    User::Send(countdown, WM_TIMER, 1);
    facts["count.first"] = Seconds(countdown);
    user.CloseDialog(countdown, IDOK);
    WaitForEndOfBatch(user, watch, facts);
}

std::vector<Rule> Rules() {
    return {
        When("worker (IsDlgButtonChecked main SHUT_DOWN|DialogBoxParamW 101|"
             "SetWindowLongPtrW countdown DWLP_USER) #1",
             "no countdown, no shutdown; the batch ends as any other", {"shutdowns: ", "count..*: "}),
        When("worker GetWindowLongPtrW (countdown|other) DWLP_USER #.*",
             "a message is lost: with a tick the countdown takes longer, and is cancelled before its end",
             {May("shutdowns: "), May(BecomesLike("count..*", "[0-9]*"))}),
        When("worker EndDialog countdown 1 #1", "a dialog that stays is pressed again, which asks again",
             {BecomesLike("shutdowns", "([a-zA-Z ]+\n){9}[a-zA-Z ]+")}),
        When("worker OpenProcessToken #1",
             "a request that is not granted is not reported, and the dialog stays", {"shutdowns: "}),
        When("worker LookupPrivilegeValueW #1", "without its identifier the privilege cannot be enabled",
             {"shutdowns: open token\nenable"}),
        When("worker AdjustTokenPrivileges #1", "without the privilege there is no request",
             {"shutdowns: open token\nlook up SeShutdownPrivilege"}),
        When("worker InitiateSystemShutdownW #1",
             "a request that is not granted is not reported, and the dialog stays",
             {Loses("shutdowns", "\nrequest\ndisable")}),
        When("worker AdjustTokenPrivileges #2", "a privilege that cannot be given back is kept",
             {Loses("shutdowns", "\ndisable")}),
        When("worker (GetDlgItem countdown|SetWindowTextW) SECONDS #.*", "one second is not shown",
             {May(BecomesLike("count.(first|last|over)", "30|2"))}),
    };
}

Scenario Countdown(const std::string& name, void (*use)(User&, CallWatch&, Facts&),
                   const std::vector<std::string>& count) {
    return {.name = name,
            .use = use,
            .usual = Usually(
                {BatchOf(1, 1),
                 At("count", count),
                 AfterBatch("done", {"SHUT_DOWN: ES C", "rows: C:\\in\\a.pdf", "durations: 00:00:07"}),
                 {{"starts", ShownStart()},
                  {"messages", kFinished},
                  {"shutdowns", "open token\nlook up SeShutdownPrivilege\nenable\nrequest\ndisable"}}}),
            .rules = Joined({Rules(), BatchRules()})};
}

}  // namespace

std::vector<Scenario> CountdownScenarios() {
    return {Countdown("countdown", &LetItEnd, {"first: 30", "last: 1", "over: 1", "timers: "}),
            Countdown("shut_down_now", &ShutDownNow, {"first: 29"})};
}
