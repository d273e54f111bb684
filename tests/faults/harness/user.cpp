#include "tests/faults/harness/user.h"

#include "tests/equipment/wait_until.h"
#include "tests/support/dropped_files.h"

#include "res/resource.h"

#include <commctrl.h>

namespace {

// Longer than anything that does not hang, on a machine that is busy with other tests.
constexpr std::chrono::milliseconds kLimit{15'000};
// How long a person waits before pressing again.
constexpr std::chrono::milliseconds kPatience{500};
constexpr int kTries = 5;

struct DialogSearch {
    int controlId;
    HWND found;
};

BOOL CALLBACK FindDialog(HWND window, LPARAM parameter) {
    auto& search = *reinterpret_cast<DialogSearch*>(parameter);
    DWORD owner = 0;
    ::GetWindowThreadProcessId(window, &owner);
    const bool wanted = owner == ::GetCurrentProcessId() && driver::FindControl(window, search.controlId);
    if (wanted) search.found = window;
    return !wanted;
}

HWND DialogWith(int controlId) {
    DialogSearch search = {controlId, nullptr};
    ::EnumWindows(&FindDialog, reinterpret_cast<LPARAM>(&search));
    // A dialog that has just been made still loads its controls: it is there when it answers.
    User::Send(search.found, WM_NULL);
    return search.found;
}

}  // namespace

void WaitUntil(const char* what, const std::function<bool()>& condition) {
    if (!driver::WaitUntil(condition, kLimit)) throw Hang(std::string("waited in vain until ") + what);
}

// A press that may last as long as a dialog is open, on a thread of its own.
class User::LongPress {
public:
    explicit LongPress(HWND button)
        : m_button(button), m_thread(::CreateThread(nullptr, 0, &Run, this, 0, nullptr)) {}
    LongPress(const LongPress&) = delete;
    LongPress& operator=(const LongPress&) = delete;
    ~LongPress() {
        ::WaitForSingleObject(m_thread, static_cast<DWORD>(kLimit.count()));
        ::CloseHandle(m_thread);
    }

    [[nodiscard]] bool IsOver() const { return ::WaitForSingleObject(m_thread, 0) == WAIT_OBJECT_0; }

private:
    static DWORD WINAPI Run(void* self) {
        ::SendMessageW(static_cast<LongPress*>(self)->m_button, BM_CLICK, 0, 0);
        return 0;
    }

    HWND m_button;
    HANDLE m_thread;
};

User::User(ProgramHost& program) : m_program(program) {}

User::~User() = default;

HWND User::WaitForWindow() const {
    HWND window = nullptr;
    WaitUntil("the window is there or the program has ended", [&] {
        window = Window();
        return window || m_program.State() != ProgramHost::Life::Running;
    });
    Send(window, WM_NULL);  // a window that is being set up answers when that is done
    return Window();
}

LRESULT User::Send(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (!window) return 0;
    DWORD_PTR result = 0;
    ::SetLastError(ERROR_SUCCESS);
    const bool answered = ::SendMessageTimeoutW(window, message, wParam, lParam, SMTO_NORMAL,
                                                static_cast<UINT>(kLimit.count()), &result) != 0;
    if (!answered && ::GetLastError() == ERROR_TIMEOUT) throw Hang("the window does not answer");
    return static_cast<LRESULT>(result);
}

void User::Press(int id) const {
    if (IsEnabled(id)) Send(Control(id), BM_CLICK);
}

void User::ClickInto(int id) const {
    Send(Control(id), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(2, 2));
    Send(Control(id), WM_LBUTTONUP, 0, MAKELPARAM(2, 2));
}

void User::SetText(int id, const wchar_t* text) const {
    Send(Control(id), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text));
}

void User::Notify(int id, int code) const {
    Send(Window(), WM_COMMAND, static_cast<WPARAM>(MAKELONG(id, code)),
         reinterpret_cast<LPARAM>(Control(id)));
}

void User::Drop(const std::vector<std::wstring>& paths) const {
    const DroppedFiles drop(paths);
    Send(Control(IDC_FILE_LIST), WM_DROPFILES, reinterpret_cast<WPARAM>(drop.Get()));
}

void User::SelectRow(int row) const {
    LVITEMW item = {};
    item.state = item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
    Send(Control(IDC_FILE_LIST), LVM_SETITEMSTATE, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
}

void User::PressListKey(WORD key) const {
    Send(Control(IDC_FILE_LIST), WM_KEYDOWN, key, 1);
    Send(Control(IDC_FILE_LIST), WM_KEYUP, key, 1);
}

HWND User::PressForDialog(int id, int controlOfDialog) {
    if (!IsEnabled(id)) return nullptr;
    m_longPress = std::make_unique<LongPress>(Control(id));
    HWND dialog = nullptr;
    WaitUntil("a dialog opens or the press is over", [&] {
        dialog = DialogWith(controlOfDialog);
        return dialog || m_longPress->IsOver();
    });
    return dialog;
}

HWND User::WaitForWorkersDialog(int controlOfDialog) const {
    HWND dialog = nullptr;
    WaitUntil("a dialog opens or the workers have ended", [&] {
        dialog = DialogWith(controlOfDialog);
        return dialog || m_program.ThePlatform().Workers() == 0;
    });
    return dialog;
}

void User::CloseDialog(HWND dialog, int buttonId) {
    for (int tries = 0; ::IsWindow(dialog); ++tries) {
        if (tries == kTries) throw Hang("a dialog does not close");
        Send(driver::FindControl(dialog, buttonId), BM_CLICK);
        static_cast<void>(driver::WaitUntil([&] { return !::IsWindow(dialog); }, kPatience));
    }
    m_longPress.reset();
}

void User::WaitForConverter(int number) const {
    const Platform& platform = m_program.ThePlatform();
    WaitUntil("a converter has been started or the workers have ended",
              [&] { return platform.ConvertersStarted() >= number || platform.Workers() == 0; });
}

void User::WaitForWorkers() const {
    WaitUntil("the workers have ended", [&] { return m_program.ThePlatform().Workers() == 0; });
    Send(Window(), WM_NULL);
}

void User::WaitForPosted() const {
    const Platform& platform = m_program.ThePlatform();
    const int before = platform.Markers();
    // To the thread: what is posted to the window is dispatched by the dialog's own keyboard handling.
    if (!Window() || !::PostThreadMessageW(m_program.ThreadId(), Platform::kMarkerMessage, 0, 0)) return;
    WaitUntil("what was posted has been served",
              [&] { return platform.Markers() > before || m_program.State() != ProgramHost::Life::Running; });
}

void User::PressKeyIn(int id, WORD key) const {
    ::PostMessageW(Control(id), WM_KEYDOWN, key, 1);
    ::PostMessageW(Control(id), WM_KEYUP, key, 1);
    WaitForPosted();
}

void User::PressEscape() const {
    const auto hasEnded = [&] { return m_program.State() != ProgramHost::Life::Running; };
    for (int tries = 0; !hasEnded() && tries < kTries; ++tries) {
        ::PostMessageW(Control(IDC_FILE_LIST), WM_KEYDOWN, VK_ESCAPE, 1);
        static_cast<void>(driver::WaitUntil(hasEnded, kPatience));
    }
}

void User::Quit() const {
    const auto hasEnded = [&] { return m_program.State() != ProgramHost::Life::Running; };
    for (int tries = 0; !hasEnded(); ++tries) {
        if (tries == kTries) throw Hang("the program does not quit");
        Press(IDCANCEL);
        static_cast<void>(driver::WaitUntil(hasEnded, kPatience));
    }
}
