#include "tests/window/control_calls.h"

#include "tests/support/utf8.h"
#include "tests/window/forwarding_import.h"

#include <commctrl.h>

#include <map>

namespace {

CallRecord* g_record = nullptr;
ControlCalls::Answer g_answer;

void Add(std::string call) {
    g_record->Add(std::move(call));
}

std::string Number(LONG_PTR value) {
    return std::to_string(value);
}
std::string Quoted(const wchar_t* text) {
    return text ? '"' + Utf8(text) + '"' : "(null)";
}

BOOL WINAPI Enable(HWND window, BOOL enabled) {
    Add("EnableWindow " + WindowName(window) + ' ' + Number(enabled));
    return original<&Enable>(window, enabled);
}

BOOL WINAPI Show(HWND window, int command) {
    Add("ShowWindow " + WindowName(window) + ' ' + Number(command));
    return original<&Show>(window, command);
}

HWND WINAPI Focus(HWND window) {
    Add("SetFocus " + WindowName(window));
    return original<&Focus>(window);
}

BOOL WINAPI Check(HWND dialog, int id, UINT state) {
    Add("CheckDlgButton " + Number(id) + ' ' + Number(state));
    return original<&Check>(dialog, id, state);
}

BOOL WINAPI SetText(HWND window, LPCWSTR text) {
    Add("SetWindowTextW " + WindowName(window) + ' ' + Quoted(text));
    return original<&SetText>(window, text);
}

BOOL WINAPI SetPosition(HWND window, HWND after, int x, int y, int width, int height, UINT flags) {
    Add("SetWindowPos " + WindowName(window));
    return original<&SetPosition>(window, after, x, y, width, height, flags);
}

BOOL WINAPI Update(HWND window) {
    Add("UpdateWindow " + WindowName(window));
    return original<&Update>(window);
}

BOOL WINAPI Destroy(HWND window) {
    Add("DestroyWindow " + WindowName(window));
    return original<&Destroy>(window);
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

LRESULT WINAPI Send(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    // Commands of controls are the test's own doing.
    const bool isTests = message == WM_COMMAND && lParam != 0;
    if (const char* const name = isTests ? nullptr : MessageName(message)) {
        Add(std::string(name) + ' ' + WindowName(window) + ' ' + Arguments(message, wParam, lParam));
    }
    if (g_answer) {
        if (const auto answer = g_answer(window, message, wParam, lParam)) return *answer;
    }
    return original<&Send>(window, message, wParam, lParam);
}

}  // namespace

std::string WindowName(HWND window) {
    if (!window) return "none";
    // Not GetDlgCtrlID: it gives a top-level window's menu.
    if (::GetWindowLongPtrW(window, GWL_STYLE) & WS_CHILD) {
        return std::to_string(static_cast<int>(::GetWindowLongPtrW(window, GWLP_ID)));
    }
    wchar_t name[64] = {};
    ::GetClassNameW(window, name, ARRAYSIZE(name));
    return name == std::wstring_view(L"#32770") ? "main" : Utf8(name);
}

ControlCalls::ControlCalls(CallRecord& record, Answer answer) {
    g_record = &record;
    g_answer = std::move(answer);
    m_replaced.push_back(ReplaceAndForward<&Enable>("EnableWindow"));
    m_replaced.push_back(ReplaceAndForward<&Show>("ShowWindow"));
    m_replaced.push_back(ReplaceAndForward<&Focus>("SetFocus"));
    m_replaced.push_back(ReplaceAndForward<&Check>("CheckDlgButton"));
    m_replaced.push_back(ReplaceAndForward<&SetText>("SetWindowTextW"));
    m_replaced.push_back(ReplaceAndForward<&SetPosition>("SetWindowPos"));
    m_replaced.push_back(ReplaceAndForward<&Update>("UpdateWindow"));
    m_replaced.push_back(ReplaceAndForward<&Destroy>("DestroyWindow"));
    m_replaced.push_back(ReplaceAndForward<&Send>("SendMessageW"));
}

ControlCalls::~ControlCalls() {
    m_replaced.clear();
    g_answer = nullptr;
}

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
