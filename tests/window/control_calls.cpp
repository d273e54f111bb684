#include "tests/window/control_calls.h"

#include "tests/support/replaced_imports.h"
#include "tests/support/utf8.h"

#include <commctrl.h>

#include <map>

namespace {

std::string Number(LONG_PTR value) {
    return std::to_string(value);
}
std::string Quoted(const wchar_t* text) {
    return text ? '"' + Utf8(text) + '"' : "(null)";
}

const char* MessageName(UINT message) {
    static const std::map<UINT, const char*> kNames = {
        {WM_SETICON, "WM_SETICON"},
        {WM_SETREDRAW, "WM_SETREDRAW"},
        {WM_COMMAND, "WM_COMMAND"},
        {BM_SETIMAGE, "BM_SETIMAGE"},
        {LVM_SETEXTENDEDLISTVIEWSTYLE, "LVM_SETEXTENDEDLISTVIEWSTYLE"},
        {LVM_SETIMAGELIST, "LVM_SETIMAGELIST"},
        {LVM_INSERTCOLUMNW, "LVM_INSERTCOLUMNW"},
        {LVM_INSERTITEMW, "LVM_INSERTITEMW"},
        {LVM_SETITEMW, "LVM_SETITEMW"},
        {LVM_SETITEMSTATE, "LVM_SETITEMSTATE"},
        {LVM_SETSELECTIONMARK, "LVM_SETSELECTIONMARK"},
        {LVM_ENSUREVISIBLE, "LVM_ENSUREVISIBLE"},
        {LVM_GETITEMTEXTW, "LVM_GETITEMTEXTW"},
        {LVM_DELETEITEM, "LVM_DELETEITEM"},
        {LVM_DELETEALLITEMS, "LVM_DELETEALLITEMS"},
        {LVM_SETCOLUMNWIDTH, "LVM_SETCOLUMNWIDTH"},
        {LVM_GETCOLUMNWIDTH, "LVM_GETCOLUMNWIDTH"},
        {TTM_SETMAXTIPWIDTH, "TTM_SETMAXTIPWIDTH"},
        {TTM_ADDTOOLW, "TTM_ADDTOOLW"},
        {TTM_ACTIVATE, "TTM_ACTIVATE"},
    };
    const auto found = kNames.find(message);
    return found == kNames.end() ? nullptr : found->second;
}

std::string Arguments(UINT message, WPARAM wParam, LPARAM lParam) {
    const auto row = [&] { return "row=" + Number(static_cast<int>(wParam)); };
    const auto* const item = reinterpret_cast<const LVITEMW*>(lParam);  // of some messages
    const auto cell = [&] {
        return "row=" + Number(item->iItem) + " column=" + Number(item->iSubItem) +
               " mask=" + Number(item->mask) + ' ' + Quoted(item->pszText);
    };
    switch (message) {
    case LVM_SETITEMSTATE:
        return row() + " state=" + Number(item->state) + " mask=" + Number(item->stateMask);
    case LVM_SETITEMW:
    case LVM_INSERTITEMW: return cell();
    case LVM_GETITEMTEXTW:
        return row() + " column=" + Number(item->iSubItem) + " size=" + Number(item->cchTextMax);
    case LVM_INSERTCOLUMNW: return Number(static_cast<int>(wParam));
    case LVM_SETCOLUMNWIDTH:
        return Number(static_cast<int>(wParam)) + ' ' + Number(static_cast<short>(lParam)) +
               (HIWORD(lParam) != 0 ? " and more" : "");
    case TTM_ADDTOOLW: return WindowName(reinterpret_cast<const TTTOOLINFOW*>(lParam)->hwnd);
    case LVM_SETIMAGELIST:
    case BM_SETIMAGE:
    case WM_SETICON: return Number(static_cast<int>(wParam));
    default: return Number(static_cast<int>(wParam)) + ' ' + Number(lParam);
    }
}

}  // namespace

std::string WindowName(HWND window) {
    if (!window) return "none";
    // Not GetDlgCtrlID: it returns a top-level window's menu.
    if (::GetWindowLongPtrW(window, GWL_STYLE) & WS_CHILD) {
        return std::to_string(static_cast<int>(::GetWindowLongPtrW(window, GWLP_ID)));
    }
    wchar_t name[64] = {};
    ::GetClassNameW(window, name, ARRAYSIZE(name));
    return name == std::wstring_view(L"#32770") ? "main" : Utf8(name);
}

ControlCalls::ControlCalls(CallRecord& record, Answer answer) {
    const auto add = [&record](const char* call, const std::string& arguments) {
        record.Add(std::string(call) + ' ' + arguments);
    };
    m_replaced.push_back(
        Replace<decltype(::EnableWindow)>("EnableWindow", [add](auto original, HWND window, BOOL enabled) {
            add("EnableWindow", WindowName(window) + ' ' + Number(enabled));
            return original(window, enabled);
        }));
    m_replaced.push_back(
        Replace<decltype(::ShowWindow)>("ShowWindow", [add](auto original, HWND window, int command) {
            add("ShowWindow", WindowName(window) + ' ' + Number(command));
            return original(window, command);
        }));
    m_replaced.push_back(Replace<decltype(::SetFocus)>("SetFocus", [add](auto original, HWND window) {
        add("SetFocus", WindowName(window));
        return original(window);
    }));
    m_replaced.push_back(Replace<decltype(::CheckDlgButton)>(
        "CheckDlgButton", [add](auto original, HWND dialog, int id, UINT state) {
            add("CheckDlgButton", Number(id) + ' ' + Number(state));
            return original(dialog, id, state);
        }));
    m_replaced.push_back(Replace<decltype(::SetWindowTextW)>(
        "SetWindowTextW", [add](auto original, HWND window, LPCWSTR text) {
            add("SetWindowTextW", WindowName(window) + ' ' + Quoted(text));
            return original(window, text);
        }));
    m_replaced.push_back(
        Replace<decltype(::SetWindowPos)>("SetWindowPos", [add](auto original, HWND window, auto... place) {
            add("SetWindowPos", WindowName(window));
            return original(window, place...);
        }));
    m_replaced.push_back(Replace<decltype(::UpdateWindow)>("UpdateWindow", [add](auto original, HWND window) {
        add("UpdateWindow", WindowName(window));
        return original(window);
    }));
    m_replaced.push_back(
        Replace<decltype(::DestroyWindow)>("DestroyWindow", [add](auto original, HWND window) {
            add("DestroyWindow", WindowName(window));
            return original(window);
        }));
    m_replaced.push_back(Replace<decltype(::SendMessageW)>(
        "SendMessageW", [add, answer = std::move(answer)](auto original, HWND window, UINT message,
                                                          WPARAM wParam, LPARAM lParam) {
            // Commands of controls are the test's own doing.
            const bool isTests = message == WM_COMMAND && lParam != 0;
            if (const char* const name = isTests ? nullptr : MessageName(message)) {
                add(name, WindowName(window) + ' ' + Arguments(message, wParam, lParam));
            }
            if (answer) {
                if (const auto answered = answer(window, message, wParam, lParam)) return *answered;
            }
            return original(window, message, wParam, lParam);
        }));
}

ControlCalls::~ControlCalls() = default;

std::vector<std::string> Only(const std::vector<std::string>& beginnings,
                              const std::vector<std::string>& calls) {
    std::vector<std::string> chosen;
    for (const std::string& call : calls) {
        for (const std::string& beginning : beginnings) {
            if (call.starts_with(beginning)) {
                chosen.push_back(call);
                break;
            }
        }
    }
    return chosen;
}
