#include "tests/faults/scenarios/rules.h"

namespace {

constexpr DWORD kNoMemory = 0xC0000017;

}  // namespace

std::vector<Rule> Joined(std::initializer_list<std::vector<Rule>> parts) {
    std::vector<Rule> all;
    for (const std::vector<Rule>& part : parts) all.insert(all.end(), part.begin(), part.end());
    return all;
}

std::vector<Change> Also(std::vector<Change> changes, const std::vector<Change>& others) {
    changes.insert(changes.end(), others.begin(), others.end());
    return changes;
}

std::vector<Rule> ShellFailureRules(const std::string& description) {
    return {
        {.call = "ui (FindResourceExW 9|LoadResource|LockResource) #1",
         .why = "without its own the message has the usual prefix",
         .changes = {Reads("messages", "Err : ", "Erreur ShellExecute : ")}},
        {.call = "ui FormatMessageW #1",
         .why = "without the system's description the prefix is alone",
         .changes = {Loses("messages", description)}},
        {.call = "ui (MessageBoxW #1|malloc for a message's text #.)",
         .why = "the failure is not reported",
         .changes = {Becomes("messages", "")}},
    };
}

const std::vector<Rule>& RulesOfAllScenarios() {
    static const std::vector<Rule> kRules = {
        {.call = ".* malloc #.*",
         .why = "a program without memory ends at once",
         .endsWithException = kNoMemory},
        {.call = ".* GetWindowLongPtrW \\S+ (GWLP_USERDATA|DWLP_USER) #.*",
         .why = "the message that was on its way is lost; which one is up to the system",
         .onlyTheEndCounts = true},
        {.call = ".* SetWindowLongPtrW \\S+ (GWLP_USERDATA|GWLP_WNDPROC|DWLP_USER) #.*",
         .why = "a window that goes keeps a mark which nobody reads any more"},
        {.call = ".* CloseHandle #.*",
         .why = "what is not closed stays",
         .changes = {MayBecome("handles", "1")}},
        {.call = ".* HeapFree #.*", .why = "what is not freed stays", .changes = {Becomes("blocks", "1")}},
        {.call = ".* FreeLibrary #.*",
         .why = "the library stays, with what it holds",
         .changes = {MayBecome("handles", "[0-9]+")}},
        {.call = ".* DestroyIcon #.*",
         .why = "what is not destroyed stays",
         .changes = {MayBecome("icons", "1"), MayBecome("gdi", "[0-9]+")}},
        {.call = ".* DestroyWindow \\S+ #.*",
         .why = "the window goes with its thread",
         .changes = {MayBecome("gdi", "[0-9]+")}},
        {.call = ".* KillTimer \\S+ (\\d) #.*",
         .why = "the timer goes on",
         .changes = {MayBecome("timers", "$1|[12]"), MayBecome("count.timers", "1")}},
        {.call = ".* LoadStringW 128 #.*",
         .why = "a caption that is not there is empty",
         .changes = {Reads("messages", " caption=", "")}},
        {.call = ".* EnableWindow (\\d+) #.*",
         .why = "one control stays enabled or disabled",
         .changes = {MayDiffer("\\w+\\.$1", "enabled")}},
        {.call = ".* ShowWindow (\\d+) .*",
         .why = "one control stays shown or hidden",
         .changes = {MayDiffer("\\w+\\.$1", "shown")}},
        {.call = ".* CheckDlgButton main (\\d+) #.*",
         .why = "one check box stays as it was",
         .changes = {MayDiffer("\\w+\\.$1", "checked")}},
        {.call = ".* (?:SetWindowTextW|GetWindowTextW|GetWindowTextLengthW) (\\d+) #.*",
         .why = "one control keeps its text",
         .changes = {MayDiffer("\\w+\\.$1", "text")}},
        {.call = ".* (?:GetDlgItem main|IsDlgButtonChecked main|SetFocus|IsWindowEnabled) (\\d+) #.*",
         .why = "one control stays as it was",
         .changes = {MayDiffer("\\w+\\.$1", "enabled shown text")}},
    };
    return kRules;
}
