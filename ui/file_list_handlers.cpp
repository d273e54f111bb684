// What the main window does about its list: files that are added, the rows that are selected or cleared.

#include "ui/main_dlg.h"

void CMainDlg::OnAddPdfs() {
    m_fileList.AddFromOpenDialog(m_hWnd);
    // Deliberate: also after Cancel. This is how files that were only dropped get to be converted.
    EnableConvert(m_fileList.RowCount() != 0);
}

LRESULT CMainDlg::OnDropFiles(HDROP drop) {
    // Deliberate: the Convert button stays as it is.
    m_fileList.AddDropped(drop);
    return 0;
}

void CMainDlg::OnClearList() {
    m_fileList.DeleteAllRows();
    EnableConvert(false);
    m_fileList.FitColumns(false);
    SetStatusText(L"");
}

void CMainDlg::OnListItemChanged(const NMLISTVIEW& change) {
    m_fileList.SelectFocusedRow(change);
    if (change.iItem == -1) {
        SetStatusText(L"");
        m_fileList.FitColumns(false);
        return;
    }
    std::wstring path;
    m_fileList.GetListItemText(change.iItem, 0, path);
    SetStatusText(path);
    if (!IsChecked(IDC_OUTPUT_FOLDER_CHECK)) Item(IDC_OPEN_DESTINATION).Enable(true);
}
