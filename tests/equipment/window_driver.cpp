#include "tests/equipment/window_driver.h"

#include "tests/equipment/failure.h"
#include "tests/equipment/remote_memory.h"
#include "tests/equipment/text.h"
#include "tests/equipment/wine.h"
#include "tests/support/dropped_files.h"

#include <algorithm>

namespace driver {
namespace {

std::wstring ClassName(HWND window) {
    wchar_t name[256] = {};
    ::GetClassNameW(window, name, ARRAYSIZE(name));
    return name;
}

BOOL CALLBACK Collect(HWND window, LPARAM windows) {
    reinterpret_cast<std::vector<HWND>*>(windows)->push_back(window);
    return TRUE;
}

// The windows in a window, and those in them.
std::vector<HWND> WindowsIn(HWND window) {
    std::vector<HWND> windows;
    ::EnumChildWindows(window, Collect, reinterpret_cast<LPARAM>(&windows));
    return windows;
}

// Windows does not promise that a button is pressed by BM_CLICK while its dialog is not the active window of
// its thread, as after another program came to the front: the focus that the button then takes may go
// elsewhere at once. Its documentation has the dialog activated before.
void Activate(HWND dialog) {
    const DWORD thread = ::GetWindowThreadProcessId(dialog, nullptr);
    if (GuiThread(dialog).hwndActive == dialog || !IsEnabled(dialog)) return;
    if (!::AttachThreadInput(::GetCurrentThreadId(), thread, TRUE)) return;
    ::SetActiveWindow(dialog);
    ::AttachThreadInput(::GetCurrentThreadId(), thread, FALSE);
}

void Post(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (!::PostMessageW(window, message, wParam, lParam)) FailCall("PostMessageW", ::GetLastError());
}

// Wine hands the number over as it is, so the block must be in the receiver.
void* DropInReceiver(HWND target, const std::string& bytes) {
    RemoteMemory block(target, bytes.size());
    block.Write(bytes.data(), bytes.size());
    return block.GiveAway();
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
    for (const HWND window : WindowsIn(dialog))
        if (::GetDlgCtrlID(window) == id && ::GetAncestor(window, GA_PARENT) == dialog) return window;
    return nullptr;
}

HWND Control(HWND dialog, int id) {
    const HWND control = FindControl(dialog, id);
    if (!control) throw Failure("the dialog has no control " + std::to_string(id));
    return control;
}

std::vector<HWND> TopLevelWindows() {
    std::vector<HWND> windows;
    ::EnumWindows(Collect, reinterpret_cast<LPARAM>(&windows));
    return windows;
}

std::vector<HWND> Dialogs(const Program& program) {
    std::vector<HWND> windows = TopLevelWindows();
    std::erase_if(windows, [&](HWND window) {
        DWORD owner = 0;
        ::GetWindowThreadProcessId(window, &owner);
        return owner != program.Id() || ClassName(window) != L"#32770" || !IsVisible(window);
    });
    return windows;
}

GUITHREADINFO GuiThread(HWND window) {
    GUITHREADINFO info = {};
    info.cbSize = sizeof info;
    ::GetGUIThreadInfo(::GetWindowThreadProcessId(window, nullptr), &info);
    return info;
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
    for (const HWND window : WindowsIn(dialog)) {
        const std::wstring text = Text(window);
        if (!text.empty()) lines += L'\n' + text;
    }
    return lines;
}

bool IsChecked(HWND checkBox) {
    return Ask(checkBox, BM_GETCHECK) == BST_CHECKED;
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
    if (!UnderWine()) Activate(::GetAncestor(button, GA_ROOT));
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
    const auto press = [&](int number) {
        const std::vector<HWND> windows = WindowsIn(dialog);
        const auto button = std::ranges::find_if(
            windows, [&](HWND window) { return ::GetDlgCtrlID(window) == number && IsVisible(window); });
        if (button != windows.end()) Click(*button);
        return button != windows.end();
    };
    const bool isPressed = press(id) || (id == IDOK && press(IDCANCEL));
    if (!isPressed) throw Failure("the dialog has no button " + std::to_string(id));
}

void AnswerDialog(HWND dialog, int id) {
    PressDialogButton(dialog, id);
    Await("the dialog is gone", [&] { return !::IsWindow(dialog); });
}

void DropFiles(HWND target, const std::vector<std::wstring>& paths) {
    const std::string bytes = DropBytes(paths);
    // Windows carries a drop over: when the message is posted to another process, it makes the receiver a
    // copy of the sender's block and hands that over. Given away: the receiver owns a drop from the moment
    // the message is posted.
    void* const drop = UnderWine() ? DropInReceiver(target, bytes) : DropBlock(bytes);
    Post(target, WM_DROPFILES, reinterpret_cast<WPARAM>(drop), 0);
}

void RepaintNow(HWND window) {
    ::RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN | RDW_UPDATENOW);
    Ask(window, WM_NULL);
}

}  // namespace driver
