#include "tests/equipment/window_driver.h"

#include <shellapi.h>
#include <shlobj.h>

#include "tests/equipment/failure.h"
#include "tests/equipment/remote_memory.h"

namespace driver {
namespace {

bool IsDialog(HWND window) {
    wchar_t className[16] = {};
    return ::GetClassNameW(window, className, 16) && std::wstring(className) == L"#32770";
}

struct ControlSearch {
    HWND dialog;
    int id;
    HWND found;
};

BOOL CALLBACK FindById(HWND window, LPARAM parameter) {
    auto& search = *reinterpret_cast<ControlSearch*>(parameter);
    const bool wanted =
        ::GetDlgCtrlID(window) == search.id && ::GetAncestor(window, GA_PARENT) == search.dialog;
    if (wanted) search.found = window;
    return !wanted;
}

struct DialogSearch {
    DWORD processId;
    std::vector<HWND> found;
};

BOOL CALLBACK CollectDialog(HWND window, LPARAM search) {
    auto& [processId, found] = *reinterpret_cast<DialogSearch*>(search);
    DWORD owner = 0;
    ::GetWindowThreadProcessId(window, &owner);
    if (owner == processId && IsDialog(window) && ::IsWindowVisible(window)) found.push_back(window);
    return TRUE;
}

BOOL CALLBACK CollectText(HWND window, LPARAM lines) {
    const std::wstring text = Text(window);
    if (!text.empty()) *reinterpret_cast<std::wstring*>(lines) += L'\n' + text;
    return TRUE;
}

void Post(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (!::PostMessageW(window, message, wParam, lParam)) FailCall("PostMessageW", ::GetLastError());
}

}  // namespace

LRESULT Ask(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    DWORD_PTR result = 0;
    ::SetLastError(ERROR_SUCCESS);
    if (!::SendMessageTimeoutW(window, message, wParam, lParam, SMTO_NORMAL,
                               static_cast<UINT>(kAnswerLimit.count()), &result)) {
        const DWORD error = ::GetLastError();
        FailCall("no answer to window message " + std::to_string(message) + ": SendMessageTimeoutW", error);
    }
    return static_cast<LRESULT>(result);
}

// Not by GetDlgItem: Wine asks its server for the dialog's first child, then for that one's siblings. When
// the dialog is being closed by its own thread in between, the server of Wine 10 follows them without an end,
// and answers nobody any more.
HWND FindControl(HWND dialog, int id) {
    ControlSearch search{dialog, id, nullptr};
    ::EnumChildWindows(dialog, FindById, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

HWND Control(HWND dialog, int id) {
    const HWND control = FindControl(dialog, id);
    if (!control) throw Failure("the dialog has no control " + std::to_string(id));
    return control;
}

std::vector<HWND> Dialogs(const Program& program) {
    DialogSearch search{program.Id(), {}};
    ::EnumWindows(CollectDialog, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

// The main window is a dialog like the message boxes, and may bear the same title: what sets it apart is a
// control that only it has. A box that comes instead of it is reported at once.
HWND WaitForMainWindow(const Program& program, int idOfAControl, Milliseconds limit) {
    std::vector<HWND> dialogs;
    const auto appeared = [&] {
        dialogs = Dialogs(program);
        return !dialogs.empty() || program.HasEnded();
    };
    if (!WaitUntil(appeared, limit)) throw Failure("the main window did not appear");
    if (dialogs.empty()) throw Failure("the program ended before its main window appeared");
    for (const HWND dialog : dialogs)
        if (FindControl(dialog, idOfAControl)) return dialog;
    throw Failure(L"instead of the main window there is: " + AllText(dialogs.front()));
}

HWND WaitForDialog(const Program& program, HWND mainWindow, Milliseconds limit) {
    HWND found = nullptr;
    const auto appeared = [&] {
        for (const HWND dialog : Dialogs(program))
            if (!found && dialog != mainWindow) found = dialog;
        return found != nullptr || program.HasEnded();
    };
    if (!WaitUntil(appeared, limit)) throw Failure("no dialog or message box appeared");
    if (!found) throw Failure("the program ended instead of opening a dialog or message box");
    return found;
}

std::wstring Text(HWND window) {
    const auto length = static_cast<std::size_t>(Ask(window, WM_GETTEXTLENGTH));
    std::wstring text(length + 1, L'\0');
    const auto copied = Ask(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
    text.resize(static_cast<std::size_t>(copied));
    return text;
}

std::wstring AllText(HWND dialog) {
    std::wstring lines = Text(dialog);
    ::EnumChildWindows(dialog, CollectText, reinterpret_cast<LPARAM>(&lines));
    return lines;
}

bool IsChecked(HWND box) {
    return Ask(box, BM_GETCHECK) == BST_CHECKED;
}

bool IsEnabled(HWND window) {
    return ::IsWindowEnabled(window) != FALSE;
}

bool IsVisible(HWND window) {
    return ::IsWindowVisible(window) != FALSE;
}

void Click(HWND button) {
    // BM_CLICK presses a disabled button as well, which no person can.
    if (!IsEnabled(button)) throw Failure(L"the button is disabled: " + Text(button));
    Post(button, BM_CLICK, 0, 0);
}

void PressKey(HWND window, WORD virtualKey) {
    const UINT scanCode = ::MapVirtualKeyW(virtualKey, MAPVK_VK_TO_VSC);
    const LPARAM down = static_cast<LPARAM>(1u | scanCode << 16);
    constexpr LPARAM kWasDownAndIsReleased = static_cast<LPARAM>(0xC000'0000u);
    Post(window, WM_KEYDOWN, virtualKey, down);
    // Not checked: the key may have closed the window already.
    ::PostMessageW(window, WM_KEYUP, virtualKey, down | kWasDownAndIsReleased);
}

void TypeText(HWND edit, const std::wstring& text) {
    for (const wchar_t unit : text) Post(edit, WM_CHAR, unit, 1);
}

void SetText(HWND edit, const std::wstring& text) {
    Ask(edit, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()));
}

void PressDialogButton(HWND dialog, int id) {
    Click(Control(dialog, id));
}

void DropFiles(HWND target, const std::vector<std::wstring>& paths) {
    std::wstring names;
    for (const std::wstring& path : paths) names += path + L'\0';
    names += L'\0';
    DROPFILES header = {};
    header.pFiles = sizeof header;
    header.fWide = TRUE;
    RemoteMemory block(target, sizeof header + names.size() * sizeof(wchar_t));
    block.Write(0, &header, sizeof header);
    block.Write(sizeof header, names.data(), names.size() * sizeof(wchar_t));
    // Given away: the receiver owns a drop from the moment the message is posted.
    Post(target, WM_DROPFILES, reinterpret_cast<WPARAM>(block.GiveAway()), 0);
}

void RepaintNow(HWND window) {
    ::RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN | RDW_UPDATENOW);
    Ask(window, WM_NULL);
}

}  // namespace driver
