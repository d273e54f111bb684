// What a person does with the program's windows: presses, checks, types, drops, waits. Works from another
// thread than the program's, as a person does, and throws driver::Failure at a deadline instead of waiting
// for ever.
#pragma once

#include "tests/equipment/window_driver.h"
#include "tests/faults/harness/program_host.h"

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

class User {
public:
    explicit User(ProgramHost& program) : m_program(program) {}

    // Waits until the window is there and serves messages, or the program has ended.
    void WaitForWindow() const;
    [[nodiscard]] HWND Window() const { return m_program.MainWindow(); }
    [[nodiscard]] HWND Control(int id) const { return driver::FindControl(Window(), id); }
    [[nodiscard]] bool IsEnabled(int id) const { return ::IsWindowEnabled(Control(id)) != FALSE; }
    // Sends one message. 0 when the window is gone.
    static LRESULT Send(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0);
    LRESULT SendToList(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;

    // The text of a control; empty when there is none.
    [[nodiscard]] static std::string TextOf(HWND control);

    // Presses a button or a check box, which does nothing while it is disabled. Returns when all that it
    // sets off on the program's own thread is done.
    void Press(int id) const;
    void SetText(int id, const wchar_t* text) const;
    void Drop(const std::vector<std::wstring>& paths) const;
    void SelectRow(int row) const;
    void PressListKey(WORD key) const;

    // Presses a button that opens a dialog. Returns the dialog, or null when none comes.
    [[nodiscard]] HWND PressForDialog(int id, int controlOfDialog) const;
    // Waits for the dialog with this control as long as a worker could still open it. Null when none comes.
    [[nodiscard]] HWND WaitForWorkersDialog(int controlOfDialog) const;
    // Presses a button of a dialog until it is gone: a person does not give up at the first try. Returns when
    // the press that opened it is over, too.
    void CloseDialog(HWND dialog, int buttonId) const;

    // Waits until `number` converters have been started, or no worker is left that could start one.
    void WaitForConverter(int number) const;
    // Waits until no worker is left and the window has served what they left for it.
    void WaitForWorkers() const;

    // Waits until the window has served everything that was posted to it or to others of its thread before.
    // Not while a dialog or a message box of the system is open there.
    void WaitForPosted() const;
    // Presses a key in a control, in the way of the keyboard: by the message loop, whatever the control's
    // state.
    void PressKeyIn(int id, WORD key) const;

    // Does `press` until the program ends, a few times at most. Whether it has ended then.
    bool PressUntilEnded(const std::function<void()>& press) const;
    // Presses "Quitter" until the program ends. Answers the question about a batch by Yes.
    void Quit() const;

    [[nodiscard]] ProgramHost& Program() const { return m_program; }

private:
    // What says whether all that was posted before has been served.
    [[nodiscard]] std::function<bool()> PostMarker() const;

    ProgramHost& m_program;
};

// The program with all that one life of it needs.
struct Stage {
    ProgramHost program;
    Platform& platform = program.platform;
    CallWatch& watch = program.watch;
    User user{program};
};

// The first window of this process on the desktop that fits; null when none does.
[[nodiscard]] HWND FindOwnWindow(const std::function<bool(HWND window)>& fits);
