// Asking the console of a conversion to close.
#pragma once

#include <windows.h>

// Whether the request has reached a window that will see to it.
enum class ConsoleAnswer {
    Asked,    // an ordinary window, which ends the conversion or has a reason not to
    NoWindow  // there is none, or one that takes no requests
};

// Sends the first top-level window of the process `processId`, shown or hidden, the command of its close box,
// and does not wait for what comes of it.
ConsoleAnswer AskConsoleToClose(DWORD processId) noexcept;
