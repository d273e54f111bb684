// Talvenor's main window as a person sees and uses it. Each operation waits until its effect can be seen and
// throws Failure when that does not come.
#pragma once
#include <windows.h>

#include <string>
#include <vector>

#include "res/resource.h"
#include "tests/equipment/program.h"
#include "tests/equipment/wait_until.h"

namespace driver {

constexpr int kExitCodeOfQuit = 2;

class MainWindow {
public:
    // Waits for the window of a program just started, which must outlive this object.
    explicit MainWindow(const Program& program);

    [[nodiscard]] HWND Window() const noexcept { return m_window; }
    [[nodiscard]] HWND Control(int controlId) const;
    [[nodiscard]] bool IsRunning() const;  // by the text of the quit button, "Arrêter " while a batch runs

    void DropPdfs(const std::vector<std::wstring>& paths) const;  // none of them in the list yet
    void OpenAndCancelAddDialog() const;
    void Check(int checkBoxId) const;
    void Type(int editId, const std::wstring& text) const;  // in place of what the edit holds

    // Presses Convertir and returns when the batch has begun (or is over already).
    void StartBatch() const;
    // The message box that ends a batch. One of any other text, or a batch that ends without one, fails.
    [[nodiscard]] HWND WaitForCompletion(Milliseconds limit) const;
    // Presses OK and waits for the idle window.
    void CloseCompletion(HWND messageBox) const;
    // Presses Quitter and returns the exit code.
    [[nodiscard]] DWORD Quit() const;

    // The dialog or message box in front of the main window at this moment, or null.
    [[nodiscard]] HWND OpenDialog() const;

private:
    const Program& m_program;
    HWND m_window;  // belongs to the program
};

}  // namespace driver
