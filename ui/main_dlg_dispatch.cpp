// The main window's message map, and the handlers that are too small to live elsewhere. User-interface
// thread.

#include "ui/main_dlg.h"

#include "log/messages.h"
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

// The batch keeps the file being converted selected, so that its row is found without being handed over.
void CMainDlg::OnTimer() {
    SetDurationText(FirstSelectedRow(), FormatElapsed(::GetTickCount()));
}

void CMainDlg::OnAbout() {
    CAboutDlg about;
    about.DoModal(::GetActiveWindow());
}

void CMainDlg::OnQuit() {
    if (!m_running) {
        const HWND window = m_hWnd;
        // A worker that still winds down asks for controls. It finds none from here on, instead of some that
        // are just going: Wine 10 hangs, with all its programs, when a thread asks for the siblings of one.
        if (HasWorker()) m_hWnd = nullptr;
        ::DestroyWindow(window);
        ::PostQuitMessage(IDCANCEL);
        return;
    }
    if (ShowMessage(m_hWnd, MAKEINTRESOURCEW(IDS_CONFIRM_STOP), MAKEINTRESOURCEW(IDS_PROGRAM_NAME),
                    MB_YESNO | MB_ICONQUESTION) != IDYES) {
        return;
    }
    m_running = false;
    RequestConverterClose();
    SetRunningState(false);
    m_taskbarProgress.Stop();
}

void CMainDlg::OnClearList() {
    m_fileList.Send(LVM_DELETEALLITEMS);
    Item(IDOK).Enable(false);
    FitColumns(false);
    SetStatusText(L"");
}

void CMainDlg::OnListItemChanged(const NMLISTVIEW& change) {
    // The row with the focus is the selected one. But one that is just being deselected still has it on some
    // systems, and selecting that one again would leave two rows selected, or one after a batch.
    const bool isDeselected =
        (change.uOldState & LVIS_SELECTED) != 0 && (change.uNewState & LVIS_SELECTED) == 0;
    if ((change.uNewState & LVIS_FOCUSED) != 0 && !isDeselected) SelectListItem(change.iItem);

    if (change.iItem == -1) {
        SetStatusText(L"");
        FitColumns(false);
        return;
    }
    std::wstring path;
    GetListItemText(change.iItem, 0, path);
    SetStatusText(path);
    if (!IsChecked(IDC_OUTPUT_FOLDER_CHECK)) Item(IDC_OPEN_DESTINATION).Enable(true);
}

void CMainDlg::OnListKeyDown(WORD key) {
    if (m_running) return;
    if (const int row = FirstSelectedRow(); row != -1) {
        if (key == VK_DELETE) {
            m_fileList.Send(LVM_DELETEITEM, static_cast<WPARAM>(row));
        } else if (key == VK_F7) {
            ShowCommandLine();
            return;
        }
    }
    // Deliberate: the Convert button stays as it is, even when the list has become empty.
    if (FirstSelectedRow() == -1) SetStatusText(L"");
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
