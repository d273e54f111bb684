// Writes down what the workers of a batch do to windows. While one lives, these calls of a worker are
// recorded and, unless it says otherwise, go on to the system:
//
//   IsDlgButtonChecked 1019                 EnableWindow 1024 0          ShowWindow 1024 0
//   SetWindowTextW 1004 "..."               UpdateWindow 1040            LVM_GETITEMCOUNT
//   LVM_GETITEMTEXTW 0,0                    LVM_SETITEMSTATE 0 state=3 mask=3
//   LVM_SETSELECTIONMARK 0                  LVM_ENSUREVISIBLE 0 partial=0
//   LVM_GETNEXTITEM -1 flags=2              LVM_SETITEMW 0,1 mask=1 "00:00:01"
//   LVM_SETCOLUMNWIDTH 1 -2
//   SetTimer main 2 1000, KillTimer main 2  (no timer is set, unless `realTimers`)
//   LoadCursorW 32650, SetCursor busy       (no cursor is set)
//   SetThreadExecutionState 0x80000001      (nothing is requested)
//   GetActiveWindow                         (gives `activeWindow`)
//   DialogBoxParamW 101 owner=none          (gives 2, the answer of "Annuler", unless `realDialogs`)
#pragma once

#include "tests/support/replaced_imports.h"
#include "tests/window/worker_calls.h"

#include <windows.h>

#include <atomic>

class WorkerWindowCalls {
public:
    explicit WorkerWindowCalls(WorkerCalls& calls) : m_calls(calls) { s_current = this; }
    WorkerWindowCalls(const WorkerWindowCalls&) = delete;
    WorkerWindowCalls& operator=(const WorkerWindowCalls&) = delete;

    std::atomic<bool> realTimers{false};
    std::atomic<bool> realDialogs{false};
    std::atomic<HWND> activeWindow{nullptr};
    // What the system answers to a request to stay awake; 0 refuses it.
    std::atomic<EXECUTION_STATE> executionState{ES_CONTINUOUS};

private:
    static UINT WINAPI IsChecked(HWND dialog, int id);
    static BOOL WINAPI Enable(HWND window, BOOL enabled);
    static BOOL WINAPI Show(HWND window, int command);
    static BOOL WINAPI SetText(HWND window, LPCWSTR text);
    static BOOL WINAPI Update(HWND window);
    static LRESULT WINAPI Send(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    static UINT_PTR WINAPI StartTimer(HWND window, UINT_PTR id, UINT periodMs, TIMERPROC callback);
    static BOOL WINAPI StopTimer(HWND window, UINT_PTR id);
    static HCURSOR WINAPI LoadCursorByName(HINSTANCE module, LPCWSTR name);
    static HCURSOR WINAPI ChangeCursor(HCURSOR cursor);
    static EXECUTION_STATE WINAPI KeepAwake(EXECUTION_STATE state);
    static HWND WINAPI ActiveWindow();
    static INT_PTR WINAPI RunDialog(HINSTANCE module, LPCWSTR name, HWND owner, DLGPROC procedure,
                                    LPARAM parameter);

    static inline WorkerWindowCalls* s_current = nullptr;

    WorkerCalls& m_calls;
    ReplacedImport m_isChecked{"IsDlgButtonChecked", &IsChecked};
    ReplacedImport m_enable{"EnableWindow", &Enable};
    ReplacedImport m_show{"ShowWindow", &Show};
    ReplacedImport m_setText{"SetWindowTextW", &SetText};
    ReplacedImport m_update{"UpdateWindow", &Update};
    ReplacedImport m_send{"SendMessageW", &Send};
    ReplacedImport m_startTimer{"SetTimer", &StartTimer};
    ReplacedImport m_stopTimer{"KillTimer", &StopTimer};
    ReplacedImport m_loadCursor{"LoadCursorW", &LoadCursorByName};
    ReplacedImport m_changeCursor{"SetCursor", &ChangeCursor};
    ReplacedImport m_keepAwake{"SetThreadExecutionState", &KeepAwake};
    ReplacedImport m_activeWindow{"GetActiveWindow", &ActiveWindow};
    ReplacedImport m_runDialog{"DialogBoxParamW", &RunDialog};
};
