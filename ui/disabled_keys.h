// Which keys still do something while the control with the focus is disabled. Rules only.
#pragma once

enum class KeyRoute {
    Usual,     // no key, or one that the dialog itself takes before the control
    ToDialog,  // one of the keys with Alt, which belong to the window
    Nowhere,
};

// The way of a keyboard message, with its wParam, that was meant for a disabled control. Other messages go
// the usual way.
[[nodiscard]] KeyRoute RouteKeyOfDisabledControl(unsigned message, unsigned long long wParam) noexcept;
