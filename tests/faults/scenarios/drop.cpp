#include "tests/faults/scenarios/scenarios.h"

#include <algorithm>

namespace {

void Use(User& user, CallWatch& watch, Facts& facts) {
    Open(user);
    user.Drop({L"C:\\in\\first.pdf"});
    watch.Begin();
    user.Drop({L"C:\\in\\a.pdf", L"C:\\in\\B.PDF", L"C:\\in\\c.txt", L"C:\\in\\first.pdf"});
    watch.End();
    AddControlFacts(user, "dropped", facts);
    AddListFacts(user, "dropped", facts);
}

// What is left of the drop when it ends early, or a row is not known, refused or put elsewhere.
Rule Leaves(const std::string& call, const std::string& why, const std::string& rows, bool beeps) {
    const auto lines = static_cast<std::size_t>(std::count(rows.begin(), rows.end(), '\n'));
    std::vector<Change> changes = {Becomes("dropped.rows", Exactly(rows)),
                                   Becomes("dropped.durations", std::string(lines, '\n'))};
    if (!beeps) changes.push_back(Becomes("beeps", ""));
    return {.call = call, .why = why, .changes = std::move(changes)};
}

std::vector<Rule> Rules() {
    const std::string first = "C:\\in\\first.pdf";
    const std::string a = "C:\\in\\a.pdf";
    const std::string b = "C:\\in\\B.PDF";
    const std::string endOfDrop = "no name is the end of the drop";
    const std::string noCount = "a list that does not answer gets the row in front";
    const std::string notKnown = "a row that cannot be read is not known";
    const std::string refused = "a row that was refused is not there";
    return {
        Leaves("ui DragQueryFileW #1", endOfDrop, first, false),
        Leaves("ui DragQueryFileW #2", endOfDrop, first + '\n' + a, false),
        Leaves("ui DragQueryFileW #[34]", endOfDrop, first + '\n' + a + '\n' + b, false),
        Leaves("ui SendMessageW 1040 (LVM_GETITEMCOUNT|LVM_GETITEMTEXTW) #1", notKnown,
               first + '\n' + a + '\n' + b + '\n' + first, false),
        Leaves("ui SendMessageW 1040 LVM_GETITEMCOUNT #3", noCount, a + '\n' + first + '\n' + b, true),
        Leaves("ui SendMessageW 1040 LVM_GETITEMCOUNT #4", noCount, b + '\n' + first + '\n' + a, true),
        Leaves("ui SendMessageW 1040 LVM_INSERTITEMW #1", refused, first + '\n' + b, true),
        Leaves("ui SendMessageW 1040 LVM_INSERTITEMW #2", refused, first + '\n' + a, true),
        {.call = "ui Beep #1", .why = "a beep that fails is not heard", .changes = {Becomes("beeps", "")}},
    };
}

}  // namespace

Scenario DropScenario() {
    return {"drop", [](Platform&) {}, &Use,
            Together({QuietRun(),
                      IdleControls("dropped"),
                      List("dropped",
                           {.rows = "C:\\in\\first.pdf\nC:\\in\\a.pdf\nC:\\in\\B.PDF", .durations = "\n\n"}),
                      {{"beeps", "440 100"}}}),
            Rules()};
}
