#include "tests/faults/scenarios/scenarios.h"

#include "tests/equipment/shipped_version.h"
#include "tests/support/utf8.h"

#include <array>

namespace {

void Use(User& user, CallWatch& watch, Facts& facts) {
    Open(user);
    watch.Begin();
    const HWND about = user.PressForDialog(IDC_ABOUT, IDC_VERSION);
    std::array<wchar_t, 100> text{};
    User::Send(::GetDlgItem(about, IDC_VERSION), WM_GETTEXT, text.size(),
               reinterpret_cast<LPARAM>(text.data()));
    facts["about.version"] = Utf8(text.data());
    user.CloseDialog(about, IDOK);
    watch.End();
    AddControlFacts(user, "closed", facts);
}

std::vector<Rule> Rules() {
    return {
        {.call = "ui (DialogBoxParamW 100 #1|SetWindowLongPtrW about DWLP_USER #1)",
         .why = "no About box, and nothing else",
         .changes = {Becomes("about.version", "")}},
        {.call = "ui (GetModuleFileNameW|GetSystemDirectoryW|LoadLibraryW version.dll|GetProcAddress \\w+|"
                 "GetFileVersionInfoSizeW|GetFileVersionInfoW|VerQueryValueW|HeapAlloc) #1",
         .why = "a version that cannot be read is 0",
         .changes = {Becomes("about.version", Exactly("Version 0.0 (64-bit)"))}},
        {.call = "ui (GetDlgItem about 1021|SetWindowTextW 1021) #1",
         .why = "the text of the template stays",
         .changes = {Becomes("about.version", "Static")}},
    };
}

}  // namespace

Scenario AboutScenario() {
    return {"about", [](Platform&) {}, &Use,
            Together({QuietRun(), IdleControls("closed"), {{"about.version", Utf8(shipped::kAboutLine)}}}),
            Rules()};
}
