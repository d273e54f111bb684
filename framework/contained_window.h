// A control of a dialog whose messages pass through the dialog's message map first.
#pragma once

#include "framework/message_map.h"
#include "framework/window.h"

#include <windows.h>

// The control may be destroyed before or after its CContainedWindow.
class CContainedWindow : public CWindow {
public:
    // Messages go to section `section` of `owner`, which must live as long as the subclass does.
    CContainedWindow(CMessageMap& owner, DWORD section) noexcept : m_owner(owner), m_section(section) {}
    CContainedWindow(const CContainedWindow&) = delete;  // the control holds the address
    CContainedWindow& operator=(const CContainedWindow&) = delete;
    ~CContainedWindow() { Unsubclass(); }

    // Takes `control` and replaces its window procedure. When that fails the control stays usable, but its
    // messages do not come to the owner; false then. Has no effect while one is subclassed.
    bool SubclassWindow(HWND control) noexcept;

    // Creates a window that nobody sees and that only gets messages which are meant for it, on the calling
    // thread, and takes it. Has no effect while there is one, or when it cannot be created.
    void CreateMessageOnly() noexcept;
    // Called on the same thread.
    void Destroy() noexcept;

private:
    static LRESULT CALLBACK WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;

    void Unsubclass() noexcept;

    CMessageMap& m_owner;
    const DWORD m_section;
    WNDPROC m_replaced = nullptr;  // null while nothing is subclassed
};
