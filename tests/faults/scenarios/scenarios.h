// The ways of using the program that the sweep goes through, by subject, with what all of them are written
// with.
#pragma once

#include "tests/faults/harness/scenario.h"
#include "tests/faults/harness/window_facts.h"
#include "tests/faults/scenarios/rules.h"
#include "tests/faults/scenarios/usual.h"

#include "res/resource.h"

#include <vector>

[[nodiscard]] std::vector<Scenario> StartScenarios();
[[nodiscard]] std::vector<Scenario> FileListScenarios();
[[nodiscard]] std::vector<Scenario> OptionScenarios();
[[nodiscard]] std::vector<Scenario> HiddenBatchScenarios();
[[nodiscard]] std::vector<Scenario> VisibleBatchScenarios();
[[nodiscard]] std::vector<Scenario> StopScenarios();
[[nodiscard]] std::vector<Scenario> DisabledKeyScenarios();
[[nodiscard]] std::vector<Scenario> ScreenReaderScenarios();
[[nodiscard]] std::vector<Scenario> OutputFolderScenarios();
[[nodiscard]] std::vector<Scenario> ShellScenarios();
[[nodiscard]] std::vector<Scenario> CountdownScenarios();
[[nodiscard]] std::vector<Scenario> AboutScenarios();
[[nodiscard]] std::vector<Scenario> QuitScenarios();

[[nodiscard]] const std::vector<Scenario>& AllScenarios();
