// The ways of using the program that the sweep goes through, by subject, with what all of them are written
// with. A scenario puts rules of its own before those that it shares.
#pragma once

#include "tests/faults/harness/scenario.h"
#include "tests/faults/harness/window_facts.h"
#include "tests/faults/scenarios/usual.h"

#include "res/resource.h"

#include <initializer_list>
#include <vector>

// Lists of rules, of changes or of scenarios, one behind the other.
template <class Item>
[[nodiscard]] std::vector<Item> Joined(std::initializer_list<std::vector<Item>> parts) {
    std::vector<Item> all;
    for (const std::vector<Item>& part : parts) all.insert(all.end(), part.begin(), part.end());
    return all;
}

// A batch in which no converter runs is soon over: what is looked at as its course may be its end. There the
// selection is cleared before the status line is, which writes the path alone into it.
[[nodiscard]] std::vector<Change> NothingToLookOnAt();

// A batch whose consoles may be hidden: the worker's calls, and those that its messages set off.
[[nodiscard]] std::vector<Rule> BatchRules();

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
