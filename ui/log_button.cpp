// The button that opens the log: shown from the start when there is a log, hidden while a batch runs, and
// shown after a batch whose consoles were hidden.

#include "ui/main_dlg.h"

#include "base/program_folder.h"
#include "log/conversion_log.h"
#include "log/log_file_name.h"

#include <shlwapi.h>

void CMainDlg::UpdateLogButton() {
    ShowLogButton(::PathFileExistsW(LogPath().c_str()) != FALSE);
}

void CMainDlg::ShowLogButton(bool shown) {
    const CWindow button = Item(IDC_OPEN_LOG);
    button.Enable(shown);
    button.Show(shown ? SW_SHOW : SW_HIDE);
}

void CMainDlg::OnOpenLog() {
    ShellOpen(FileBeside(GetProgramPath(), kLogFileName).c_str(), nullptr);
}
