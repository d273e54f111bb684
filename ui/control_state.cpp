// Which control is enabled when. The button of the log has its own file; that of the destination is also
// enabled by the selection of a row. Nothing is refreshed when idle, and nothing is kept between two runs.

#include "ui/main_dlg.h"

#include "base/string_table.h"
#include "ui/resolution_clamp.h"

#include <windows.h>

#include <string>

void CMainDlg::SetRunningState(bool running) {
    const bool enabled = !running;
    const auto enable = [&](int id) { Item(id).Enable(enabled); };
    // Deliberate: the two edits follow their boxes, while 1016, 1027 and 1028 are enabled after a batch
    // whatever theirs say.
    enable(IDOK);
    enable(IDC_ADD);
    enable(IDC_CLEAR);
    enable(IDC_FILE_LIST);
    enable(IDC_PAGES_CHECK);
    if (IsChecked(IDC_PAGES_CHECK)) enable(IDC_PAGES);
    enable(IDC_RESOLUTION_CHECK);
    if (IsChecked(IDC_RESOLUTION_CHECK)) enable(IDC_RESOLUTION);
    // Deliberate: IDOK is named a second time. The call finds it in its state already and changes nothing.
    for (const int id : {IDC_NO_METADATA, IDC_NO_OUTLINE, IDC_NO_HYPERLINKS, IDC_NO_TEXT, IDC_LINES,
                         IDC_MONOCHROME, IDC_EXTRA_OPTIONS, IDC_HIDE_OUTPUT, IDC_OUTPUT_FOLDER_CHECK,
                         IDC_OUTPUT_FOLDER, IDC_BROWSE, IDC_SHUT_DOWN, IDOK}) {
        enable(id);
    }
    // A button whose text cannot be loaded keeps the one it has.
    std::wstring text;
    if (LoadStringResource(running ? IDS_STOP : IDS_QUIT, text)) Item(IDCANCEL).SetText(text.c_str());
    // The flag, not the argument: durations are emptied at a batch's start only, where the flag is set first.
    if (m_running) m_fileList.ClearDurations();
}

// "Convertir" is enabled by the open dialog, when the list then has rows, and after a batch; it is disabled
// by an emptied list and during a batch. Files that are dropped and rows that are deleted leave it as it is.
void CMainDlg::EnableConvert(bool enabled) {
    Item(IDOK).Enable(enabled);
}

void CMainDlg::OnPagesCheck() {
    Item(IDC_PAGES).Enable(IsChecked(IDC_PAGES_CHECK));
}

void CMainDlg::OnResolutionCheck(WORD code) {
    if (code != BN_CLICKED) return;
    const CWindow resolution = Item(IDC_RESOLUTION);
    const bool checked = IsChecked(IDC_RESOLUTION_CHECK);
    resolution.Enable(checked);
    if (checked && resolution.Text().empty()) resolution.SetText(kDefaultResolution);
}

void CMainDlg::OnResolutionKillFocus() {
    const CWindow resolution = Item(IDC_RESOLUTION);
    if (const auto limit = ClampResolution(resolution.Text()))
        resolution.SetText(std::wstring(*limit).c_str());
}

void CMainDlg::OnNoTextCheck() {
    Item(IDC_LINES).Enable(!IsChecked(IDC_NO_TEXT));
}

void CMainDlg::OnOutputFolderCheck(WORD /*code*/) {
    const bool checked = IsChecked(IDC_OUTPUT_FOLDER_CHECK);
    Item(IDC_BROWSE).Enable(checked);
    Item(IDC_OUTPUT_FOLDER).Enable(checked);
    if (!checked) return;
    Item(IDC_OUTPUT_FOLDER).Focus();
    if (OutputFolderExists()) Item(IDC_OPEN_DESTINATION).Enable(true);
}

void CMainDlg::OnOutputFolderChange() {
    Item(IDC_OPEN_DESTINATION).Enable(OutputFolderExists());
}

void CMainDlg::OnOutputFolderKillFocus() {
    const HWND focused = ::GetFocus();
    if (focused == Item(IDC_OUTPUT_FOLDER_CHECK).Handle() || focused == Item(IDC_BROWSE).Handle()) return;
    if (!Item(IDC_OUTPUT_FOLDER).Text().empty()) return;
    SetChecked(IDC_OUTPUT_FOLDER_CHECK, false);
    Item(IDC_BROWSE).Enable(false);
    Item(IDC_OUTPUT_FOLDER).Enable(false);
}

// The dialog only gets the clicks that no enabled control takes: those on disabled controls and the
// background. Deliberate: no look at the batch, and neither "300" nor the destination button as with a click
// on the box.
void CMainDlg::OnLButtonDown(WPARAM /*flags*/, POINT point) {
    static constexpr struct {
        int edit;
        int box;
    } kEdits[] = {
        {IDC_PAGES, IDC_PAGES_CHECK},
        {IDC_RESOLUTION, IDC_RESOLUTION_CHECK},
        {IDC_OUTPUT_FOLDER, IDC_OUTPUT_FOLDER_CHECK},
    };
    for (const auto& pair : kEdits) {
        if (!ItemContains(pair.edit, point)) continue;
        const CWindow edit = Item(pair.edit);
        if (::IsWindowEnabled(edit.Handle())) return;
        edit.Enable(true);
        SetChecked(pair.box, true);
        if (pair.edit == IDC_OUTPUT_FOLDER) Item(IDC_BROWSE).Enable(true);
        edit.Focus();
        return;
    }
}

bool CMainDlg::ItemContains(int id, POINT point) const {
    RECT area = {};
    ::GetWindowRect(Item(id).Handle(), &area);
    POINT topLeft = {area.left, area.top};
    POINT bottomRight = {area.right, area.bottom};
    if (::ScreenToClient(m_hWnd, &topLeft)) {
        area.left = topLeft.x;
        area.top = topLeft.y;
        if (::ScreenToClient(m_hWnd, &bottomRight)) {
            area.right = bottomRight.x;
            area.bottom = bottomRight.y;
        }
    }
    return ::PtInRect(&area, point) != FALSE;
}
