#include "tests/faults/scenarios/scenarios.h"

const std::vector<Scenario>& AllScenarios() {
    static const std::vector<Scenario> kScenarios = Joined(
        {StartScenarios(), FileListScenarios(), OptionScenarios(), HiddenBatchScenarios(),
         VisibleBatchScenarios(), StopScenarios(), DisabledKeyScenarios(), ScreenReaderScenarios(),
         OutputFolderScenarios(), ShellScenarios(), CountdownScenarios(), AboutScenarios(), QuitScenarios()});
    return kScenarios;
}
