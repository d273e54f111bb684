// What a stop does to the interpreter that runs, and with it to the converter.
#pragma once

#include "engine/converter_job.h"

#include <windows.h>

#include <atomic>

// Asks the console of the interpreter to close, as its close box does, and ends everything in `job` when
// there is no console that takes requests. Does not wait for what comes of it. `processId` is the
// interpreter's, as long as the worker that writes it holds the process, else 0: nothing is sent to anybody
// then.
void RequestConverterClose(const std::atomic<DWORD>& processId, const ConverterJob& job) noexcept;
