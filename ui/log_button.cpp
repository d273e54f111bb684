// The button that opens the log: shown from the start when there is a log, hidden while a batch runs, and
// shown after a batch whose consoles were hidden.

#include "ui/main_dlg.h"

#include "base/program_folder.h"
#include "log/conversion_log.h"
#include "log/log_file_name.h"

#include <shlwapi.h>

void CMainDlg::UpdateLogButton() {
    const bool logExists = ::PathFileExistsW(LogPath().c_str()) != FALSE;
    const CWindow button = Item(IDC_OPEN_LOG);
    button.Enable(logExists);
    button.Show(logExists ? SW_SHOW : SW_HIDE);
}

void CMainDlg::HideLogButton() {
    const CWindow button = Item(IDC_OPEN_LOG);
    button.Enable(false);
    button.Show(SW_HIDE);
}

void CMainDlg::ShowLogButton() {
    const CWindow button = Item(IDC_OPEN_LOG);
    button.Enable(true);
    button.Show(SW_SHOW);
}

void CMainDlg::OnOpenLog() {
    ShellOpen(FileBeside(GetProgramPath(), kLogFileName).c_str(), nullptr);
}
