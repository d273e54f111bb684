#include "tests/faults/harness/user.h"

#include "tests/equipment/failure.h"
#include "tests/equipment/wait_until.h"
#include "tests/support/dropped_files.h"
#include "tests/support/utf8.h"

#include "res/resource.h"

#include <commctrl.h>

namespace {

// Presses a few times at most, as a person does who waits a moment for what it comes to. Whether it has.
bool PressUntil(const std::function<bool()>& isDone, const std::function<void()>& press) {
    constexpr std::chrono::milliseconds kPatience{500};
    constexpr int kTries = 5;
    for (int tries = 0; !isDone() && tries < kTries; ++tries) {
        press();
        static_cast<void>(driver::WaitUntil(isDone, kPatience));
    }
    return isDone();
}

HWND WaitForDialog(const char* what, int controlId, const std::function<bool()>& isOver) {
    HWND dialog = nullptr;
    driver::Await(what, [&] {
        dialog = FindOwnWindow([&](HWND window) { return driver::FindControl(window, controlId); });
        // A dialog that has just been made still loads its controls: it is there when it answers.
        User::Send(dialog, WM_NULL);
        return dialog || isOver();
    });
    return dialog;
}

}  // namespace

HWND FindOwnWindow(const std::function<bool(HWND window)>& fits) {
    for (const HWND window : driver::TopLevelWindows()) {
        DWORD owner = 0;
        ::GetWindowThreadProcessId(window, &owner);
        if (owner == ::GetCurrentProcessId() && fits(window)) return window;
    }
    return nullptr;
}

void User::WaitForWindow() const {
    HWND window = nullptr;
    driver::Await("the window is there or the program has ended", [&] {
        window = Window();
        return window || m_program.HasEnded();
    });
    Send(window, WM_NULL);  // a window that is being set up answers when that is done
}

LRESULT User::Send(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (!window) return 0;
    DWORD_PTR result = 0;
    ::SetLastError(ERROR_SUCCESS);
    const bool answered = ::SendMessageTimeoutW(window, message, wParam, lParam, SMTO_NORMAL,
                                                static_cast<UINT>(driver::kSoon.count()), &result) != 0;
    if (!answered && ::GetLastError() == ERROR_TIMEOUT) throw driver::Failure("the window does not answer");
    return static_cast<LRESULT>(result);
}

LRESULT User::SendToList(UINT message, WPARAM wParam, LPARAM lParam) const {
    return Send(Control(IDC_FILE_LIST), message, wParam, lParam);
}

std::string User::TextOf(HWND control) {
    std::wstring text(2000, L'\0');
    text.resize(static_cast<std::size_t>(
        Send(control, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()))));
    return Utf8(text);
}

void User::Press(int id) const {
    if (IsEnabled(id)) Send(Control(id), BM_CLICK);
}

void User::SetText(int id, const wchar_t* text) const {
    Send(Control(id), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text));
}

void User::Drop(const std::vector<std::wstring>& paths) const {
    const DroppedFiles drop(paths);
    SendToList(WM_DROPFILES, reinterpret_cast<WPARAM>(drop.Get()));
}

void User::SelectRow(int row) const {
    LVITEMW item = {};
    item.state = item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
    SendToList(LVM_SETITEMSTATE, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
}

void User::PressListKey(WORD key) const {
    SendToList(WM_KEYDOWN, key, 1);
    SendToList(WM_KEYUP, key, 1);
}

HWND User::PressForDialog(int id, int controlOfDialog) const {
    if (!IsEnabled(id)) return nullptr;
    driver::Click(Control(id));
    // A dialog that opens takes the marker from the queue and keeps it.
    return WaitForDialog("a dialog opens or the press is over", controlOfDialog, PostMarker());
}

HWND User::WaitForWorkersDialog(int controlOfDialog) const {
    return WaitForDialog("a dialog opens or the workers have ended", controlOfDialog,
                         [&] { return m_program.platform.Workers() == 0; });
}

void User::CloseDialog(HWND dialog, int buttonId) const {
    const auto press = [&] { Send(driver::FindControl(dialog, buttonId), BM_CLICK); };
    if (!PressUntil([&] { return !::IsWindow(dialog); }, press))
        throw driver::Failure("a dialog does not close");
    WaitForPosted();
}

void User::WaitForConverter(int number) const {
    const Platform& platform = m_program.platform;
    driver::Await("a converter has been started or the workers have ended",
                  [&] { return platform.converters.Awaited() >= number || platform.Workers() == 0; });
}

void User::WaitForWorkers() const {
    driver::Await("the workers have ended", [&] { return m_program.platform.Workers() == 0; });
    Send(Window(), WM_NULL);
}

std::function<bool()> User::PostMarker() const {
    const Platform& platform = m_program.platform;
    const int before = platform.Markers();
    // To the thread: what is posted to the window is dispatched by the dialog's own keyboard handling.
    const bool isPosted =
        Window() && ::PostThreadMessageW(m_program.ThreadId(), Platform::kMarkerMessage, 0, 0);
    return [=, this, &platform] { return !isPosted || platform.Markers() > before || m_program.HasEnded(); };
}

void User::WaitForPosted() const {
    driver::Await("what was posted has been served", PostMarker());
}

void User::PressKeyIn(int id, WORD key) const {
    driver::PressKey(Control(id), key);
    WaitForPosted();
}

bool User::PressUntilEnded(const std::function<void()>& press) const {
    return PressUntil([&] { return m_program.HasEnded(); }, press);
}

void User::Quit() const {
    if (!PressUntilEnded([&] { Press(IDCANCEL); })) throw driver::Failure("the program does not quit");
}
