// What scenarios have in common when nothing fails.
#pragma once

#include "tests/faults/harness/outcome.h"
#include "tests/faults/harness/user.h"

#include <initializer_list>
#include <string>
#include <utility>

// Prepares a log that an earlier batch has left: "earlier".
void LeaveEarlierLog(Platform& platform);

// The window open and idle, nothing counted yet.
void Open(User& user);
// The same with these files in the list and "Convertir" enabled.
void OpenWithFiles(User& user, const std::vector<std::wstring>& paths);
// The same with C:\in\a.pdf and b.pdf, consoles hidden and the first converter running.
void BeginHiddenBatchOfTwo(User& user);

// The controls of an idle window as it is after its start, and as it is while a batch runs whose first file
// is C:\in\a.pdf.
[[nodiscard]] Facts IdleControls(const std::string& moment);
[[nodiscard]] Facts RunningControls(const std::string& moment);
// An idle window after a batch: 1027 and 1028 are enabled, and so is the destination's button.
[[nodiscard]] Facts ControlsAfterBatch(const std::string& moment);

struct ListContents {
    std::string rows = {};
    std::string durations = {};
    int selected = -1;
    std::string columns = "fit";
};
[[nodiscard]] Facts List(const std::string& moment, const ListContents& contents);

// What a batch asks of the power management and of the taskbar, in which `done` of the `rows` were converted.
[[nodiscard]] Facts BatchOf(int rows, int done);

// A run in which nothing is asked of the user or of the system, and nothing is left behind.
[[nodiscard]] Facts QuietRun();

// The same of a run that ends its process, after which nothing can be counted.
[[nodiscard]] Facts QuietRunToTheEndOfTheProcess();

// Later ones win.
[[nodiscard]] Facts Together(std::initializer_list<Facts> parts);

// The record that the log gets for a file that took `duration`, with a rule of `rule` asterisks.
[[nodiscard]] std::string LogRecord(const std::string& duration, std::size_t rule);

// What this system says about an error, with its line break.
[[nodiscard]] std::string SystemText(DWORD error);
