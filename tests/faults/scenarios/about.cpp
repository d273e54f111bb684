// The About box is opened and closed.
#include "tests/faults/scenarios/scenarios.h"

#include "tests/equipment/shipped_version.h"
#include "tests/support/utf8.h"

namespace {

void Use(User& user, CallWatch& watch, Facts& facts) {
    Open(user);
    watch.Begin();
    const HWND about = user.PressForDialog(IDC_ABOUT, IDC_VERSION);
    facts["version"] = User::TextOf(::GetDlgItem(about, IDC_VERSION));
    user.CloseDialog(about, IDOK);
    watch.End();
    AddControlFacts(user, "closed", facts);
}

}  // namespace

std::vector<Scenario> AboutScenarios() {
    return {{.name = "about",
             .use = &Use,
             .usual = Usually({Idle("closed"), {{"version", Utf8(shipped::kAboutLine)}}}),
             .rules = {
                 When("ui (DialogBoxParamW 100|SetWindowLongPtrW about DWLP_USER) #1",
                      "no About box, and nothing else", {"version: "}),
                 When("ui (GetModuleFileNameW|GetSystemDirectoryW|LoadLibraryW version.dll|"
                      "GetProcAddress \\w+|GetFileVersionInfoSizeW|GetFileVersionInfoW|VerQueryValueW|"
                      "HeapAlloc) #1",
                      "a version that cannot be read is 0", {"version: Version 0.0 (64-bit)"}),
                 When("ui (GetDlgItem about|SetWindowTextW) VERSION #1", "the text of the template stays",
                      {"version: Static"}),
             }}};
}
