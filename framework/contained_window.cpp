#include "framework/contained_window.h"

#include "framework/app_module.h"

bool CContainedWindow::SubclassWindow(HWND control) noexcept {
    if (m_replaced) return true;  // its own procedure would be what it calls on
    m_hWnd = control;
    const auto self = reinterpret_cast<LONG_PTR>(this);
    ::SetWindowLongPtrW(control, GWLP_USERDATA, self);
    if (::GetWindowLongPtrW(control, GWLP_USERDATA) != self) return false;
    m_replaced = reinterpret_cast<WNDPROC>(
        ::SetWindowLongPtrW(control, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&WindowProc)));
    return m_replaced != nullptr;
}

void CContainedWindow::CreateMessageOnly() noexcept {
    if (Handle()) return;
    const HWND window = ::CreateWindowExW(0, L"Static", nullptr, 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                          CAppModule::Instance().ResourceInstance(), nullptr);
    if (window) SubclassWindow(window);
}

void CContainedWindow::Destroy() noexcept {
    const HWND window = Handle();
    if (!window) return;
    // Before the window goes, if it goes: no thread begins to wait for it from here on.
    Unsubclass();
    m_hWnd = nullptr;
    ::DestroyWindow(window);
}

void CContainedWindow::Unsubclass() noexcept {
    if (!m_replaced) return;
    ::SetWindowLongPtrW(m_hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(m_replaced));
    ::SetWindowLongPtrW(m_hWnd, GWLP_USERDATA, 0);
    m_replaced = nullptr;
    m_hWnd = nullptr;
}

LRESULT CALLBACK CContainedWindow::WindowProc(HWND window, UINT message, WPARAM wParam,
                                              LPARAM lParam) noexcept {
    auto* const contained = reinterpret_cast<CContainedWindow*>(::GetWindowLongPtrW(window, GWLP_USERDATA));
    if (!contained) return ::DefWindowProcW(window, message, wParam, lParam);
    const WNDPROC replaced = contained->m_replaced;
    if (message == WM_NCDESTROY) {
        contained->Unsubclass();
        return ::CallWindowProcW(replaced, window, message, wParam, lParam);
    }
    LRESULT result = 0;
    if (contained->m_owner.ProcessWindowMessage(window, message, wParam, lParam, result,
                                                contained->m_section)) {
        return result;
    }
    return ::CallWindowProcW(replaced, window, message, wParam, lParam);
}
