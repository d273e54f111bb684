#include "ui/disabled_key_filter.h"

#include "ui/disabled_keys.h"

bool DisabledKeyFilter::FilterMessage(MSG& message) {
    const KeyRoute route = RouteKeyOfDisabledControl(message.message, message.wParam);
    if (route == KeyRoute::Usual || !IsInDisabledControl(message.hwnd)) return false;
    if (route == KeyRoute::Nowhere) return true;
    message.hwnd = m_dialog;
    return false;
}

// Whether `window`, or a control that it is a part of, is disabled; false for what is not in the dialog.
bool DisabledKeyFilter::IsInDisabledControl(HWND window) const noexcept {
    bool isDisabled = false;
    for (; window && window != m_dialog; window = ::GetParent(window)) {
        if (!::IsWindowEnabled(window)) isDisabled = true;
    }
    return window && isDisabled;
}
