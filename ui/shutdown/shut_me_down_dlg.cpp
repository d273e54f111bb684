#include "ui/shutdown/shut_me_down_dlg.h"

#include "base/decimal.h"

#include <windows.h>

#include <cstdint>
#include <string>

bool CShutMeDownDlg::ProcessWindowMessage(HWND /*window*/, UINT message, WPARAM wParam, LPARAM /*lParam*/,
                                          LRESULT& result, DWORD /*section*/) {
    const HandledFlagScope callersFlag(*this);
    switch (message) {
    case WM_INITDIALOG:
        return Route([&] {
            OnInitDialog();
            result = TRUE;
        });
    case WM_TIMER: return Route([&] { OnTimer(); });
    case WM_COMMAND: return DispatchCommand(LOWORD(wParam));
    default: return false;
    }
}

bool CShutMeDownDlg::DispatchCommand(WORD id) {
    switch (id) {
    case IDOK: return Route([&] { OnShutDownNow(); });
    case IDCANCEL: return Route([&] { OnCancel(); });
    default: return false;
    }
}

void CShutMeDownDlg::OnInitDialog() {
    Center();
    ::SetTimer(m_hWnd, kCountdownTimerId, 1000, nullptr);
}

void CShutMeDownDlg::OnTimer() {
    --m_secondsLeft;
    if (m_secondsLeft > 0) {
        std::wstring seconds;
        AppendDecimal(seconds, static_cast<std::uint32_t>(m_secondsLeft));
        Item(IDC_SECONDS).SetText(seconds.c_str());
        return;
    }
    // The dialog stays open, showing "1": if the machine does not go down, the user can try again or cancel.
    ::KillTimer(m_hWnd, kCountdownTimerId);
    ShutDownComputer();
}

void CShutMeDownDlg::OnShutDownNow() {
    ShutDownComputer();
    ::KillTimer(m_hWnd, kCountdownTimerId);
    ::EndDialog(m_hWnd, IDOK);
}

void CShutMeDownDlg::OnCancel() {
    ::KillTimer(m_hWnd, kCountdownTimerId);
    ::EndDialog(m_hWnd, IDCANCEL);
}
