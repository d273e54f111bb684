#include "tests/window/control_calls.h"

#include "tests/window/noted_calls.h"

#include <commctrl.h>

#include <map>

namespace {

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
        {LVM_GETITEMCOUNT, "LVM_GETITEMCOUNT"},
        {LVM_GETNEXTITEM, "LVM_GETNEXTITEM"},
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
    const int number = static_cast<int>(wParam);
    const auto field = [](const char* name, auto value) { return name + std::to_string(value); };
    const auto* const item = reinterpret_cast<const LVITEMW*>(lParam);        // of some messages
    const std::string excess = wParam != 0 ? field(" wParam=", wParam) : "";  // where it has to be 0
    switch (message) {
    case LVM_SETITEMSTATE:
        return CallText(field("row=", number), field("state=", item->state), field("mask=", item->stateMask));
    case LVM_SETITEMW:
    case LVM_INSERTITEMW:
        return CallText(field("row=", item->iItem), field("column=", item->iSubItem),
                        field("mask=", item->mask), Quoted(item->pszText)) +
               excess;
    case LVM_GETITEMTEXTW:
        return CallText(field("row=", number), field("column=", item->iSubItem),
                        field("size=", item->cchTextMax));
    case LVM_SETCOLUMNWIDTH:
        return CallText(std::to_string(number), static_cast<short>(lParam)) +
               (HIWORD(lParam) != 0 ? " and more" : "");
    case TTM_ADDTOOLW: return WindowName(reinterpret_cast<const TTTOOLINFOW*>(lParam)->hwnd) + excess;
    case LVM_INSERTCOLUMNW:
    case LVM_SETIMAGELIST:
    case BM_SETIMAGE:
    case WM_SETICON: return std::to_string(number);
    default: return CallText(std::to_string(number), lParam);
    }
}

}  // namespace

std::string ControlMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const char* const name = MessageName(message);
    return name ? CallText(name, window, Arguments(message, wParam, lParam)) : "";
}

ControlCalls::ControlCalls(CallRecord& record, Answer answer) {
    NotedCalls calls(m_replaced, [&record](std::string call) {
        record.Add(std::move(call));
        return true;
    });
    calls.Add<"EnableWindow", decltype(::EnableWindow)>();
    calls.Add<"ShowWindow", decltype(::ShowWindow)>();
    calls.Add<"SetFocus", decltype(::SetFocus)>();
    calls.Add<"SetWindowTextW", decltype(::SetWindowTextW)>();
    calls.Add<"UpdateWindow", decltype(::UpdateWindow)>();
    calls.Add<"DestroyWindow", decltype(::DestroyWindow)>();
    calls.Add<"CheckDlgButton", decltype(::CheckDlgButton)>(
        [](HWND, int id, UINT state) { return CallText(std::to_string(id), state); });
    calls.Add<"SetWindowPos", decltype(::SetWindowPos)>(
        [](HWND window, auto...) { return WindowName(window); });
    m_replaced.push_back(REPLACE_IMPORT(
        SendMessageW, [&record, answer = std::move(answer)](auto original, HWND window, UINT message,
                                                            WPARAM wParam, LPARAM lParam) {
            // Commands of controls are the test's own doing, and these questions change nothing.
            const bool isTests = message == WM_COMMAND && lParam != 0;
            const bool isQuestion = message == LVM_GETITEMCOUNT || message == LVM_GETNEXTITEM;
            const std::string call = ControlMessage(window, message, wParam, lParam);
            if (!isTests && !isQuestion && !call.empty()) record.Add(call);
            if (answer) {
                if (const auto answered = answer(window, message, wParam, lParam)) return *answered;
            }
            return original(window, message, wParam, lParam);
        }));
}
