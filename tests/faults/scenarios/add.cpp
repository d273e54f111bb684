#include "tests/faults/scenarios/scenarios.h"

using namespace std::string_literals;

namespace {

void Use(User& user, CallWatch& watch, Facts& facts) {
    Open(user);
    watch.Begin();
    user.Press(IDC_ADD);
    watch.End();
    AddControlFacts(user, "added", facts);
    AddListFacts(user, "added", facts);
}

std::vector<Rule> Rules() {
    return {
        {.call = "ui (GetOpenFileNameW|GetSystemDirectoryW|LoadLibraryW comdlg32\\.dll|"
                 "GetProcAddress GetOpenFileNameW|HeapAlloc) #1",
         .why = "a dialog that fails is one that is cancelled",
         .changes = {Becomes("added.rows", ""), Becomes("added.durations", ""), Becomes("added.1", "-S"),
                     Becomes("beeps", "")}},
        {.call = "ui PathAppendW a.pdf #1",
         .why = "what cannot be joined is what the system leaves: nothing",
         .changes = {Becomes("added.rows", Exactly("\nC:\\in\\b.pdf\nC:\\in\\a.pdf")),
                     Becomes("added.durations", "\n\n"), Becomes("beeps", "")}},
        {.call = "ui PathAppendW b.pdf #1",
         .why = "what cannot be joined is what the system leaves: nothing",
         .changes = {Becomes("added.rows", Exactly("C:\\in\\a.pdf\n"))}},
        {.call = "ui PathAppendW a.pdf #2",
         .why = "what cannot be joined is what the system leaves: nothing",
         .changes = {Becomes("added.rows", Exactly("C:\\in\\a.pdf\nC:\\in\\b.pdf\n")),
                     Becomes("added.durations", "\n\n"), Becomes("beeps", "")}},
        {.call = "ui SendMessageW 1040 LVM_INSERTITEMW #1",
         .why = "a row that was refused is not there, so that the same path is new when it comes again",
         .changes = {Becomes("added.rows", Exactly("C:\\in\\b.pdf\nC:\\in\\a.pdf")), Becomes("beeps", "")}},
        {.call = "ui SendMessageW 1040 LVM_INSERTITEMW #2",
         .why = "a row that was refused is not there",
         .changes = {Becomes("added.rows", Exactly("C:\\in\\a.pdf")), Becomes("added.durations", "")}},
        {.call = "ui SendMessageW 1040 LVM_GETITEMCOUNT #[12]", .why = "there are no rows anyway"},
        {.call = "ui SendMessageW 1040 LVM_GETITEMCOUNT #3",
         .why = "a list that does not answer gets the row in front",
         .changes = {Becomes("added.rows", Exactly("C:\\in\\b.pdf\nC:\\in\\a.pdf"))}},
        {.call = "ui SendMessageW 1040 LVM_GETITEMCOUNT #4",
         .why = "a list that does not answer has no rows, and the button stays disabled",
         .changes = {Becomes("added.1", "-S")}},
        {.call = "ui Beep #1", .why = "a beep that fails is not heard", .changes = {Becomes("beeps", "")}},
    };
}

}  // namespace

Scenario AddScenario() {
    return {"add", [](Platform& platform) { platform.chosenFiles = L"C:\\in\0a.pdf\0b.pdf\0a.pdf"s; }, &Use,
            Together({QuietRun(),
                      IdleControls("added"),
                      List("added", {.rows = "C:\\in\\a.pdf\nC:\\in\\b.pdf", .durations = "\n"}),
                      {{"added.1", "ES"}, {"beeps", "440 100"}}}),
            Rules()};
}
