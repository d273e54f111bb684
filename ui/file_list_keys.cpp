// The keys of the file list: Delete, and F7, which shows the command line of the selected file.

#include "ui/main_dlg.h"

#include "ui/messages.h"

void CMainDlg::OnListKeyDown(WORD key) {
    if (m_running) return;
    if (const int row = m_fileList.FirstSelectedRow(); row != -1) {
        if (key == VK_DELETE) {
            m_fileList.DeleteRow(row);
        } else if (key == VK_F7) {
            ShowCommandLine();
            return;
        }
    }
    // Deliberate: the Convert button stays as it is, even when the list has become empty.
    if (m_fileList.FirstSelectedRow() == -1) SetStatusText(L"");
}

void CMainDlg::ShowCommandLine() {
    const int row = m_fileList.FirstSelectedRow();
    if (row == -1) return;
    std::wstring pdfPath;
    m_fileList.GetListItemText(row, 0, pdfPath);
    ShowMessage(m_hWnd, BuildCommandLine(pdfPath).c_str(), MAKEINTRESOURCEW(IDS_PROGRAM_NAME),
                MB_OK | MB_ICONINFORMATION);
}
