#include "tests/faults/scenarios/scenarios.h"

const std::vector<Scenario>& AllScenarios() {
    static const std::vector<Scenario> kScenarios = {
        StartScenario(),        MissingConverterScenario(), SecondCopyScenario(),
        AddScenario(),          DropScenario(),             ListKeysScenario(),
        OptionsScenario(),      HiddenBatchScenario(),      VisibleBatchScenario(),
        StopScenario(),         FailingConverterScenario(), ConverterNotStartedScenario(),
        OutputFolderScenario(), OpenFolderScenario(),       OpenLogScenario(),
        CountdownScenario(),    ShutDownNowScenario(),      AboutScenario(),
        QuitScenario(),         QuitWhileWaitingScenario(),
    };
    return kScenarios;
}

const std::vector<Rule>& RulesOfAllScenarios() {
    static const std::vector<Rule> kRules = {
        {.call = ".* malloc #.*",
         .why = "a program without memory ends at once",
         .endsWithException = 0xC0000017},
    };
    return kRules;
}
