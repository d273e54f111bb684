// Writes down what the workers of a batch do to windows. While one lives, these calls of a worker are
// recorded and, unless it says otherwise, go on to the system:
//
//   IsDlgButtonChecked 1019, EnableWindow 1024 0, ShowWindow 1024 0, SetWindowTextW 1004 "...",
//   UpdateWindow 1040, and messages to the list as a ControlMessage
//   SetTimer main 2 1000, KillTimer main 2  (no timer is set, unless `realTimers`)
//   LoadCursorW 32650, SetCursor busy       (no cursor is set)
//   SetThreadExecutionState 0x80000001      (nothing is requested)
//   GetActiveWindow                         (returns `activeWindow`)
//   DialogBoxParamW 101 owner=none          (returns 2, the answer of "Annuler", unless `realDialogs`)
#pragma once

#include "tests/support/replaced_imports.h"
#include "tests/equipment/worker_calls.h"

#include <windows.h>

#include <atomic>
#include <vector>

class WorkerWindowCalls {
public:
    explicit WorkerWindowCalls(WorkerCalls& calls);
    WorkerWindowCalls(const WorkerWindowCalls&) = delete;
    WorkerWindowCalls& operator=(const WorkerWindowCalls&) = delete;

    std::atomic<bool> realTimers{false};
    std::atomic<bool> realDialogs{false};
    std::atomic<HWND> activeWindow{nullptr};
    // What the system answers to a request to stay awake; 0 refuses it.
    std::atomic<EXECUTION_STATE> executionState{ES_CONTINUOUS};

private:
    std::vector<Replaced> m_replaced;
};
