// The system's own file explorer.
#pragma once

#include <string>

// "explorer.exe", by which the shell finds it, where that name leads to the system's own. The full path of
// that one where another file of the name is in the program's folder, in the current directory, which the
// open dialog moves to the folder of the PDFs, or on the search path before it.
[[nodiscard]] std::wstring SystemExplorer();
