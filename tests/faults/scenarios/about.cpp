#include "tests/faults/scenarios/scenarios.h"
#include "tests/faults/scenarios/usual.h"

#include "tests/faults/harness/window_facts.h"
#include "tests/support/utf8.h"

#include "res/resource.h"

#include <array>

namespace {

void Use(User& user, CallWatch& watch, Facts& facts) {
    Open(user);
    watch.Begin();
    const HWND about = user.PressForDialog(IDC_ABOUT, IDC_VERSION);
    std::array<wchar_t, 100> text{};
    User::Send(::GetDlgItem(about, IDC_VERSION), WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
    facts["about.version"] = Utf8(text.data());
    user.CloseDialog(about, IDOK);
    watch.End();
    AddControlFacts(user, "closed", facts);
}

}  // namespace

Scenario AboutScenario() {
    return {"about",
            [](Platform&) {},
            &Use,
            Together({QuietRun(), IdleControls("closed"), {{"about.version", "Version 1.2 (64-bit)"}}}),
            {}};
}
