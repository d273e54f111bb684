#include "tests/app/plain_window.h"

#include <string>

#include "tests/equipment/failure.h"

namespace {

constexpr wchar_t kClassName[] = L"TalvenorTestPlainWindow";
constexpr int kNumberId = 1;

// The class is the process's, and registered once.
void RegisterPlainClass(WNDPROC procedure) {
    static const ATOM s_registered = [procedure] {
        WNDCLASSW plain = {};
        plain.lpfnWndProc = procedure;
        plain.hInstance = ::GetModuleHandleW(nullptr);
        plain.hbrBackground = ::GetSysColorBrush(COLOR_BTNFACE);
        plain.lpszClassName = kClassName;
        return ::RegisterClassW(&plain);
    }();
    if (!s_registered) throw driver::Failure("the class of the plain window cannot be registered");
}

HWND CreatePlainWindow() {
    const HINSTANCE module = ::GetModuleHandleW(nullptr);
    const HWND window = ::CreateWindowExW(0, kClassName, L"", WS_OVERLAPPED | WS_CAPTION, 0, 0, 200, 100,
                                          nullptr, nullptr, module, nullptr);
    const HWND number = ::CreateWindowExW(0, L"Static", L"", WS_CHILD | WS_VISIBLE, 0, 0, 180, 40, window,
                                          reinterpret_cast<HMENU>(kNumberId), module, nullptr);
    if (number) ::ShowWindow(window, SW_SHOWNOACTIVATE);
    return number ? window : nullptr;
}

}  // namespace

PlainWindow::PlainWindow() : m_created(::CreateEventW(nullptr, TRUE, FALSE, nullptr)) {
    if (!m_created) driver::FailCall("CreateEventW", ::GetLastError());
    RegisterPlainClass(&WindowProc);
    m_thread = driver::UniqueHandle(::CreateThread(nullptr, 0, &Run, this, 0, nullptr));
    if (!m_thread) driver::FailCall("CreateThread", ::GetLastError());
    ::WaitForSingleObject(m_created.Get(), INFINITE);
    if (!m_window) {
        ::WaitForSingleObject(m_thread.Get(), INFINITE);  // it still uses this object
        throw driver::Failure("the plain window cannot be created");
    }
}

PlainWindow::~PlainWindow() {
    ::PostMessageW(m_window, WM_CLOSE, 0, 0);
    ::WaitForSingleObject(m_thread.Get(), INFINITE);
}

DWORD WINAPI PlainWindow::Run(void* parameter) {
    auto& self = *static_cast<PlainWindow*>(parameter);
    self.m_window = CreatePlainWindow();
    const bool exists = self.m_window != nullptr;
    ::SetEvent(self.m_created.Get());
    MSG message;
    while (exists && ::GetMessageW(&message, nullptr, 0, 0) > 0) ::DispatchMessageW(&message);
    return 0;
}

LRESULT CALLBACK PlainWindow::WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == kShowNextNumber) {
        const UINT next = ::GetDlgItemInt(window, kNumberId, nullptr, FALSE) + 1;
        ::SetDlgItemInt(window, kNumberId, next, FALSE);
        ::UpdateWindow(::GetDlgItem(window, kNumberId));
        return 0;
    }
    if (message == WM_DESTROY) ::PostQuitMessage(0);
    return ::DefWindowProcW(window, message, wParam, lParam);
}
