// The ways of using the program that the sweep goes through, by subject, with what all of them are written
// with. A scenario puts rules of its own before those that it shares.
#pragma once

#include "tests/faults/harness/scenario.h"
#include "tests/faults/harness/window_facts.h"

#include "res/resource.h"

#include <initializer_list>
#include <string>
#include <vector>

// Lists of rules, of changes or of scenarios, one behind the other.
template <class Item>
[[nodiscard]] std::vector<Item> Joined(std::initializer_list<std::vector<Item>> parts) {
    std::vector<Item> all;
    for (const std::vector<Item>& part : parts) all.insert(all.end(), part.begin(), part.end());
    return all;
}

inline constexpr char kTwoFiles[] = "C:\\in\\a.pdf\nC:\\in\\b.pdf";
inline constexpr char kTwoRows[] = "rows: C:\\in\\a.pdf\nC:\\in\\b.pdf";  // see Idle
inline constexpr char kFinished[] = "information main Conversion terminée !";
inline constexpr char kQuestion[] =
    "question main Un traitement est en cours.\r\nÊtes-vous sûr de vouloir l'interrompre ?";

// Prepares a log that an earlier batch has left: "earlier".
void LeaveEarlierLog(Platform& platform);
// Prepares a first converter that runs until it is ended, with this console, and others that end at once.
template <const wchar_t* console = kConsoleClass>
void HoldFirst(Platform& platform) {
    platform.conversions = {{.held = true, .console = console}, {}};
}

// The window open and idle, nothing counted yet.
void Open(User& user);
// The same with these files in the list and "Convertir" enabled.
void OpenWithFiles(User& user, const std::vector<std::wstring>& paths);
// The batch comes to its end, with which the counting ends. Adds what is then seen as "done".
void WaitForEndOfBatch(User& user, CallWatch& watch, Facts& facts);

// All facts of the window at a moment: idle as after its start, in a batch whose first file is C:\in\a.pdf,
// idle again after one. Each but for those that are given, as "name: value"; with "rows: ..." among these
// also of the list.
[[nodiscard]] Facts Idle(const std::string& moment, const std::vector<std::string>& differences = {});
[[nodiscard]] Facts Running(const std::string& moment, const std::vector<std::string>& differences);
[[nodiscard]] Facts AfterBatch(const std::string& moment, const std::vector<std::string>& differences);

// These facts of a moment.
[[nodiscard]] Facts At(const std::string& moment, const std::vector<std::string>& facts);

// What a batch asks of the power management and of the taskbar, in which `done` of the `rows` were converted.
[[nodiscard]] Facts BatchOf(int rows, int done);

// A run in which nothing is asked of the user or of the system and nothing is left behind, but for these
// facts, of which later ones win.
[[nodiscard]] Facts Usually(std::initializer_list<Facts> differences);

// The converter's start for C:\in\a.pdf with its console shown, as a line of "starts".
[[nodiscard]] std::string ShownStart(const std::string& djvu = "C:\\in\\a.djvu");

// What this system says about an error, with its line break.
[[nodiscard]] std::string SystemText(DWORD error);

// A batch whose consoles may be hidden: the worker's calls, and those that its messages set off.
[[nodiscard]] std::vector<Rule> BatchRules();

[[nodiscard]] std::vector<Scenario> StartScenarios();
[[nodiscard]] std::vector<Scenario> FileListScenarios();
[[nodiscard]] std::vector<Scenario> OptionScenarios();
[[nodiscard]] std::vector<Scenario> HiddenBatchScenarios();
[[nodiscard]] std::vector<Scenario> StopScenarios();
[[nodiscard]] std::vector<Scenario> DisabledKeyScenarios();
[[nodiscard]] std::vector<Scenario> ScreenReaderScenarios();
[[nodiscard]] std::vector<Scenario> OutputFolderScenarios();
[[nodiscard]] std::vector<Scenario> ShellScenarios();
[[nodiscard]] std::vector<Scenario> CountdownScenarios();
[[nodiscard]] std::vector<Scenario> AboutScenarios();
[[nodiscard]] std::vector<Scenario> QuitScenarios();

[[nodiscard]] const std::vector<Scenario>& AllScenarios();
