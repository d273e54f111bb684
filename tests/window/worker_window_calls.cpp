#include "tests/window/worker_window_calls.h"

#include "framework/invoker.h"
#include "tests/window/control_calls.h"
#include "tests/window/noted_calls.h"

#include <commctrl.h>

#include <string>

namespace {

const auto kBusyCursor = reinterpret_cast<HCURSOR>(0x1001);
const auto kPreviousCursor = reinterpret_cast<HCURSOR>(0x1002);

// A function that a worker has the user-interface thread run.
struct Invocation {
    const CInvoker::Call& call;
    DWORD worker;
};

void RunForWorker(const void* target) {
    const auto& invocation = *static_cast<const Invocation*>(target);
    const WorkerCalls::OnBehalfOf worker(invocation.worker);
    invocation.call.run(invocation.call.function);
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
    m_replaced.push_back(REPLACE_IMPORT(SendMessageW, [&calls](auto original, HWND window, UINT message,
                                                               WPARAM wParam, LPARAM lParam) {
        const bool isToList = message >= LVM_FIRST && message < LVM_FIRST + 0x100;
        const std::string call = isToList ? ControlMessage(window, message, wParam, lParam) : "";
        if (!call.empty()) calls.Note(call);
        if (message != CInvoker::kInvokeMessage || calls.IsUserInterface()) {
            const WorkerCalls::OnBehalfOf nobody(0);
            return original(window, message, wParam, lParam);
        }
        const Invocation invocation{*reinterpret_cast<const CInvoker::Call*>(lParam), ::GetCurrentThreadId()};
        const CInvoker::Call wrapped{&RunForWorker, &invocation};
        return original(window, message, wParam, reinterpret_cast<LPARAM>(&wrapped));
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
