// How files become rows: the open dialog, and files dropped on the list.

#include "ui/file_list.h"

#include "base/path_buffer.h"
#include "base/system_library.h"
#include "base/text_set.h"
#include "framework/app_module.h"
#include "ui/drop_filter.h"
#include "ui/open_file_buffer.h"
#include "ui/open_file_selection.h"

#include <commdlg.h>
#include <shlwapi.h>

namespace {

// Present because the flags of the dialog name a hook.
UINT_PTR CALLBACK OpenDialogHook(HWND, UINT, WPARAM, LPARAM) {
    return 0;
}

// Its library is loaded for the first dialog and kept. It brings the system's printing along, which would be
// a tenth of the memory that every start takes. What cannot be loaded counts as a dialog that was cancelled.
bool RunOpenDialog(OPENFILENAMEW& dialog) {
    decltype(&::GetOpenFileNameW) run = nullptr;
    FindFunction(LoadSystemLibrary(L"comdlg32.dll"), "GetOpenFileNameW", run);
    return run && run(&dialog);
}

}  // namespace

// One drop, or one selection in the open dialog. The texts of the rows are read once, when the first path
// arrives, instead of once for every path, and the list is drawn once, at the end. Nothing else can change
// the rows meanwhile: no message is fetched during the action.
class CFileList::AddAction {
public:
    explicit AddAction(const CFileList& list) noexcept : m_list(list) {}
    AddAction(const AddAction&) = delete;
    AddAction& operator=(const AddAction&) = delete;
    ~AddAction() {
        if (!m_begun) return;
        m_list.Send(WM_SETREDRAW, TRUE);
        ::InvalidateRect(m_list.Handle(), nullptr, TRUE);  // what was not drawn is due
    }

    // Appends a row, or beeps when one has exactly this text.
    void AddFileToList(std::wstring path) {
        Begin();
        if (!m_rowTexts.Insert(path)) {
            ::Beep(440, 100);
            return;
        }
        LVITEMW item = {};
        item.mask = LVIF_TEXT;
        item.iItem = m_list.RowCount();
        item.pszText = path.data();
        if (m_list.Send(LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item)) == -1) m_rowTexts.RemoveLast();
    }

private:
    void Begin() {
        if (m_begun) return;
        m_begun = true;
        std::wstring text;
        for (int row = 0; row < m_list.RowCount(); ++row) {
            m_list.GetListItemText(row, 0, text);
            m_rowTexts.Insert(text);
        }
        m_list.Send(WM_SETREDRAW, FALSE);
    }

    const CFileList& m_list;
    TextSet m_rowTexts;
    bool m_begun = false;
};

void CFileList::AddFromOpenDialog(HWND owner) const {
    OpenFileBuffer names;
    OPENFILENAMEW dialog = {};
    dialog.lStructSize = sizeof dialog;
    dialog.hwndOwner = owner;
    dialog.hInstance = CAppModule::Instance().ResourceInstance();
    dialog.lpstrFilter = L"Fichiers PDF (*.pdf)\0*.pdf\0";
    dialog.nFilterIndex = 1;
    dialog.lpstrFile = names.Data();
    dialog.nMaxFile = OpenFileBuffer::kLength;
    dialog.lpfnHook = &OpenDialogHook;
    dialog.Flags = OFN_HIDEREADONLY | OFN_ALLOWMULTISELECT | OFN_PATHMUSTEXIST | OFN_FILEMUSTEXIST |
                   OFN_EXPLORER | OFN_ENABLEHOOK | OFN_ENABLESIZING;
    if (!RunOpenDialog(dialog) || !names.IsWithinLength()) return;
    const OpenFileSelection selection = ParseOpenFileBuffer(names.Names());
    AddAction action(*this);
    for (const std::wstring_view file : selection.files) {
        if (selection.folder.empty()) {
            action.AddFileToList(std::wstring(file));
            continue;
        }
        PathBuffer path(selection.folder);
        ::PathAppendW(path.Data(), std::wstring(file).c_str());
        action.AddFileToList(path.Text());
    }
}

// Deliberate: the drop is not finished. The list's own processing has done without since the first version.
void CFileList::AddDropped(HDROP drop) const {
    wchar_t path[MAX_PATH] = {};
    AddAction action(*this);
    for (UINT index = 0; ::DragQueryFileW(drop, index, path, MAX_PATH) != 0; ++index) {
        if (IsPdfExtension(::PathFindExtensionW(path))) action.AddFileToList(path);
    }
}
