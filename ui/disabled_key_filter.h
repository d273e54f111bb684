// Keeps keys from the disabled controls of a dialog.
//
// The system sends keys to the window with the focus, whether it is enabled or not: disabling a
// window takes the focus from it only when its own thread disables it. A batch's worker disables controls
// from another thread, one of which may have the focus and keeps it. The focus stays there on purpose: an
// edit that loses it changes its own text or its box.
#pragma once

#include "framework/message_loop.h"

#include <windows.h>

// Has to be asked before the dialog's own filter, that is, to be added after it.
class DisabledKeyFilter final : public CMessageFilter {
public:
    // `dialog` is borrowed.
    void SetDialog(HWND dialog) noexcept { m_dialog = dialog; }

    // Consumes a key that is meant for a disabled control, and hands those with Alt to the dialog.
    bool FilterMessage(MSG& message) override;

private:
    [[nodiscard]] bool IsInDisabledControl(HWND window) const noexcept;

    HWND m_dialog = nullptr;
};
