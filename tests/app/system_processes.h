// Looks at the processes of the session: those that the program started, and, under Wine, those of the system
// that Wine runs on.
#pragma once
#include <windows.h>

#include <string>
#include <vector>

#include "tests/equipment/handle.h"

// Where the programs of this file name lie that `parent` has started and that still run.
std::vector<std::wstring> ChildrenOf(DWORD parent, const std::wstring& fileName);

// The process that owns the top-level window of this class, for waiting and for its exit code. Throws
// driver::Failure when there is none.
driver::UniqueHandle OwnerOfWindow(const wchar_t* className);

// Under Wine: whether the converter of the system below runs and has `text` in its command line.
bool NativeConverterRuns(const std::string& text);
