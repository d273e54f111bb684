#include "tests/window/worker_window_calls.h"

#include "framework/invoker.h"
#include "tests/window/noted_calls.h"

#include <commctrl.h>

#include <string>

namespace {

const auto kBusyCursor = reinterpret_cast<HCURSOR>(0x1001);
const auto kPreviousCursor = reinterpret_cast<HCURSOR>(0x1002);

// A message to the file list as the record has it; empty for one that is not written down.
std::string ListMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    const std::string row = std::to_string(static_cast<int>(wParam));
    const auto field = [](const char* name, auto value) { return name + std::to_string(value); };
    const auto* const item = reinterpret_cast<const LVITEMW*>(lParam);  // of some messages
    switch (message) {
    case LVM_GETITEMCOUNT: return "LVM_GETITEMCOUNT";
    case LVM_GETITEMTEXTW: return CallText("LVM_GETITEMTEXTW", row + field(",", item->iSubItem));
    case LVM_SETITEMSTATE:
        return CallText("LVM_SETITEMSTATE", row, field("state=", item->state),
                        field("mask=", item->stateMask));
    case LVM_SETSELECTIONMARK: return CallText("LVM_SETSELECTIONMARK", lParam);
    case LVM_ENSUREVISIBLE: return CallText("LVM_ENSUREVISIBLE", row, field("partial=", lParam));
    case LVM_GETNEXTITEM: return CallText("LVM_GETNEXTITEM", row, field("flags=", lParam));
    case LVM_SETITEMW:
        return CallText("LVM_SETITEMW", field("", item->iItem) + field(",", item->iSubItem),
                        field("mask=", item->mask), Quoted(item->pszText));
    case LVM_SETCOLUMNWIDTH: return CallText("LVM_SETCOLUMNWIDTH", row, static_cast<short>(lParam));
    default: return {};
    }
}

// A function that a worker has the user-interface thread run.
struct Invocation {
    CInvoker::CallFunction call;
    const void* function;
    DWORD worker;
};

void RunForWorker(const void* target) {
    const auto& invocation = *static_cast<const Invocation*>(target);
    const WorkerCalls::OnBehalfOf worker(invocation.worker);
    invocation.call(invocation.function);
}

}  // namespace

WorkerWindowCalls::WorkerWindowCalls(WorkerCalls& calls) {
    // What windows do about a call is not the worker's doing.
    NotedCalls noted(m_replaced, [&calls](const std::string& call) {
        calls.Note(call);
        return WorkerCalls::OnBehalfOf(0);
    });
    noted.Add<"IsDlgButtonChecked", decltype(::IsDlgButtonChecked)>(
        [](HWND, int id) { return std::to_string(id); });
    noted.Add<"EnableWindow", decltype(::EnableWindow)>();
    noted.Add<"ShowWindow", decltype(::ShowWindow)>();
    noted.Add<"SetWindowTextW", decltype(::SetWindowTextW)>();
    noted.Add<"UpdateWindow", decltype(::UpdateWindow)>();
    m_replaced.push_back(REPLACE_IMPORT(
        SendMessageW, [&calls](auto original, HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
            if (message >= LVM_FIRST && message < LVM_FIRST + 0x100) {
                if (const std::string call = ListMessage(message, wParam, lParam); !call.empty()) {
                    calls.Note(call);
                }
            }
            if (message != CInvoker::kInvokeMessage || calls.IsUserInterface()) {
                const WorkerCalls::OnBehalfOf nobody(0);
                return original(window, message, wParam, lParam);
            }
            const Invocation invocation{reinterpret_cast<CInvoker::CallFunction>(wParam),
                                        reinterpret_cast<const void*>(lParam), ::GetCurrentThreadId()};
            const CInvoker::CallFunction run = &RunForWorker;
            return original(window, message, reinterpret_cast<WPARAM>(run),
                            reinterpret_cast<LPARAM>(&invocation));
        }));
    m_replaced.push_back(REPLACE_IMPORT(
        SetTimer, [&calls, this](auto original, HWND window, UINT_PTR id, UINT periodMs, TIMERPROC callback) {
            calls.Note(CallText("SetTimer", window, id, periodMs) + (callback ? " callback" : ""));
            return realTimers ? original(window, id, periodMs, callback) : id;
        }));
    m_replaced.push_back(REPLACE_IMPORT(KillTimer, [&calls, this](auto original, HWND window, UINT_PTR id) {
        calls.Note(CallText("KillTimer", window, id));
        return realTimers ? original(window, id) : TRUE;
    }));
    m_replaced.push_back(REPLACE_IMPORT(LoadCursorW, [&calls](auto original, HINSTANCE module, LPCWSTR name) {
        const bool onWorker = calls.Note(
            CallText(module ? "LoadCursorW module" : "LoadCursorW", reinterpret_cast<ULONG_PTR>(name)));
        return onWorker ? kBusyCursor : original(module, name);
    }));
    m_replaced.push_back(REPLACE_IMPORT(SetCursor, [&calls](auto original, HCURSOR cursor) {
        const bool onWorker = calls.Note(cursor == kBusyCursor       ? "SetCursor busy"
                                         : cursor == kPreviousCursor ? "SetCursor previous"
                                                                     : "SetCursor other");
        return onWorker ? kPreviousCursor : original(cursor);
    }));
    m_replaced.push_back(
        REPLACE_IMPORT(SetThreadExecutionState, [&calls, this](EXECUTION_STATE state) -> EXECUTION_STATE {
            calls.Note(CallText("SetThreadExecutionState", Hex(state)));
            return executionState;
        }));
    m_replaced.push_back(REPLACE_IMPORT(GetActiveWindow, [&calls, this](auto original) -> HWND {
        return calls.Note("GetActiveWindow") ? activeWindow.load() : original();
    }));
    m_replaced.push_back(REPLACE_IMPORT(
        DialogBoxParamW,
        [&calls, this](auto original, HINSTANCE module, LPCWSTR name, HWND owner, DLGPROC procedure,
                       LPARAM parameter) -> INT_PTR {
            const bool onWorker = calls.Note(
                CallText("DialogBoxParamW", reinterpret_cast<ULONG_PTR>(name), "owner=" + WindowName(owner)));
            if (onWorker && !realDialogs) return IDCANCEL;
            return original(module, name, owner, procedure, parameter);
        }));
}
