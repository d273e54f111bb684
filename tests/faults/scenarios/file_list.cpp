// Files are added by the open dialog and dropped; then what is done to rows: the command line of one is
// looked at, one is deleted, the list is cleared.
#include "tests/faults/scenarios/scenarios.h"

#include <algorithm>

using namespace std::string_literals;

namespace {

void Add(User& user, CallWatch& watch, Facts& facts) {
    Open(user);
    watch.Begin();
    user.Press(IDC_ADD);
    watch.End();
    AddWindowFacts(user, "added", facts);
}

void Drop(User& user, CallWatch& watch, Facts& facts) {
    Open(user);
    user.Drop({L"C:\\in\\first.pdf"});
    watch.Begin();
    user.Drop({L"C:\\in\\a.pdf", L"C:\\in\\B.PDF", L"C:\\in\\c.txt", L"C:\\in\\first.pdf"});
    watch.End();
    AddWindowFacts(user, "added", facts);
}

void PressKeys(User& user, CallWatch& watch, Facts& facts) {
    OpenWithFiles(user, {L"C:\\in\\a.pdf", L"C:\\in\\b.pdf"});
    watch.Begin();
    user.SelectRow(1);
    AddWindowFacts(user, "selected", facts);
    user.PressListKey(VK_F7);
    user.PressListKey(VK_DELETE);
    AddWindowFacts(user, "deleted", facts);
    user.Press(IDC_CLEAR);
    AddWindowFacts(user, "cleared", facts);
    watch.End();
}

// A list of other rows than usual, with a beep for a file that is already there or without.
Rule Leaves(const std::string& rows, bool beeps, const std::string& call, const std::string& why) {
    const auto lines = static_cast<std::size_t>(std::count(rows.begin(), rows.end(), '\n'));
    std::vector<Change> changes = {Becomes("added.rows", rows),
                                   Becomes("added.durations", std::string(lines, '\n'))};
    if (!beeps) changes.push_back("beeps: ");
    return When(call, why, std::move(changes));
}

constexpr char kNotJoined[] = "what cannot be joined is what the system leaves: nothing";
constexpr char kNoCount[] = "a list that does not answer gets the row in front";
constexpr char kRefused[] = "a row that was refused is not there";

std::vector<Rule> AddRules() {
    const std::string a = "C:\\in\\a.pdf";
    const std::string b = "C:\\in\\b.pdf";
    return {
        When("ui (GetOpenFileNameW|GetSystemDirectoryW|LoadLibraryW comdlg32\\.dll|"
             "GetProcAddress GetOpenFileNameW|HeapAlloc) #1",
             "a dialog that fails is one that is cancelled",
             {"added.rows: ", "added.durations: ", "added.OK: -S", "beeps: "}),
        Leaves('\n' + b + '\n' + a, false, "ui PathAppendW a.pdf #1", kNotJoined),
        Leaves(a + '\n', true, "ui PathAppendW b.pdf #1", kNotJoined),
        Leaves(a + '\n' + b + '\n', false, "ui PathAppendW a.pdf #2", kNotJoined),
        // The same path is new when it comes again.
        Leaves(b + '\n' + a, false, "ui SendMessageW FILE_LIST LVM_INSERTITEMW #1", kRefused),
        Leaves(a, true, "ui SendMessageW FILE_LIST LVM_INSERTITEMW #2", kRefused),
        Leaves(b + '\n' + a, true, "ui SendMessageW FILE_LIST LVM_GETITEMCOUNT #3", kNoCount),
        When("ui SendMessageW FILE_LIST LVM_GETITEMCOUNT #4",
             "a list that does not answer has no rows, and the button stays disabled", {"added.OK: -S"}),
    };
}

std::vector<Rule> DropRules() {
    const std::string first = "C:\\in\\first.pdf";
    const std::string a = "C:\\in\\a.pdf";
    const std::string b = "C:\\in\\B.PDF";
    const std::string endOfDrop = "no name is the end of the drop";
    return {
        Leaves(first, false, "ui DragQueryFileW #1", endOfDrop),
        Leaves(first + '\n' + a, false, "ui DragQueryFileW #2", endOfDrop),
        Leaves(first + '\n' + a + '\n' + b, false, "ui DragQueryFileW #[34]", endOfDrop),
        Leaves(first + '\n' + a + '\n' + b + '\n' + first, false,
               "ui SendMessageW FILE_LIST (LVM_GETITEMCOUNT|LVM_GETITEMTEXTW) #1",
               "a row that cannot be read is not known"),
        Leaves(a + '\n' + first + '\n' + b, true, "ui SendMessageW FILE_LIST LVM_GETITEMCOUNT #3", kNoCount),
        Leaves(b + '\n' + first + '\n' + a, true, "ui SendMessageW FILE_LIST LVM_GETITEMCOUNT #4", kNoCount),
        Leaves(first + '\n' + b, true, "ui SendMessageW FILE_LIST LVM_INSERTITEMW #1", kRefused),
        Leaves(first + '\n' + a, true, "ui SendMessageW FILE_LIST LVM_INSERTITEMW #2", kRefused),
    };
}

std::vector<Rule> KeyRules() {
    return {
        When("ui SendMessageW FILE_LIST LVM_GETITEMTEXTW #1", "the status line has no path to show",
             {"selected.STATUS: ES"}),
        When("ui SendMessageW FILE_LIST LVM_GETITEMTEXTW #2",
             "the command line of a path that cannot be read",
             {"messages: information main pdf2djvu.exe -o \".djvu\" -v  \"\""}),
        When("ui SendMessageW FILE_LIST LVM_GETNEXTITEM #[12]",
             "without a selected row there is nothing to show", {"messages: "}),
        When("ui SendMessageW FILE_LIST (LVM_GETNEXTITEM #3|LVM_DELETEITEM #1)",
             "without a selected row there is nothing to delete; a row that stays is selected",
             {Becomes("deleted.rows", kTwoFiles), "deleted.durations: \n", "deleted.selected: 1",
              "deleted.STATUS: ES C:\\in\\b.pdf"}),
        When("ui PathRenameExtensionW #1", "a path that the system refuses stays as it is",
             {Reads("messages", "b.pdf\" -v", "b.djvu\" -v")}),
        When("ui SendMessageW FILE_LIST LVM_DELETEALLITEMS #1", "the rows stay",
             {"cleared.rows: C:\\in\\a.pdf"}),
        When("ui GetClientRect FILE_LIST #1", "the columns do not get their widths",
             {"cleared.columns: do not fit"}),
    };
}

}  // namespace

