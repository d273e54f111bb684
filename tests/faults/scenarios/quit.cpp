// The program is left by Esc, which passes through the message loop.
#include "tests/faults/scenarios/scenarios.h"

namespace {

void Use(User& user, CallWatch& watch, Facts& /*facts*/) {
    OpenWithFiles(user, {L"C:\\in\\a.pdf"});
    watch.Begin();
    user.PressEscape();
}

}  // namespace

Scenario QuitScenario() {
    return {"quit", [](Platform&) {}, &Use, QuietRun(), {}};
}
