// The main window's message map, what it does in the message loop, and the handlers of the page edit.
// User-interface thread.

#include "ui/main_dlg.h"

#include "ui/about/about_dlg.h"
#include "ui/page_edit_filter.h"

#include <windows.h>
#include <commctrl.h>
#include <shellapi.h>
#include <windowsx.h>

bool CMainDlg::DispatchDialogMessage(HWND /*window*/, UINT message, WPARAM wParam, LPARAM lParam,
                                     LRESULT& result, DWORD section) {
    const HandledFlagScope callersFlag(*this);
    result = 0;
    switch (section) {
    case kSectionDialog: return DispatchToDialog(message, wParam, lParam, result);
    case kSectionPageEdit: return DispatchToPageEdit(message, wParam);
    case kSectionFileList: return DispatchToFileList(message, wParam, result);
    default: return false;
    }
}

bool CMainDlg::DispatchToDialog(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) {
    switch (message) {
    case WM_INITDIALOG: return Route([&] { result = OnInitDialog(); });
    case WM_DESTROY: return Route([&] { OnDestroy(); });
    case WM_TIMER: return Route([&] { OnTimer(); });
    case WM_LBUTTONDOWN:
        return Route([&] { OnLButtonDown(wParam, {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)}); });
    case WM_COMMAND: return DispatchCommand(LOWORD(wParam), HIWORD(wParam));
    case WM_NOTIFY: return DispatchNotification(*reinterpret_cast<const NMHDR*>(lParam));
    // WM_CLOSE is not here: the default procedure makes it IDCANCEL.
    default: return false;
    }
}

bool CMainDlg::DispatchCommand(WORD id, WORD code) {
    // Entries that look at `code` take that notification only; the others take any.
    switch (id) {
    case IDC_ABOUT: return Route([&] { OnAbout(); });
    case IDOK: return Route([&] { StartConversion(); });
    case IDCANCEL: return Route([&] { OnQuit(); });
    case IDC_PAGES_CHECK: return Route([&] { OnPagesCheck(); });
    case IDC_RESOLUTION: return code == EN_KILLFOCUS && Route([&] { OnResolutionKillFocus(); });
    case IDC_RESOLUTION_CHECK: return Route([&] { OnResolutionCheck(code); });
    case IDC_ADD: return code == BN_CLICKED && Route([&] { OnAddPdfs(); });
    case IDC_CLEAR: return code == BN_CLICKED && Route([&] { OnClearList(); });
    case IDC_OPEN_DESTINATION: return code == BN_CLICKED && Route([&] { OnOpenDestination(); });
    case IDC_OPEN_LOG: return code == BN_CLICKED && Route([&] { OnOpenLog(); });
    case IDC_OUTPUT_FOLDER_CHECK: return Route([&] { OnOutputFolderCheck(code); });
    case IDC_NO_TEXT: return Route([&] { OnNoTextCheck(); });
    case IDC_OUTPUT_FOLDER:
        if (code == EN_CHANGE) return Route([&] { OnOutputFolderChange(); });
        return code == EN_KILLFOCUS && Route([&] { OnOutputFolderKillFocus(); });
    case IDC_BROWSE: return code == BN_CLICKED && Route([&] { OnBrowse(); });
    default: return false;
    }
}

bool CMainDlg::DispatchNotification(const NMHDR& header) {
    if (header.idFrom != IDC_FILE_LIST) return false;
    switch (header.code) {
    case static_cast<UINT>(LVN_ITEMCHANGED):
        return Route([&] { OnListItemChanged(reinterpret_cast<const NMLISTVIEW&>(header)); });
    case static_cast<UINT>(LVN_KEYDOWN):
        return Route([&] { OnListKeyDown(reinterpret_cast<const NMLVKEYDOWN&>(header).wVKey); });
    default: return false;
    }
}

bool CMainDlg::DispatchToPageEdit(UINT message, WPARAM wParam) {
    switch (message) {
    case WM_CHAR: return Route([&] { OnPageEditChar(static_cast<unsigned>(wParam)); });
    case WM_KEYDOWN: return Route([&] { OnPageEditKeyDown(static_cast<unsigned>(wParam)); });
    default: return false;
    }
}

bool CMainDlg::DispatchToFileList(UINT message, WPARAM wParam, LRESULT& result) {
    if (message != WM_DROPFILES) return false;
    return Route([&] { result = OnDropFiles(reinterpret_cast<HDROP>(wParam)); });
}

bool CMainDlg::FilterMessage(MSG& message) {
    return ::IsDialogMessageW(m_hWnd, &message) != FALSE;
}

bool CMainDlg::HandleIdle() {
    UIUpdateChildWindows();
    return false;
}

void CMainDlg::OnDestroy() {
    if (CMessageLoop* const loop = CAppModule::Instance().MessageLoop()) {
        loop->RemoveMessageFilter(*this);
        loop->RemoveIdleHandler(*this);
        loop->RemoveMessageFilter(m_disabledKeys);
    }
    m_accessibleNames.TakeBack();
}

void CMainDlg::OnAbout() {
    CAboutDlg about;
    about.DoModal(::GetActiveWindow());
}

void CMainDlg::OnPageEditChar(unsigned character) {
    if (PageEditAcceptsCharacter(character)) {
        SetMsgHandled(false);
        return;
    }
    ::Beep(400, 100);
}

void CMainDlg::OnPageEditKeyDown(unsigned key) {
    if (PageEditAcceptsKey(key)) SetMsgHandled(false);
}
