#include "tests/equipment/main_window.h"

#include "tests/equipment/failure.h"
#include "tests/equipment/list_reader.h"
#include "tests/equipment/window_driver.h"

namespace driver {
namespace {

// The first window in a fresh Wine session waits for the desktop's own start.
constexpr Milliseconds kStartLimit{60'000};
constexpr Milliseconds kEffectLimit{20'000};
constexpr Milliseconds kLimitPerDroppedFile{10};

constexpr wchar_t kStopText[] = L"Arrêter ";
constexpr wchar_t kCompletionText[] = L"Conversion terminée !";

void WaitFor(const std::string& what, Milliseconds limit, auto&& condition) {
    if (!WaitUntil(condition, limit)) throw Failure("waited in vain until " + what);
}

// The main window is a dialog like the message boxes, and may bear the same title: what sets it apart is a
// control that only it has. A box that comes instead of it is reported at once.
HWND WaitForMainWindow(const Program& program) {
    std::vector<HWND> dialogs;
    const auto appeared = [&] {
        dialogs = Dialogs(program);
        return !dialogs.empty() || program.HasEnded();
    };
    if (!WaitUntil(appeared, kStartLimit)) throw Failure("the main window did not appear");
    if (dialogs.empty()) throw Failure("the program ended before its main window appeared");
    for (const HWND dialog : dialogs)
        if (FindControl(dialog, IDC_FILE_LIST)) return dialog;
    throw Failure(L"instead of the main window there is: " + AllText(dialogs.front()));
}

}  // namespace

MainWindow::MainWindow(const Program& program) : m_program(program), m_window(WaitForMainWindow(program)) {}

HWND MainWindow::Control(int controlId) const {
    return driver::Control(m_window, controlId);
}

bool MainWindow::IsRunning() const {
    return Text(Control(IDCANCEL)) == kStopText;
}

HWND MainWindow::OpenDialog() const {
    for (const HWND dialog : Dialogs(m_program))
        if (dialog != m_window) return dialog;
    return nullptr;
}

void MainWindow::DropPdfs(const std::vector<std::wstring>& paths) const {
    const HWND list = Control(IDC_FILE_LIST);
    const int expected = RowCount(list) + static_cast<int>(paths.size());
    DropFiles(list, paths);
    WaitFor("the list holds " + std::to_string(expected) + " rows",
            kEffectLimit + paths.size() * kLimitPerDroppedFile, [&] { return RowCount(list) == expected; });
}

void MainWindow::OpenAndCancelAddDialog() const {
    Click(Control(IDC_ADD));
    const HWND dialog = WaitForDialog(m_program, m_window, kEffectLimit);
    const HWND cancel = driver::Control(dialog, IDCANCEL);
    // Shown is not yet ready: the system's dialog fills itself before it takes a click.
    WaitFor("the open dialog has a button to cancel it", kEffectLimit,
            [&] { return IsVisible(cancel) && IsEnabled(cancel); });
    Click(cancel);
    WaitFor("the open dialog is gone and the window enabled again", kEffectLimit,
            [&] { return !::IsWindow(dialog) && IsEnabled(m_window); });
    // The button follows the list when the dialog is gone, in the same handler: ask once it has answered.
    Ask(m_window, WM_NULL);
}

void MainWindow::Check(int checkBoxId) const {
    const HWND checkBox = Control(checkBoxId);
    if (IsChecked(checkBox)) return;
    Click(checkBox);
    WaitFor("check box " + std::to_string(checkBoxId) + " is checked", kEffectLimit,
            [&] { return IsChecked(checkBox); });
}

void MainWindow::Type(int editId, const std::wstring& text) const {
    const HWND edit = Control(editId);
    WaitFor("edit " + std::to_string(editId) + " is enabled", kEffectLimit, [&] { return IsEnabled(edit); });
    Ask(edit, EM_SETSEL, 0, -1);
    TypeText(edit, text);
    WaitFor("edit " + std::to_string(editId) + " holds what was typed", kEffectLimit,
            [&] { return Text(edit) == text; });
}

void MainWindow::StartBatch() const {
    const HWND list = Control(IDC_FILE_LIST);
    const auto durationsBefore = ColumnTexts(list, 1);
    Click(Control(IDOK));
    // A batch may be over before we look; then its durations show it.
    WaitFor("the batch begins", kEffectLimit, [&] {
        return m_program.HasEnded() || IsRunning() || OpenDialog() || ColumnTexts(list, 1) != durationsBefore;
    });
}

HWND MainWindow::WaitForCompletion(Milliseconds limit) const {
    HWND message = nullptr;
    const auto ended = [&] {
        // The window's state is read first: the message opens while the window still shows a running batch,
        // so an idle window without one means that there was none.
        const bool running = !m_program.HasEnded() && IsRunning();
        message = OpenDialog();
        return message != nullptr || !running;
    };
    WaitFor("the batch ends", limit, ended);
    if (!message) throw Failure("the batch ended without its message");
    if (AllText(message).find(kCompletionText) == std::wstring::npos)
        throw Failure(L"another message than the end of the batch: " + AllText(message));
    return message;
}

void MainWindow::CloseCompletion(HWND messageBox) const {
    PressDialogButton(messageBox, IDOK);
    WaitFor("the message is gone and the window idle", kEffectLimit,
            [&] { return !::IsWindow(messageBox) && !IsRunning() && IsEnabled(Control(IDOK)); });
}

DWORD MainWindow::Quit() const {
    Click(Control(IDCANCEL));
    const auto code = m_program.WaitForExit(kEffectLimit);
    if (!code) throw Failure("the program still runs after Quitter");
    return *code;
}

}  // namespace driver
