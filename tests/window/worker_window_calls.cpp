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

// A message to the file list as it stands in the record; empty for one that is not written down.
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
auto CallSystem(const ReplacedImport& import, Arguments... arguments) {
    const WorkerCalls::OnBehalfOf nobody(0);
    return import.Original<Function>()(arguments...);
}

}  // namespace

UINT WINAPI WorkerWindowCalls::IsChecked(HWND dialog, int id) {
    s_current->m_calls.Note("IsDlgButtonChecked " + Number(id));
    return CallSystem<decltype(::IsDlgButtonChecked)>(s_current->m_isChecked, dialog, id);
}

BOOL WINAPI WorkerWindowCalls::Enable(HWND window, BOOL enabled) {
    s_current->m_calls.Note("EnableWindow " + WindowName(window) + ' ' + Number(enabled));
    return CallSystem<decltype(::EnableWindow)>(s_current->m_enable, window, enabled);
}

BOOL WINAPI WorkerWindowCalls::Show(HWND window, int command) {
    s_current->m_calls.Note("ShowWindow " + WindowName(window) + ' ' + Number(command));
    return CallSystem<decltype(::ShowWindow)>(s_current->m_show, window, command);
}

BOOL WINAPI WorkerWindowCalls::SetText(HWND window, LPCWSTR text) {
    s_current->m_calls.Note("SetWindowTextW " + WindowName(window) + ' ' + Quoted(text));
    return CallSystem<decltype(::SetWindowTextW)>(s_current->m_setText, window, text);
}

BOOL WINAPI WorkerWindowCalls::Update(HWND window) {
    s_current->m_calls.Note("UpdateWindow " + WindowName(window));
    return CallSystem<decltype(::UpdateWindow)>(s_current->m_update, window);
}

LRESULT WINAPI WorkerWindowCalls::Send(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message >= LVM_FIRST && message < LVM_FIRST + 0x100) {
        if (const std::string call = ListMessage(message, wParam, lParam); !call.empty()) {
            s_current->m_calls.Note(call);
        }
    }
    if (message == CInvoker::kInvokeMessage && !s_current->m_calls.IsUserInterface()) {
        const Invocation invocation{reinterpret_cast<CInvoker::CallFunction>(wParam),
                                    reinterpret_cast<const void*>(lParam), ::GetCurrentThreadId()};
        const CInvoker::CallFunction run = &RunForWorker;
        wParam = reinterpret_cast<WPARAM>(run);
        lParam = reinterpret_cast<LPARAM>(&invocation);
        return s_current->m_send.Original<decltype(::SendMessageW)>()(window, message, wParam, lParam);
    }
    return CallSystem<decltype(::SendMessageW)>(s_current->m_send, window, message, wParam, lParam);
}

UINT_PTR WINAPI WorkerWindowCalls::StartTimer(HWND window, UINT_PTR id, UINT periodMs, TIMERPROC callback) {
    s_current->m_calls.Note("SetTimer " + WindowName(window) + ' ' + std::to_string(id) + ' ' +
                            std::to_string(periodMs) + (callback ? " callback" : ""));
    if (!s_current->realTimers) return id;
    return s_current->m_startTimer.Original<decltype(::SetTimer)>()(window, id, periodMs, callback);
}

BOOL WINAPI WorkerWindowCalls::StopTimer(HWND window, UINT_PTR id) {
    s_current->m_calls.Note("KillTimer " + WindowName(window) + ' ' + std::to_string(id));
    if (!s_current->realTimers) return TRUE;
    return s_current->m_stopTimer.Original<decltype(::KillTimer)>()(window, id);
}

HCURSOR WINAPI WorkerWindowCalls::LoadCursorByName(HINSTANCE module, LPCWSTR name) {
    const bool onWorker = s_current->m_calls.Note(std::string("LoadCursorW ") + (module ? "module " : "") +
                                                  std::to_string(reinterpret_cast<ULONG_PTR>(name)));
    if (onWorker) return kBusyCursor;
    return s_current->m_loadCursor.Original<decltype(::LoadCursorW)>()(module, name);
}

HCURSOR WINAPI WorkerWindowCalls::ChangeCursor(HCURSOR cursor) {
    const bool onWorker = s_current->m_calls.Note(cursor == kBusyCursor       ? "SetCursor busy"
                                                  : cursor == kPreviousCursor ? "SetCursor previous"
                                                                              : "SetCursor other");
    if (onWorker) return kPreviousCursor;
    return s_current->m_changeCursor.Original<decltype(::SetCursor)>()(cursor);
}

EXECUTION_STATE WINAPI WorkerWindowCalls::KeepAwake(EXECUTION_STATE state) {
    char call[60];
    ::wsprintfA(call, "SetThreadExecutionState 0x%X", state);
    s_current->m_calls.Note(call);
    return s_current->executionState;
}

HWND WINAPI WorkerWindowCalls::ActiveWindow() {
    if (s_current->m_calls.Note("GetActiveWindow")) return s_current->activeWindow;
    return s_current->m_activeWindow.Original<decltype(::GetActiveWindow)>()();
}

INT_PTR WINAPI WorkerWindowCalls::RunDialog(HINSTANCE module, LPCWSTR name, HWND owner, DLGPROC procedure,
                                            LPARAM parameter) {
    const bool onWorker =
        s_current->m_calls.Note("DialogBoxParamW " + std::to_string(reinterpret_cast<ULONG_PTR>(name)) +
                                " owner=" + WindowName(owner));
    if (onWorker && !s_current->realDialogs) return IDCANCEL;
    return s_current->m_runDialog.Original<decltype(::DialogBoxParamW)>()(module, name, owner, procedure,
                                                                          parameter);
}
