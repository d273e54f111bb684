// What the test process holds of the system at this moment. GetProcessHandleCount and GetGuiResources say 0
// under Wine; there these count by hand.
#pragma once

#include "tests/faults/harness/outcome.h"

#include <cstddef>

// "handles", "gdi" objects, and "windows" of all threads, children and those that only take messages
// included.
[[nodiscard]] Counts HeldOfTheSystem();
// Memory that no other process has, in bytes.
[[nodiscard]] std::size_t PrivateBytes();

// How many graphics objects stay in the process for good each time that a thread opens the program's main
// dialog, without any of the program's code, and ends. Measured once in a process; no program may run in it
// meanwhile.
//
// Wine 10 keeps one: its edit control makes a font for the input method of its thread, and nobody deletes
// that when the thread ends. The program's windows live on one thread as long as its process, but in the
// tests a thread and a window come with each life.
[[nodiscard]] int GdiObjectsKeptByTheSystem();
