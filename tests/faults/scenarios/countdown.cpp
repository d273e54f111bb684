// The countdown after a batch: to its end, and past it by "Annuler"; and cut short by "Éteindre
// immédiatement".
#include "tests/faults/scenarios/scenarios.h"

#include "tests/support/utf8.h"

#include <array>

namespace {

std::string Seconds(HWND countdown) {
    std::array<wchar_t, 20> text{};
    User::Send(::GetDlgItem(countdown, IDC_SECONDS), WM_GETTEXT, text.size(),
               reinterpret_cast<LPARAM>(text.data()));
    return Utf8(text.data());
}

// A batch whose countdown has opened. The calls count from the moment when it is due.
HWND ConvertUntilCountdown(User& user, CallWatch& watch) {
    OpenWithFiles(user, {L"C:\\in\\a.pdf"});
    user.Press(IDC_SHUT_DOWN);
    watch.At("IsDlgButtonChecked main 1038", 1, [&] { watch.Begin(); });
    user.Press(IDOK);
    return user.WaitForWorkersDialog(IDC_SECONDS);
}

void AddFactsOfTheEnd(User& user, CallWatch& watch, Facts& facts) {
    user.WaitForWorkers();
    watch.End();
    AddControlFacts(user, "done", facts);
    AddListFacts(user, "done", facts);
}

void LetItEnd(User& user, CallWatch& watch, Facts& facts) {
    const HWND countdown = ConvertUntilCountdown(user, watch);
    facts["count.first"] = Seconds(countdown);
    for (int tick = 0; tick < 29; ++tick) User::Send(countdown, WM_TIMER, 1);
    facts["count.last"] = Seconds(countdown);
    User::Send(countdown, WM_TIMER, 1);
    facts["count.over"] = Seconds(countdown);
    facts["count.timers"] = user.Program().ThePlatform().Timers();
    user.CloseDialog(countdown, IDCANCEL);
    AddFactsOfTheEnd(user, watch, facts);
}

void ShutDownNow(User& user, CallWatch& watch, Facts& facts) {
    const HWND countdown = ConvertUntilCountdown(user, watch);
    User::Send(countdown, WM_TIMER, 1);
    facts["count.first"] = Seconds(countdown);
    user.CloseDialog(countdown, IDOK);
    AddFactsOfTheEnd(user, watch, facts);
}

std::vector<Rule> Rules() {
    return {
        {.call = "worker (IsDlgButtonChecked main 1038|DialogBoxParamW 101|SetWindowLongPtrW countdown "
                 "DWLP_USER) "
                 "#1",
         .why = "no countdown, no shutdown; the batch ends as any other",
         .changes = {Becomes("shutdowns", ""), Becomes("count\\..*", "")}},
        {.call = "worker GetWindowLongPtrW (countdown|other) DWLP_USER #.*",
         .why = "a message is lost: with a tick the countdown takes longer, and is cancelled before its end",
         .changes = {MayBecome("shutdowns", ""), MayBecome("count\\..*", "[0-9]*")}},
        {.call = "worker EndDialog countdown 1 #1",
         .why = "a dialog that stays is pressed again, which asks again",
         .changes = {Becomes("shutdowns", "([a-zA-Z ]+\n){9}[a-zA-Z ]+")}},
        {.call = "worker OpenProcessToken #1",
         .why = "a request that is not granted is not reported, and the dialog stays",
         .changes = {Becomes("shutdowns", "")}},
        {.call = "worker LookupPrivilegeValueW #1",
         .why = "without its identifier the privilege cannot be enabled",
         .changes = {Becomes("shutdowns", "open token\nenable")}},
        {.call = "worker AdjustTokenPrivileges #1",
         .why = "without the privilege there is no request",
         .changes = {Becomes("shutdowns", "open token\nlook up SeShutdownPrivilege")}},
        {.call = "worker InitiateSystemShutdownW #1",
         .why = "a request that is not granted is not reported, and the dialog stays",
         .changes = {Loses("shutdowns", "\nrequest\ndisable")}},
        {.call = "worker AdjustTokenPrivileges #2",
         .why = "a privilege that cannot be given back is kept",
         .changes = {Loses("shutdowns", "\ndisable")}},
        {.call = "worker (GetDlgItem countdown 1039|SetWindowTextW 1039) #.*",
         .why = "one second is not shown",
         .changes = {MayBecome("count\\.(first|last|over)", "30|2")}},
        {.call = "worker (MessageBoxW|malloc for a message's text) #.",
         .why = "the end is not reported",
         .changes = {Becomes("messages", "")}},
    };
}

Facts UsualEnd() {
    return Together(
        {QuietRun(),
         BatchOf(1, 1),
         ControlsAfterBatch("done"),
         {{"done.1038", "ES C"}},
         List("done", {"C:\\in\\a.pdf", "00:00:07", -1, "fit with durations"}),
         {{"starts", "visible a.pdf in ~: /C \"pdf2djvu.exe -o \"C:\\in\\a.djvu\" -v  \"C:\\in\\a.pdf\"\""},
          {"messages", "information main Conversion terminée !"},
          {"shutdowns", "open token\nlook up SeShutdownPrivilege\nenable\nrequest\ndisable"}}});
}

}  // namespace

Scenario CountdownScenario() {
    return {
        "countdown", [](Platform&) {}, &LetItEnd,
        Together({UsualEnd(),
                  {{"count.first", "30"}, {"count.last", "1"}, {"count.over", "1"}, {"count.timers", ""}}}),
        Joined({Rules(), BatchRules()})};
}

Scenario ShutDownNowScenario() {
    return {"shut_down_now", [](Platform&) {}, &ShutDownNow, Together({UsualEnd(), {{"count.first", "29"}}}),
            Joined({Rules(), BatchRules()})};
}
