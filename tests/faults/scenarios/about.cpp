// The About box is opened and closed.
#include "tests/faults/scenarios/scenarios.h"

#include "tests/equipment/shipped_version.h"
#include "tests/support/utf8.h"

namespace {

// The place for the program's icon.
std::string IconPlace(HWND about) {
    HWND label = nullptr;
    while (about && (label = ::FindWindowExW(about, label, L"Static", nullptr)) != nullptr) {
        if ((::GetWindowLongPtrW(label, GWL_STYLE) & SS_TYPEMASK) != SS_ICON) continue;
        RECT area = {};
        ::GetClientRect(label, &area);
        const bool isWhole =
            area.right >= ::GetSystemMetrics(SM_CXICON) && area.bottom >= ::GetSystemMetrics(SM_CYICON);
        return isWhole ? "whole" : "cut off";
    }
    return "none";
}

void Use(User& user, CallWatch& watch, Facts& facts) {
    Open(user);
    watch.Begin();
    const HWND about = user.PressForDialog(IDC_ABOUT, IDC_VERSION);
    facts["version"] = User::TextOf(::GetDlgItem(about, IDC_VERSION));
    facts["icon"] = IconPlace(about);
    facts["owner"] = WindowLabel(::GetWindow(about, GW_OWNER));
    user.CloseDialog(about, IDOK);
    watch.End();
    facts["window"] = ::IsWindowEnabled(user.Window()) ? "enabled" : "disabled";
    AddControlFacts(user, "closed", facts);
}

}  // namespace

std::vector<Scenario> AboutScenarios() {
    return {{.name = "about",
             .use = &Use,
             .usual = Usually({Idle("closed"),
                               {{"version", Utf8(shipped::kAboutLine)},
                                {"icon", "whole"},
                                {"owner", "main"},
                                {"window", "enabled"}}}),
             .rules = {
                 When("ui (DialogBoxParamW 100|SetWindowLongPtrW about DWLP_USER) #1",
                      "no About box, and nothing else", {"version: ", "icon: none", "owner: none"}),
                 When("ui (GetModuleFileNameW|GetSystemDirectoryW|LoadLibraryW version.dll|"
                      "GetProcAddress \\w+|GetFileVersionInfoSizeW|GetFileVersionInfoW|VerQueryValueW|"
                      "HeapAlloc) #1",
                      "a version that cannot be read is 0", {"version: Version 0.0 (64-bit)"}),
                 When("ui GetActiveWindow #1", "the box has no owner", {"owner: none"}),
                 When("ui (GetDlgItem about|SetWindowTextW) VERSION #1", "the text of the template stays",
                      {"version: Static"}),
             }}};
}
