#include "tests/faults/scenarios/scenarios.h"

namespace {

void Use(User& user, CallWatch& watch, Facts& /*facts*/) {
    watch.Begin();
    user.Program().Start();
    user.WaitForWindow();
}

constexpr char kMessage[] =
    "error none pdf2djvu.exe est absent !\r\n\r\n"
    "(Talvenor.exe doit se trouver dans le\r\nmême dossier que \"pdf2djvu.exe\")";

std::vector<Rule> Rules() {
    return {
        {.call = "ui (CreateDialogParamW 102 #1|SetWindowLongPtrW main DWLP_USER #1|"
                 "GetWindowLongPtrW main DWLP_USER #2)",
         .why = "a window that cannot be made ends the program, with 0",
         .changes = {Becomes("exit", "0"), Becomes("messages", "")}},
        {.call = "ui (MessageBoxW #1|malloc for a message's text #\\d)",
         .why = "the program ends all the same",
         .changes = {Becomes("messages", "")}},
        {.call = "ui PeekMessageW #1",
         .why = "the code of a quit that cannot be looked for is 0",
         .changes = {Becomes("exit", "0")}},
        {.call = "ui LoadStringW 130 #1",
         .why = "the message box is empty",
         .changes = {Becomes("messages", "error none ")}},
    };
}

}  // namespace

Scenario MissingConverterScenario() {
    return {"missing_converter",
            [](Platform& platform) { ::DeleteFileW(platform.File(L"pdf2djvu.exe").c_str()); }, &Use,
            Together({QuietRun(), {{"messages", kMessage}}}), Rules()};
}
