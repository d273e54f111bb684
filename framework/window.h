// A window handle with the operations that the dialogs need. Borrowed: copying or destroying a CWindow does
// nothing to the window.
#pragma once

#include <windows.h>

#include <atomic>
#include <string>

class CWindow {
public:
    CWindow() noexcept = default;
    explicit CWindow(HWND window) noexcept : m_hWnd(window) {}
    CWindow(const CWindow& other) noexcept : m_hWnd(other.Handle()) {}
    CWindow& operator=(const CWindow&) = delete;

    [[nodiscard]] HWND Handle() const noexcept { return m_hWnd; }

    // Controls of a dialog by id. A missing control is a window that is not there: nothing happens, nothing
    // is checked, its text is empty.
    [[nodiscard]] CWindow Item(int id) const noexcept { return CWindow(::GetDlgItem(m_hWnd, id)); }
    [[nodiscard]] bool IsChecked(int id) const noexcept { return ::IsDlgButtonChecked(m_hWnd, id) != 0; }
    void SetChecked(int id, bool checked) const noexcept {
        ::CheckDlgButton(m_hWnd, id, checked ? BST_CHECKED : BST_UNCHECKED);
    }

    void Enable(bool enabled) const noexcept { ::EnableWindow(m_hWnd, enabled); }
    void Show(int command) const noexcept { ::ShowWindow(m_hWnd, command); }
    void Focus() const noexcept { ::SetFocus(m_hWnd); }

    // The whole text, whatever its length.
    [[nodiscard]] std::wstring Text() const;
    void SetText(const wchar_t* text) const noexcept { ::SetWindowTextW(m_hWnd, text); }

    LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const noexcept {
        return ::SendMessageW(m_hWnd, message, wParam, lParam);
    }

    // Width of the client area in pixels.
    [[nodiscard]] int ClientWidth() const noexcept;

    // Puts a top-level window in the middle of its owner, or of the monitor's work area when it has none or
    // the owner is not to be seen; never over the work area's edge.
    void Center() const noexcept;

protected:
    // Borrowed. Written by the thread that owns the window; a worker that outlives the window reads it too,
    // and finds either the handle or nothing. Nothing else is published through it.
    std::atomic<HWND> m_hWnd{nullptr};
};
