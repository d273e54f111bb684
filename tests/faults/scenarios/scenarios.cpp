#include "tests/faults/scenarios/scenarios.h"

const std::vector<Scenario>& AllScenarios() {
    static const std::vector<Scenario> kScenarios = {
        StartScenario(),
        MissingConverterScenario(),
        SecondCopyScenario(),
        AddScenario(),
        DropScenario(),
        ListKeysScenario(),
        OptionsScenario(),
        HiddenBatchScenario(),
        VisibleBatchScenario(),
        StopScenario(),
        StopWithoutWindowScenario(),
        StopInTerminalScenario(),
        DisabledKeysScenario(),
        ScreenReaderScenario(),
        FailingConverterScenario(),
        ConverterNotStartedScenario(),
        OutputFolderScenario(),
        OpenFolderScenario(),
        PlantedExplorerScenario(),
        OpenLogScenario(),
        CountdownScenario(),
        ShutDownNowScenario(),
        AboutScenario(),
        QuitScenario(),
        QuitWhileWaitingScenario(),
    };
    return kScenarios;
}