std::vector<Scenario> FileListScenarios() {
    return {
        {.name = "add",
         .prepare = [](Platform& platform) { platform.chosenFiles = L"C:\\in\0a.pdf\0b.pdf\0a.pdf"s; },
         .use = &Add,
         .usual = Usually({Idle("added", {"OK: ES", kTwoRows, "durations: \n"}), {{"beeps", "440 100"}}}),
         .rules = AddRules()},
        {.name = "drop",
         .use = &Drop,
         .usual = Usually(
             {Idle("added", {"rows: C:\\in\\first.pdf\nC:\\in\\a.pdf\nC:\\in\\B.PDF", "durations: \n\n"}),
              {{"beeps", "440 100"}}}),
         .rules = DropRules()},
        {.name = "list_keys",
         .use = &PressKeys,
         .usual = Usually(
             {Idle("selected", {"OK: ES", "STATUS: ES C:\\in\\b.pdf", "OPEN_DESTINATION: ES", kTwoRows,
                                "durations: \n", "selected: 1"}),
              Idle("deleted", {"OK: ES", "OPEN_DESTINATION: ES", "rows: C:\\in\\a.pdf"}),
              Idle("cleared", {"OPEN_DESTINATION: ES", "rows: "}),
              {{"messages", "information main pdf2djvu.exe -o \"C:\\in\\b.djvu\" -v  \"C:\\in\\b.pdf\""}}}),
         .rules = KeyRules()},
    };
}
