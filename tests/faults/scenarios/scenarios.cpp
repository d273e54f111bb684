#include "tests/faults/scenarios/scenarios.h"

namespace {

// What the failure of a call comes to, wherever it is made, unless a scenario says otherwise.
std::vector<Rule> RulesOfAllScenarios() {
    constexpr DWORD kNoMemory = 0xC0000017;
    return {
        {.call = ".* malloc #.*",
         .why = "a program without memory ends at once",
         .endsWithException = kNoMemory},
        OnlyTheEndCounts(".* GetWindowLongPtrW \\S+ (GWLP_USERDATA|DWLP_USER) #.*",
                         "the message that was on its way is lost; which one is up to the system"),
        When(".* SetWindowLongPtrW \\S+ (GWLP_USERDATA|GWLP_WNDPROC|DWLP_USER) #.*",
             "a destroyed window keeps a mark that nobody reads any more"),
        When(".* CloseHandle #.*", "what is not closed stays", {May("handles: 1")}),
        When(".* HeapFree #.*", "what is not freed stays", {"blocks: 1"}),
        When(".* FreeLibrary #.*", "the library stays, with what it holds",
             {May(BecomesLike("handles", "[0-9]+"))}),
        When(".* DestroyIcon #.*", "what is not destroyed stays",
             {May("icons: 1"), May(BecomesLike("gdi", "[0-9]+"))}),
        When(".* DestroyWindow \\S+ #.*", "the window goes with its thread",
             {May(BecomesLike("gdi", "[0-9]+"))}),
        When(".* KillTimer \\S+ \\d #.*", "the timer goes on",
             {May(BecomesLike("timers", "[12]")), May("count.timers: 1")}),
        When(".* Beep #.*", "a beep that fails is not heard", {"beeps: "}),
        When(".* (MessageBoxW|malloc for a message's text) #.*",
             "a message box that cannot be shown is not, and nothing else", {"messages: "}),
        When(".* LoadStringW 128 #.*", "a caption that is not there is empty",
             {Reads("messages", " caption=", "")}),
        When(".* EnableWindow ([A-Z_]+) #.*", "one control stays enabled or disabled",
             {MayDiffer("\\w+.$1", "enabled")}),
        When(".* ShowWindow ([A-Z_]+) .*", "one control stays shown or hidden",
             {MayDiffer("\\w+.$1", "shown")}),
        When(".* CheckDlgButton main ([A-Z_]+) #.*", "one check box stays as it was",
             {MayDiffer("\\w+.$1", "checked")}),
        When(".* (?:SetWindowTextW|GetWindowTextW|GetWindowTextLengthW) ([A-Z_]+) #.*",
             "one control keeps its text", {MayDiffer("\\w+.$1", "text")}),
        When(".* (?:GetDlgItem main|IsDlgButtonChecked main|SetFocus|IsWindowEnabled) ([A-Z_]+) #.*",
             "one control stays as it was", {MayDiffer("\\w+.$1", "enabled shown text")}),
    };
}

}  // namespace

const std::vector<Scenario>& AllScenarios() {
    static const std::vector<Scenario> kScenarios = [] {
        std::vector<Scenario> all =
            Joined({StartScenarios(), FileListScenarios(), OptionScenarios(), HiddenBatchScenarios(),
                    VisibleBatchScenarios(), StopScenarios(), DisabledKeyScenarios(), ScreenReaderScenarios(),
                    OutputFolderScenarios(), ShellScenarios(), CountdownScenarios(), AboutScenarios(),
                    QuitScenarios()});
        for (Scenario& scenario : all) scenario.rules = Joined({scenario.rules, RulesOfAllScenarios()});
        return all;
    }();
    return kScenarios;
}
