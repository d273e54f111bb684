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

}  // namespace

MainWindow::MainWindow(const Program& program)
    : m_program(program), m_window(WaitForMainWindow(program, id::kFileList, kStartLimit)) {}

HWND MainWindow::Control(int controlId) const {
    return driver::Control(m_window, controlId);
}

bool MainWindow::IsRunning() const {
    return Text(Control(id::kQuit)) == kStopText;
}

HWND MainWindow::OpenBox() const {
    for (const HWND dialog : Dialogs(m_program))
        if (dialog != m_window) return dialog;
    return nullptr;
}

void MainWindow::DropPdfs(const std::vector<std::wstring>& paths) const {
    const HWND list = Control(id::kFileList);
    const int expected = RowCount(list) + static_cast<int>(paths.size());
    DropFiles(list, paths);
    WaitFor("the list holds " + std::to_string(expected) + " rows",
            kEffectLimit + paths.size() * kLimitPerDroppedFile, [&] { return RowCount(list) == expected; });
}

void MainWindow::OpenAndCancelAddDialog() const {
    Click(Control(id::kAdd));
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

void MainWindow::Tick(int boxId) const {
    const HWND box = Control(boxId);
    if (IsChecked(box)) return;
    Click(box);
    WaitFor("box " + std::to_string(boxId) + " is checked", kEffectLimit, [&] { return IsChecked(box); });
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
    const HWND list = Control(id::kFileList);
    const auto durationsBefore = ColumnTexts(list, 1);
    Click(Control(id::kConvert));
    // A batch may be over before we look; then its durations tell of it.
    WaitFor("the batch begins", kEffectLimit, [&] {
        return m_program.HasEnded() || IsRunning() || OpenBox() || ColumnTexts(list, 1) != durationsBefore;
    });
}

HWND MainWindow::WaitForCompletion(Milliseconds limit) const {
    HWND box = nullptr;
    const auto ended = [&] {
        // The window's state is read before the box is looked for: the box opens while the window still shows
        // a running batch, so an idle window without one means that there was none.
        const bool running = !m_program.HasEnded() && IsRunning();
        box = OpenBox();
        return box != nullptr || !running;
    };
    WaitFor("the batch ends", limit, ended);
    if (!box) throw Failure("the batch ended without its message");
    if (AllText(box).find(kCompletionText) == std::wstring::npos)
        throw Failure(L"another message than the end of the batch: " + AllText(box));
    return box;
}

void MainWindow::CloseCompletion(HWND box) const {
    PressDialogButton(box, IDOK);
    WaitFor("the message is gone and the window idle", kEffectLimit,
            [&] { return !::IsWindow(box) && !IsRunning() && IsEnabled(Control(id::kConvert)); });
}

DWORD MainWindow::Quit() const {
    Click(Control(id::kQuit));
    const auto code = m_program.WaitForExit(kEffectLimit);
    if (!code) throw Failure("the program still runs after Quitter");
    return *code;
}

}  // namespace driver
