#include "tests/faults/scenarios/scenarios.h"
#include "tests/faults/scenarios/usual.h"

namespace {

void Use(User& user, CallWatch& watch, Facts& /*facts*/) {
    watch.Begin();
    user.Program().Start();
    user.WaitForWindow();
}

constexpr char kMessage[] =
    "error none pdf2djvu.exe est absent !\r\n\r\n"
    "(Talvenor.exe doit se trouver dans le\r\nmême dossier que \"pdf2djvu.exe\")";

}  // namespace

Scenario MissingConverterScenario() {
    return {"missing_converter",
            [](Platform& platform) { ::DeleteFileW(platform.File(L"pdf2djvu.exe").c_str()); },
            &Use,
            Together({QuietRun(), {{"boxes", kMessage}}}),
            {}};
}
