// The life of the user-interface thread.
#pragma once

#include <windows.h>

// Creates the main dialog, shows it with `showCommand` and runs its message loop. Gives the quit message's
// code, or 0 when the dialog could not be created. The command line has no options.
int RunMainDialog(const wchar_t* commandLine, int showCommand);
