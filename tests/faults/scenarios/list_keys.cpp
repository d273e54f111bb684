// What is done to rows: the command line of one is looked at, one is deleted, the list is cleared.
#include "tests/faults/scenarios/scenarios.h"

namespace {

void Use(User& user, CallWatch& watch, Facts& facts) {
    OpenWithFiles(user, {L"C:\\in\\a.pdf", L"C:\\in\\b.pdf"});
    watch.Begin();
    user.SelectRow(1);
    AddListFacts(user, "selected", facts);
    AddControlFacts(user, "selected", facts);
    user.PressListKey(VK_F7);
    user.PressListKey(VK_DELETE);
    AddListFacts(user, "deleted", facts);
    AddControlFacts(user, "deleted", facts);
    user.Press(IDC_CLEAR);
    AddListFacts(user, "cleared", facts);
    AddControlFacts(user, "cleared", facts);
    watch.End();
}

constexpr char kMessage[] = "information main pdf2djvu.exe -o \"C:\\in\\b.djvu\" -v  \"C:\\in\\b.pdf\"";

std::vector<Rule> Rules() {
    return {
        {.call = "ui SendMessageW 1040 LVM_GETITEMTEXTW #1",
         .why = "the status line has no path to show",
         .changes = {Becomes("selected.1004", "ES")}},
        {.call = "ui SendMessageW 1040 LVM_GETITEMTEXTW #2",
         .why = "the command line of a path that cannot be read",
         .changes = {Becomes("messages", Exactly("information main pdf2djvu.exe -o \".djvu\" -v  \"\""))}},
        {.call = "ui SendMessageW 1040 LVM_GETNEXTITEM #[12]",
         .why = "without a selected row there is nothing to show",
         .changes = {Becomes("messages", "")}},
        {.call = "ui (SendMessageW 1040 LVM_GETNEXTITEM #3|SendMessageW 1040 LVM_DELETEITEM #1)",
         .why = "without a selected row there is nothing to delete; a row that stays is selected",
         .changes = {Becomes("deleted.rows", Exactly("C:\\in\\a.pdf\nC:\\in\\b.pdf")),
                     Becomes("deleted.durations", "\n"), Becomes("deleted.selected", "1"),
                     Becomes("deleted.1004", Exactly("ES C:\\in\\b.pdf"))}},
        {.call = "ui SendMessageW 1040 LVM_GETNEXTITEM #4", .why = "no row is selected anyway"},
        {.call = "ui SendMessageW 1040 LVM_SETITEMSTATE #.*",
         .why = "the row is selected all the same, by the list itself"},
        {.call = "ui PathRenameExtensionW #1",
         .why = "a path that the system refuses stays as it is",
         .changes = {Reads("messages", "b.pdf\" -v", "b.djvu\" -v")}},
        {.call = "ui (MessageBoxW #1|malloc for a message's text #\\d)",
         .why = "no message box, and nothing else",
         .changes = {Becomes("messages", "")}},
        {.call = "ui SendMessageW 1040 LVM_DELETEALLITEMS #1",
         .why = "the rows stay",
         .changes = {Becomes("cleared.rows", Exactly("C:\\in\\a.pdf"))}},
        {.call = "ui GetClientRect 1040 #1",
         .why = "the columns do not get their widths",
         .changes = {Becomes("cleared.columns", "do not fit")}},
        {.call = "ui SendMessageW 1040 LVM_SETCOLUMNWIDTH #.",
         .why = "the columns have their widths already"},
    };
}

}  // namespace

Scenario ListKeysScenario() {
    return {"list_keys", [](Platform&) {}, &Use,
            Together(
                {QuietRun(),
                 List("selected", {.rows = "C:\\in\\a.pdf\nC:\\in\\b.pdf", .durations = "\n", .selected = 1}),
                 IdleControls("selected"),
                 {{"selected.1", "ES"}, {"selected.1004", "ES C:\\in\\b.pdf"}, {"selected.1022", "ES"}},
                 List("deleted", {.rows = "C:\\in\\a.pdf"}),
                 IdleControls("deleted"),
                 {{"deleted.1", "ES"}, {"deleted.1022", "ES"}},
                 List("cleared", {}),
                 IdleControls("cleared"),
                 {{"cleared.1022", "ES"}, {"messages", kMessage}}}),
            Rules()};
}
