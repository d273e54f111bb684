#include "tests/window/worker_window_calls.h"

#include "framework/invoker.h"
#include "tests/support/utf8.h"
#include "tests/window/control_calls.h"

#include <commctrl.h>

#include <string>

namespace {

const auto kBusyCursor = reinterpret_cast<HCURSOR>(0x1001);
const auto kPreviousCursor = reinterpret_cast<HCURSOR>(0x1002);

std::string Number(LONG_PTR value) {
    return std::to_string(value);
}

std::string Quoted(const wchar_t* text) {
    return '"' + Utf8(text) + '"';
}

// A message to the file list as the record has it; empty for one that is not written down.
std::string ListMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    const std::string row = Number(static_cast<int>(wParam));
    const auto* const item = reinterpret_cast<const LVITEMW*>(lParam);  // of some messages
    switch (message) {
    case LVM_GETITEMCOUNT: return "LVM_GETITEMCOUNT";
    case LVM_GETITEMTEXTW: return "LVM_GETITEMTEXTW " + row + ',' + Number(item->iSubItem);
    case LVM_SETITEMSTATE:
        return "LVM_SETITEMSTATE " + row + " state=" + Number(item->state) +
               " mask=" + Number(item->stateMask);
    case LVM_SETSELECTIONMARK: return "LVM_SETSELECTIONMARK " + Number(lParam);
    case LVM_ENSUREVISIBLE: return "LVM_ENSUREVISIBLE " + row + " partial=" + Number(lParam);
    case LVM_GETNEXTITEM: return "LVM_GETNEXTITEM " + row + " flags=" + Number(lParam);
    case LVM_SETITEMW:
        return "LVM_SETITEMW " + Number(item->iItem) + ',' + Number(item->iSubItem) +
               " mask=" + Number(item->mask) + ' ' + Quoted(item->pszText);
    case LVM_SETCOLUMNWIDTH: return "LVM_SETCOLUMNWIDTH " + row + ' ' + Number(static_cast<short>(lParam));
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

// The system's function. What windows do about the call is not the worker's doing.
template <class Function, class... Arguments>
auto CallSystem(Function* function, Arguments... arguments) {
    const WorkerCalls::OnBehalfOf nobody(0);
    return function(arguments...);
}

// Notes a call by its name and its arguments, and passes it on.
template <class Function, class Describe>
std::unique_ptr<ReplacedImport> NoteAndCall(const char* name, WorkerCalls& calls, Describe describe) {
    return Replace<Function>(name,
                             [&calls, describe, call = std::string(name)](auto original, auto... arguments) {
                                 calls.Note(call + ' ' + describe(arguments...));
                                 return CallSystem(original, arguments...);
                             });
}

}  // namespace

WorkerWindowCalls::WorkerWindowCalls(WorkerCalls& calls) {
    m_replaced.push_back(NoteAndCall<decltype(::IsDlgButtonChecked)>(
        "IsDlgButtonChecked", calls, [](HWND, int id) { return Number(id); }));
    m_replaced.push_back(NoteAndCall<decltype(::EnableWindow)>(
        "EnableWindow", calls,
        [](HWND window, BOOL enabled) { return WindowName(window) + ' ' + Number(enabled); }));
    m_replaced.push_back(NoteAndCall<decltype(::ShowWindow)>(
        "ShowWindow", calls,
        [](HWND window, int command) { return WindowName(window) + ' ' + Number(command); }));
    m_replaced.push_back(NoteAndCall<decltype(::SetWindowTextW)>(
        "SetWindowTextW", calls,
        [](HWND window, LPCWSTR text) { return WindowName(window) + ' ' + Quoted(text); }));
    m_replaced.push_back(NoteAndCall<decltype(::UpdateWindow)>(
        "UpdateWindow", calls, [](HWND window) { return WindowName(window); }));
    m_replaced.push_back(Replace<decltype(::SendMessageW)>(
        "SendMessageW", [&calls](auto original, HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
            if (message >= LVM_FIRST && message < LVM_FIRST + 0x100) {
                if (const std::string call = ListMessage(message, wParam, lParam); !call.empty()) {
                    calls.Note(call);
                }
            }
            if (message != CInvoker::kInvokeMessage || calls.IsUserInterface()) {
                return CallSystem(original, window, message, wParam, lParam);
            }
            const Invocation invocation{reinterpret_cast<CInvoker::CallFunction>(wParam),
                                        reinterpret_cast<const void*>(lParam), ::GetCurrentThreadId()};
            const CInvoker::CallFunction run = &RunForWorker;
            return original(window, message, reinterpret_cast<WPARAM>(run),
                            reinterpret_cast<LPARAM>(&invocation));
        }));
    m_replaced.push_back(Replace<decltype(::SetTimer)>(
        "SetTimer",
        [&calls, this](auto original, HWND window, UINT_PTR id, UINT periodMs, TIMERPROC callback) {
            calls.Note("SetTimer " + WindowName(window) + ' ' + std::to_string(id) + ' ' +
                       std::to_string(periodMs) + (callback ? " callback" : ""));
            return realTimers ? original(window, id, periodMs, callback) : id;
        }));
    m_replaced.push_back(
        Replace<decltype(::KillTimer)>("KillTimer", [&calls, this](auto original, HWND window, UINT_PTR id) {
            calls.Note("KillTimer " + WindowName(window) + ' ' + std::to_string(id));
            return realTimers ? original(window, id) : TRUE;
        }));
    m_replaced.push_back(Replace<decltype(::LoadCursorW)>(
        "LoadCursorW", [&calls](auto original, HINSTANCE module, LPCWSTR name) {
            const bool onWorker = calls.Note(std::string("LoadCursorW ") + (module ? "module " : "") +
                                             std::to_string(reinterpret_cast<ULONG_PTR>(name)));
            return onWorker ? kBusyCursor : original(module, name);
        }));
    m_replaced.push_back(Replace<decltype(::SetCursor)>("SetCursor", [&calls](auto original, HCURSOR cursor) {
        const bool onWorker = calls.Note(cursor == kBusyCursor       ? "SetCursor busy"
                                         : cursor == kPreviousCursor ? "SetCursor previous"
                                                                     : "SetCursor other");
        return onWorker ? kPreviousCursor : original(cursor);
    }));
    m_replaced.push_back(Replace<decltype(::SetThreadExecutionState)>(
        "SetThreadExecutionState", [&calls, this](EXECUTION_STATE state) -> EXECUTION_STATE {
            char call[60];
            ::wsprintfA(call, "SetThreadExecutionState 0x%X", state);
            calls.Note(call);
            return executionState;
        }));
    m_replaced.push_back(
        Replace<decltype(::GetActiveWindow)>("GetActiveWindow", [&calls, this](auto original) -> HWND {
            return calls.Note("GetActiveWindow") ? activeWindow.load() : original();
        }));
    m_replaced.push_back(Replace<decltype(::DialogBoxParamW)>(
        "DialogBoxParamW",
        [&calls, this](auto original, HINSTANCE module, LPCWSTR name, HWND owner, DLGPROC procedure,
                       LPARAM parameter) -> INT_PTR {
            const bool onWorker =
                calls.Note("DialogBoxParamW " + std::to_string(reinterpret_cast<ULONG_PTR>(name)) +
                           " owner=" + WindowName(owner));
            if (onWorker && !realDialogs) return IDCANCEL;
            return original(module, name, owner, procedure, parameter);
        }));
}
