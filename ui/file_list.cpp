// The list of PDF files: how rows come in, are read and are selected. Rows are only ever added at the end, so
// the batch converts the files in the order in which they came.

#include "ui/main_dlg.h"

#include "log/path_buffer.h"
#include "ui/drop_filter.h"
#include "ui/framework/system_library.h"
#include "ui/open_file_buffer.h"
#include "ui/open_file_selection.h"
#include "ui/text_set.h"

#include <windows.h>
#include <commctrl.h>
#include <commdlg.h>
#include <shellapi.h>
#include <shlwapi.h>

namespace {

// Present because the flags of the dialog name a hook.
UINT_PTR CALLBACK OpenDialogHook(HWND, UINT, WPARAM, LPARAM) {
    return 0;
}

// Its library is loaded for the first dialog and kept. It brings the system's printing along, which would be
// a tenth of the memory that every start takes. What cannot be had counts as a dialog that was cancelled.
bool RunOpenDialog(OPENFILENAMEW& dialog) {
    decltype(&::GetOpenFileNameW) run = nullptr;
    FindFunction(LoadSystemLibrary(L"comdlg32.dll"), "GetOpenFileNameW", run);
    return run && run(&dialog);
}

}  // namespace

// What lasts for one drop or one selection in the open dialog. The texts of the rows are read once, when the
// first path arrives, instead of once for every path, and the list is drawn once, at the end. Nothing else
// can change the rows meanwhile: no message is fetched during the action.
class CMainDlg::AddAction {
public:
    explicit AddAction(const CMainDlg& dialog) noexcept : m_dialog(dialog) {}
    AddAction(const AddAction&) = delete;
    AddAction& operator=(const AddAction&) = delete;
    ~AddAction() {
        if (!m_begun) return;
        m_dialog.m_fileList.Send(WM_SETREDRAW, TRUE);
        ::InvalidateRect(m_dialog.m_fileList.Handle(), nullptr, TRUE);  // what was not drawn is due
    }

    // Appends a row, unless one has exactly this text. False then.
    bool AppendIfNew(std::wstring path) {
        Begin();
        if (!m_rowTexts.Insert(path)) return false;
        LVITEMW item = {};
        item.mask = LVIF_TEXT;
        item.iItem = m_dialog.RowCount();
        item.pszText = path.data();
        if (m_dialog.m_fileList.Send(LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item)) == -1) {
            m_rowTexts.RemoveLast();
        }
        return true;
    }

private:
    void Begin() {
        if (m_begun) return;
        m_begun = true;
        std::wstring text;
        for (int row = 0; row < m_dialog.RowCount(); ++row) {
            m_dialog.GetListItemText(row, 0, text);
            m_rowTexts.Insert(text);
        }
        m_dialog.m_fileList.Send(WM_SETREDRAW, FALSE);
    }

    const CMainDlg& m_dialog;
    TextSet m_rowTexts;
    bool m_begun = false;
};

void CMainDlg::AddFileToList(AddAction& action, std::wstring path) {
    if (!action.AppendIfNew(std::move(path))) ::Beep(440, 100);
}

void CMainDlg::OnAddPdfs() {
    OpenFileBuffer names;
    OPENFILENAMEW dialog = {};
    dialog.lStructSize = sizeof dialog;
    dialog.hwndOwner = m_hWnd;
    dialog.hInstance = CAppModule::Instance().ResourceInstance();
    dialog.lpstrFilter = L"Fichiers PDF (*.pdf)\0*.pdf\0";
    dialog.nFilterIndex = 1;
    dialog.lpstrFile = names.Data();
    dialog.nMaxFile = OpenFileBuffer::kLength;
    dialog.lpfnHook = &OpenDialogHook;
    dialog.Flags = OFN_HIDEREADONLY | OFN_ALLOWMULTISELECT | OFN_PATHMUSTEXIST | OFN_FILEMUSTEXIST |
                   OFN_EXPLORER | OFN_ENABLEHOOK | OFN_ENABLESIZING;
    if (RunOpenDialog(dialog) && names.IsWithinLength()) {
        const OpenFileSelection selection = ParseOpenFileBuffer(names.Names());
        AddAction action(*this);
        for (const std::wstring_view file : selection.files) {
            if (selection.folder.empty()) {
                AddFileToList(action, std::wstring(file));
                continue;
            }
            PathBuffer path(selection.folder);
            ::PathAppendW(path.Data(), std::wstring(file).c_str());
            AddFileToList(action, path.Text());
        }
    }
    // Deliberate: also after Cancel. This is how files that were only dropped get to be converted.
    Item(IDOK).Enable(RowCount() != 0);
}

LRESULT CMainDlg::OnDropFiles(HDROP drop) {
    // Deliberate: the Convert button stays as it is, and the drop is not finished: the list's own processing
    // has done without both since the first version.
    wchar_t path[MAX_PATH] = {};
    AddAction action(*this);
    for (UINT index = 0; ::DragQueryFileW(drop, index, path, MAX_PATH) != 0; ++index) {
        if (IsPdfExtension(::PathFindExtensionW(path))) AddFileToList(action, path);
    }
    return 0;
}

int CMainDlg::RowCount() const {
    return static_cast<int>(m_fileList.Send(LVM_GETITEMCOUNT));
}

int CMainDlg::FirstSelectedRow() const {
    return static_cast<int>(m_fileList.Send(LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
}

int CMainDlg::GetListItemText(int row, int column, std::wstring& text) const {
    for (std::size_t size = 256;; size *= 2) {
        text.assign(size, L'\0');
        LVITEMW item = {};
        item.iSubItem = column;
        item.pszText = text.data();
        item.cchTextMax = static_cast<int>(size);
        const auto length = static_cast<int>(
            m_fileList.Send(LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item)));
        if (length < static_cast<int>(size) - 1) {
            text.resize(::wcslen(text.c_str()));
            return length;
        }
    }
}

void CMainDlg::ClearListSelection() {
    LVITEMW item = {};
    item.stateMask = LVIS_SELECTED;
    m_fileList.Send(LVM_SETITEMSTATE, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(&item));
}

void CMainDlg::SelectListItem(int row) {
    const bool singleSelection = (::GetWindowLongPtrW(m_fileList.Handle(), GWL_STYLE) & LVS_SINGLESEL) != 0;
    if (!singleSelection || row == -1) ClearListSelection();
    if (row == -1) return;
    LVITEMW item = {};
    item.state = LVIS_SELECTED | LVIS_FOCUSED;
    item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
    if (!m_fileList.Send(LVM_SETITEMSTATE, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item))) return;
    m_fileList.Send(LVM_SETSELECTIONMARK, 0, row);
    m_fileList.Send(LVM_ENSUREVISIBLE, static_cast<WPARAM>(row), FALSE);
}

void CMainDlg::SetDurationText(int row, const std::wstring& text) {
    LVITEMW item = {};
    item.mask = LVIF_TEXT;
    item.iItem = row;
    item.iSubItem = 1;
    item.pszText = const_cast<wchar_t*>(text.c_str());  // the list only reads it
    m_fileList.Send(LVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item));
}
