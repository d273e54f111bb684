// Dialogs from templates. A class derives from CDialogImpl, names its template in `kTemplateId` and handles
// its messages in ProcessWindowMessage.
#pragma once

#include "framework/app_module.h"
#include "framework/message_map.h"
#include "framework/window.h"

#include <windows.h>

// A window with a message map. The handled flag says what the running handler wants: every entry of the map
// sets it, and a handler that asks for default processing clears it.
template <class TBase>
class CWindowRoot : public TBase, public CMessageMap {
protected:
    ~CWindowRoot() = default;

    void SetMsgHandled(bool handled) noexcept { m_handled = handled; }

    // Runs the handler of a map's entry. The value is the map's answer.
    template <class Handler>
    bool Route(Handler&& handler) {
        m_handled = true;
        handler();
        return m_handled;
    }

    // Keeps the flag of the caller over a dispatch: handlers send messages that come back to the same map.
    class HandledFlagScope {
    public:
        explicit HandledFlagScope(CWindowRoot& window) noexcept
            : m_window(window), m_saved(window.m_handled) {}
        HandledFlagScope(const HandledFlagScope&) = delete;
        HandledFlagScope& operator=(const HandledFlagScope&) = delete;
        ~HandledFlagScope() { m_window.m_handled = m_saved; }

    private:
        CWindowRoot& m_window;
        const bool m_saved;
    };

private:
    bool m_handled = false;
};

template <class TBase>
class CDialogImplBase : public CWindowRoot<TBase> {
public:
    // A window that is still there, as when another program's quit message ended the loop, loses its object.
    virtual ~CDialogImplBase() {
        if (const HWND window = this->Handle()) ::SetWindowLongPtrW(window, DWLP_USER, 0);
    }

    // The procedure that the dialog is created with.
    [[nodiscard]] virtual DLGPROC GetDialogProc() const noexcept { return &DialogProc; }

    // Called after `window` has had its last message, when it is no longer this dialog's.
    virtual void OnFinalMessage(HWND /*window*/) {}

    // Routes the messages of a dialog to the object whose address the window carries.
    static INT_PTR CALLBACK DialogProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
};

template <class T, class TBase = CWindow>
class CDialogImpl : public CDialogImplBase<TBase> {
public:
    // Creates the dialog without waiting for it. Null when that fails or the dialog closed itself meanwhile.
    HWND Create(HWND parent) {
        const HWND window =
            ::CreateDialogParamW(CAppModule::Instance().ResourceInstance(), MAKEINTRESOURCEW(T::kTemplateId),
                                 parent, this->GetDialogProc(), AsParameter());
        // Wine 8 returns the handle of a dialog that is already destroyed.
        return window == this->Handle() ? window : nullptr;
    }

    // Runs the dialog until EndDialog and returns its result; -1 when it could not be created.
    INT_PTR DoModal(HWND parent) {
        return ::DialogBoxParamW(CAppModule::Instance().ResourceInstance(), MAKEINTRESOURCEW(T::kTemplateId),
                                 parent, this->GetDialogProc(), AsParameter());
    }

private:
    [[nodiscard]] LPARAM AsParameter() noexcept {
        return reinterpret_cast<LPARAM>(static_cast<CDialogImplBase<TBase>*>(this));
    }
};

template <class TBase>
INT_PTR CALLBACK CDialogImplBase<TBase>::DialogProc(HWND window, UINT message, WPARAM wParam,
                                                    LPARAM lParam) noexcept {
    auto* dialog = reinterpret_cast<CDialogImplBase*>(::GetWindowLongPtrW(window, DWLP_USER));
    if (!dialog && message == WM_INITDIALOG) {  // the system's own: others may send one with any parameter
        ::SetWindowLongPtrW(window, DWLP_USER, lParam);
        if (::GetWindowLongPtrW(window, DWLP_USER) != lParam) {
            ::EndDialog(window, -1);  // a modal one has disabled its owner: Wine 8 leaves that so otherwise
            ::DestroyWindow(window);  // nobody would answer its buttons
            return FALSE;
        }
        dialog = reinterpret_cast<CDialogImplBase*>(lParam);
        dialog->m_hWnd = window;
    }
    if (!dialog) return FALSE;

    LRESULT result = 0;
    const bool handled = dialog->ProcessWindowMessage(window, message, wParam, lParam, result, 0);
    if (message == WM_NCDESTROY) {
        ::SetWindowLongPtrW(window, DWLP_USER, 0);
        dialog->m_hWnd = nullptr;
        dialog->OnFinalMessage(window);  // may end the object's life
        return FALSE;
    }
    if (!handled) return FALSE;
    switch (message) {
    // Their result is returned directly.
    case WM_INITDIALOG:
    case WM_COMPAREITEM:
    case WM_VKEYTOITEM:
    case WM_CHARTOITEM:
    case WM_QUERYDRAGICON:
    case WM_CTLCOLORMSGBOX:
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORLISTBOX:
    case WM_CTLCOLORBTN:
    case WM_CTLCOLORDLG:
    case WM_CTLCOLORSCROLLBAR:
    case WM_CTLCOLORSTATIC: return result;
    default: ::SetWindowLongPtrW(window, DWLP_MSGRESULT, result); return TRUE;
    }
}
