// The ways of using the program that the sweep goes through, with what all of them are written with. One file
// each, named after it.
#pragma once

#include "tests/faults/harness/scenario.h"
#include "tests/faults/harness/window_facts.h"
#include "tests/faults/scenarios/rules.h"
#include "tests/faults/scenarios/usual.h"

#include "res/resource.h"

#include <vector>

[[nodiscard]] Scenario StartScenario();
[[nodiscard]] Scenario MissingConverterScenario();
[[nodiscard]] Scenario SecondCopyScenario();
[[nodiscard]] Scenario AddScenario();
[[nodiscard]] Scenario DropScenario();
[[nodiscard]] Scenario ListKeysScenario();
[[nodiscard]] Scenario OptionsScenario();
[[nodiscard]] Scenario HiddenBatchScenario();
[[nodiscard]] Scenario VisibleBatchScenario();
[[nodiscard]] Scenario StopScenario();
[[nodiscard]] Scenario StopWithoutWindowScenario();
[[nodiscard]] Scenario StopInTerminalScenario();
[[nodiscard]] Scenario DisabledKeysScenario();
[[nodiscard]] Scenario ScreenReaderScenario();
[[nodiscard]] Scenario FailingConverterScenario();
[[nodiscard]] Scenario ConverterNotStartedScenario();
[[nodiscard]] Scenario OutputFolderScenario();
[[nodiscard]] Scenario OpenFolderScenario();
[[nodiscard]] Scenario PlantedExplorerScenario();
[[nodiscard]] Scenario OpenLogScenario();
[[nodiscard]] Scenario CountdownScenario();
[[nodiscard]] Scenario ShutDownNowScenario();
[[nodiscard]] Scenario AboutScenario();
[[nodiscard]] Scenario QuitScenario();
[[nodiscard]] Scenario QuitWhileWaitingScenario();

[[nodiscard]] const std::vector<Scenario>& AllScenarios();
