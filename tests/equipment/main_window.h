// Talvenor's main window as a person sees and uses it. Each operation waits until its effect can be seen and
// throws Failure when that does not come.
#pragma once
#include <windows.h>

#include <string>
#include <vector>

#include "res/resource.h"
#include "tests/equipment/failure.h"
#include "tests/equipment/list_reader.h"
#include "tests/equipment/program.h"
#include "tests/equipment/wait_until.h"
#include "tests/equipment/window_driver.h"

namespace driver {

constexpr int kExitCodeOfQuit = 2;

class MainWindow {
public:
    // Waits for the window of a program just started, which must outlive this object.
    explicit MainWindow(const Program& program) : m_program(program), m_window(Find(program)) {}

    [[nodiscard]] HWND Window() const noexcept { return m_window; }
    [[nodiscard]] HWND Control(int controlId) const { return driver::Control(m_window, controlId); }
    // By the text of the quit button while a batch runs.
    [[nodiscard]] bool IsRunning() const { return Text(Control(IDCANCEL)) == L"Arrêter "; }

    // None of them in the list yet.
    void DropPdfs(const std::vector<std::wstring>& paths) const {
        constexpr Milliseconds kLimitPerFile{10};
        const HWND list = Control(IDC_FILE_LIST);
        const int expected = RowCount(list) + static_cast<int>(paths.size());
        DropFiles(list, paths);
        Await(
            "the list holds " + std::to_string(expected) + " rows",
            [&] { return RowCount(list) == expected; }, kSoon + paths.size() * kLimitPerFile);
    }
    void OpenAndCancelAddDialog() const {
        Click(Control(IDC_ADD));
        const HWND dialog = WaitForDialog();
        const HWND cancel = driver::Control(dialog, IDCANCEL);
        // Shown is not yet ready: the system's dialog fills itself before it takes a click.
        Await("the open dialog has a button to cancel it",
              [&] { return IsVisible(cancel) && IsEnabled(cancel); });
        Click(cancel);
        Await("the open dialog is gone and the window enabled again",
              [&] { return !::IsWindow(dialog) && IsEnabled(m_window); });
        // The button follows the list when the dialog is gone, in the same handler: ask once it has answered.
        Ask(m_window, WM_NULL);
    }
    void Check(int checkBoxId) const {
        const HWND checkBox = Control(checkBoxId);
        if (IsChecked(checkBox)) return;
        Click(checkBox);
        Await("check box " + std::to_string(checkBoxId) + " is checked", [&] { return IsChecked(checkBox); });
    }
    // In place of what the edit holds.
    void Type(int editId, const std::wstring& text) const {
        const HWND edit = Control(editId);
        Await("edit " + std::to_string(editId) + " is enabled", [&] { return IsEnabled(edit); });
        Ask(edit, EM_SETSEL, 0, -1);
        TypeText(edit, text);
        Await("edit " + std::to_string(editId) + " holds what was typed", [&] { return Text(edit) == text; });
    }

    // Presses Convertir and returns when the batch has begun (or is over already).
    void StartBatch() const {
        const HWND list = Control(IDC_FILE_LIST);
        const auto durationsBefore = ColumnTexts(list, 1);
        Click(Control(IDOK));
        // A batch may be over before we look; then its durations show it.
        Await("the batch begins", [&] {
            return m_program.HasEnded() || IsRunning() || OpenDialog() ||
                   ColumnTexts(list, 1) != durationsBefore;
        });
    }
    // The message box that ends a batch. One of any other text, or a batch that ends without one, fails.
    [[nodiscard]] HWND WaitForCompletion(Milliseconds limit) const {
        HWND message = nullptr;
        const auto ended = [&] {
            // The window's state is read first: the message opens while the window still shows a running
            // batch, so an idle window without one means that there was none.
            const bool running = !m_program.HasEnded() && IsRunning();
            message = OpenDialog();
            return message != nullptr || !running;
        };
        Await("the batch ends", ended, limit);
        if (!message) throw Failure("the batch ended without its message");
        const std::wstring text = AllText(message);
        s_hasLostAProcess |= text.find(L"Erreur CreateProcess :  Internal error") != std::wstring::npos;
        if (text.find(L"Conversion terminée !") == std::wstring::npos)
            throw Failure(L"another message than the end of the batch: " + text);
        return message;
    }
    // Presses OK and waits for the idle window.
    void CloseCompletion(HWND messageBox) const {
        AnswerDialog(messageBox, IDOK);
        Await("the window is idle", [&] { return !IsRunning() && IsEnabled(Control(IDOK)); });
    }
    // Presses Quitter and returns the exit code.
    [[nodiscard]] DWORD Quit() const {
        Click(Control(IDCANCEL));
        const auto code = m_program.WaitForExit();
        if (!code) throw Failure("the program still runs after Quitter");
        return *code;
    }

    // Whether a batch has ended because the system had an internal error when the program started a process:
    // Wine has been seen to, in other programs as well.
    static inline bool s_hasLostAProcess = false;

    // The dialog or message box in front of the main window at this moment, or null.
    [[nodiscard]] HWND OpenDialog() const {
        for (const HWND dialog : Dialogs(m_program))
            if (dialog != m_window) return dialog;
        return nullptr;
    }
    [[nodiscard]] HWND WaitForDialog(Milliseconds limit = kSoon) const {
        HWND dialog = nullptr;
        Await(
            "a dialog or message box appears",
            [&] { return (dialog = OpenDialog()) != nullptr || m_program.HasEnded(); }, limit);
        if (!dialog) throw Failure("the program ended instead of opening a dialog or message box");
        return dialog;
    }

private:
    // The main window is a dialog like the message boxes, and may bear the same title: what sets it apart is
    // a control that only it has. A box that comes instead of it is reported at once.
    static HWND Find(const Program& program) {
        // The first window in a fresh Wine session waits for the desktop's own start.
        constexpr Milliseconds kStartLimit{60'000};
        std::vector<HWND> dialogs;
        const auto appeared = [&] {
            dialogs = Dialogs(program);
            return !dialogs.empty() || program.HasEnded();
        };
        Await("the main window appears", appeared, kStartLimit);
        if (dialogs.empty()) throw Failure("the program ended before its main window appeared");
        for (const HWND dialog : dialogs)
            if (FindControl(dialog, IDC_FILE_LIST)) return dialog;
        throw Failure(L"instead of the main window there is: " + AllText(dialogs.front()));
    }

    const Program& m_program;
    HWND m_window;  // belongs to the program
};

}  // namespace driver
