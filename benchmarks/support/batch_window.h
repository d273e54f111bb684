// Talvenor.exe in a process of its own with a list of files, ready to convert them.
#pragma once

#include "tests/equipment/main_window.h"
#include "tests/equipment/program.h"

#include <string>
#include <vector>

enum class Consoles { Hidden, Visible };

class BatchWindow {
public:
    // Starts the program, adds the paths as a person would, and has the window draw itself.
    BatchWindow(const std::wstring& program, const std::vector<std::wstring>& paths, Consoles consoles);

    [[nodiscard]] HWND Window() const noexcept { return m_window.Window(); }
    [[nodiscard]] HANDLE Process() const noexcept { return m_program.Process(); }
    [[nodiscard]] DWORD ProcessId() const noexcept { return m_program.Id(); }

    // Presses Convertir.
    void Convert() const;
    // Whether the message is there that ends a batch.
    [[nodiscard]] bool IsFinished() const { return m_window.OpenDialog() != nullptr; }
    // Waits for that message, with few questions: each costs the machine time that the batch could have.
    void WaitUntilFinished() const;
    // Closes the message. Throws driver::Failure when it is another one, or when a file has no duration.
    void Dismiss() const;
    // Presses Quitter and waits for the end.
    void Quit() const;

private:
    driver::Program m_program;
    driver::MainWindow m_window;
};
