// Writes down what the dialog does to its windows, in the order in which it does it. While a ControlCalls
// lives, the calls of EnableWindow, ShowWindow, SetFocus, CheckDlgButton, SetWindowTextW, SetWindowPos,
// UpdateWindow and DestroyWindow go to its record and on to the system, and so do the SendMessageW calls of
// the messages below:
//
//   EnableWindow 1003 0             ShowWindow 1024 5          SetFocus 1027         CheckDlgButton 1034 1
//   SetWindowTextW 2 "Quitter"      UpdateWindow 1040          DestroyWindow main    SetWindowPos main
//   LVM_SETITEMSTATE 1040 row=-1 state=0 mask=2
//   LVM_SETITEMW 1040 row=1 column=1 mask=1 "00:00:07"
//   LVM_INSERTITEMW 1040 row=0 column=0 mask=1 "C:\a.pdf"       (and " wParam=1" where it has to be 0)
//   LVM_GETITEMTEXTW 1040 row=0 column=0 size=256
//   LVM_SETCOLUMNWIDTH 1040 1 -2    (other messages: control, wParam and lParam as numbers)
//   WM_COMMAND main 2 0             (only what comes from no control)
//
// Calls of the test itself are written down as well: have one only while the dialog acts.
#pragma once

#include "tests/support/call_record.h"
#include "tests/support/call_text.h"
#include "tests/support/replaced_imports.h"

#include <windows.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

// How records have a message to a control, as above; empty for one that they leave out.
[[nodiscard]] std::string ControlMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

class ControlCalls {
public:
    // Answers a message in the control's place; nothing lets it through.
    using Answer =
        std::function<std::optional<LRESULT>(HWND window, UINT message, WPARAM wParam, LPARAM lParam)>;

    explicit ControlCalls(CallRecord& record, Answer answer = nullptr);
    ControlCalls(const ControlCalls&) = delete;
    ControlCalls& operator=(const ControlCalls&) = delete;

private:
    std::vector<Replaced> m_replaced;
};
