// What a person sees of the main window, as facts. Looking does not count among the program's calls.
#pragma once

#include "tests/faults/harness/outcome.h"
#include "tests/faults/harness/user.h"

#include <string>

// For each control its state: "E" enabled or "-" disabled, "S" shown or "h" hidden, "C" for a checked check
// box, then the text of an edit, of the status line and of button 2. As "<moment>.<name>":
// "idle.OUTPUT_FOLDER_CHECK" -> "ES C".
void AddControlFacts(const User& user, const std::string& moment, Facts& facts);

// "<moment>.rows", "<moment>.durations" and "<moment>.selected"; "<moment>.columns": "fit" or "do not
// fit" into the list, with or without "with durations".
void AddListFacts(const User& user, const std::string& moment, Facts& facts);

// Both.
void AddWindowFacts(const User& user, const std::string& moment, Facts& facts);
