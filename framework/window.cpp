#include "framework/window.h"

#include <algorithm>

std::wstring CWindow::Text() const {
    const int length = ::GetWindowTextLengthW(m_hWnd);
    std::wstring text(static_cast<std::size_t>(length) + 1, L'\0');
    const int copied = ::GetWindowTextW(m_hWnd, text.data(), static_cast<int>(text.size()));
    text.resize(static_cast<std::size_t>(copied));
    return text;
}

int CWindow::ClientWidth() const noexcept {
    RECT client = {};
    ::GetClientRect(m_hWnd, &client);
    return client.right;
}

void CWindow::Center() const noexcept {
    RECT window = {};
    if (!::GetWindowRect(m_hWnd, &window)) return;
    HWND owner = ::GetWindow(m_hWnd, GW_OWNER);
    if (owner && (!::IsWindowVisible(owner) || ::IsIconic(owner))) owner = nullptr;

    MONITORINFO monitor = {};
    monitor.cbSize = sizeof monitor;
    const HMONITOR nearest = ::MonitorFromWindow(owner ? owner : Handle(), MONITOR_DEFAULTTONEAREST);
    if (!::GetMonitorInfoW(nearest, &monitor)) return;
    RECT center = monitor.rcWork;
    if (owner) ::GetWindowRect(owner, &center);

    const int width = window.right - window.left;
    const int height = window.bottom - window.top;
    const RECT& work = monitor.rcWork;
    int left = (center.left + center.right) / 2 - width / 2;
    int top = (center.top + center.bottom) / 2 - height / 2;
    // The upper left corner is the one that must be seen when the work area is too small for the window.
    left = std::max<int>(work.left, std::min<int>(left, work.right - width));
    top = std::max<int>(work.top, std::min<int>(top, work.bottom - height));
    ::SetWindowPos(m_hWnd, nullptr, left, top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}
