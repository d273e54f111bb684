// What the system itself keeps of a window such as the program's.
#pragma once

// How many graphics objects stay in the process for good each time that a thread opens the program's main
// dialog, without any of the program's code, and ends. Measured once in a process; no program may run in it
// meanwhile.
//
// Wine 10 keeps one: its edit control makes a font for the input method of its thread, and nobody deletes
// that when the thread ends. The program's windows live on one thread as long as its process, but in the
// tests a thread and a window come with each life.
[[nodiscard]] int GdiObjectsKeptByTheSystem();
