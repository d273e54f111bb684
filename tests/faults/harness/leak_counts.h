// What the test process holds of the system at this moment. GetProcessHandleCount and GetGuiResources say 0
// under Wine; there these count by hand.
#pragma once

#include "tests/faults/harness/outcome.h"

#include <cstddef>

// "handles", "gdi" objects, and "windows" of all threads, children and those that only take messages
// included. Under Wine without drawing contexts, regions and fonts: the program makes none, Wine keeps a
// store of contexts that grows when many windows draw at once, and Wine 10 a font that its edit control makes
// for the input method of each thread with one.
[[nodiscard]] Counts HeldOfTheSystem();
// Memory that no other process has, in bytes.
[[nodiscard]] std::size_t PrivateBytes();
