// Looks at processes of the session, and, under Wine, of the system that Wine runs on.
#pragma once
#include <windows.h>

#include <string>

#include "tests/equipment/handle.h"

// The process that owns the top-level window of this class, for waiting and for its exit code. Throws
// driver::Failure when there is none.
driver::UniqueHandle OwnerOfWindow(const wchar_t* className);

// Under Wine: whether the converter of the system below runs and has `text` in its command line.
bool NativeConverterRuns(const std::string& text);
