#include "ui/about/about_dlg.h"

#include "ui/about/program_version.h"
#include "ui/about/version_text.h"

#include <windows.h>

bool CAboutDlg::ProcessWindowMessage(HWND /*window*/, UINT message, WPARAM wParam, LPARAM /*lParam*/,
                                     LRESULT& result, DWORD /*section*/) {
    const HandledFlagScope callersFlag(*this);
    switch (message) {
    case WM_INITDIALOG:
        return Route([&] {
            OnInitDialog();
            result = TRUE;
        });
    case WM_COMMAND: return DispatchCommand(LOWORD(wParam));
    default: return false;
    }
}

bool CAboutDlg::DispatchCommand(WORD id) {
    if (id != IDOK && id != IDCANCEL) return false;
    return Route([&] { ::EndDialog(m_hWnd, id); });
}

void CAboutDlg::OnInitDialog() {
    Center();
    Item(IDC_VERSION).SetText(FormatVersion(ReadProgramVersion()).c_str());
}
