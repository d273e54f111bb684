// Rows and selection.

#include "ui/file_list.h"

#include "res/resource.h"
#include "ui/sized_icon.h"

namespace {

constexpr int kDurationColumn = 1;

}  // namespace

void CFileList::Init(HWND list) {
    SubclassWindow(list);
    constexpr DWORD kStyles = LVS_EX_GRIDLINES | LVS_EX_FULLROWSELECT | LVS_EX_INFOTIP;
    Send(LVM_SETEXTENDEDLISTVIEWSTYLE, kStyles, kStyles);
    InitPictures();
    InitColumns();
    ::DragAcceptFiles(m_hWnd, TRUE);
}

void CFileList::InitPictures() const {
    const HIMAGELIST images = ::ImageList_Create(kPictureSize, kPictureSize, ILC_COLOR32 | ILC_MASK, 1, 0);
    const UniqueIcon page = LoadSizedIcon(IDI_PAGE, kPictureSize, kPictureSize);
    ::ImageList_ReplaceIcon(images, -1, page.Get());
    // The list destroys its image list with itself.
    Send(LVM_SETIMAGELIST, LVSIL_SMALL, reinterpret_cast<LPARAM>(images));
}

int CFileList::RowCount() const {
    return static_cast<int>(Send(LVM_GETITEMCOUNT));
}

int CFileList::GetListItemText(int row, int column, std::wstring& text) const {
    for (std::size_t size = 256;; size *= 2) {
        text.assign(size, L'\0');
        LVITEMW item = {};
        item.iSubItem = column;
        item.pszText = text.data();
        item.cchTextMax = static_cast<int>(size);
        const auto length = static_cast<int>(
            Send(LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item)));
        if (length < static_cast<int>(size) - 1) {
            text.resize(::wcslen(text.c_str()));
            return length;
        }
    }
}

void CFileList::DeleteRow(int row) const {
    Send(LVM_DELETEITEM, static_cast<WPARAM>(row));
}

void CFileList::DeleteAllRows() const {
    Send(LVM_DELETEALLITEMS);
}

int CFileList::FirstSelectedRow() const {
    return static_cast<int>(Send(LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
}

void CFileList::SelectListItem(int row) const {
    const bool singleSelection = (::GetWindowLongPtrW(m_hWnd, GWL_STYLE) & LVS_SINGLESEL) != 0;
    if (!singleSelection || row == -1) ClearSelection();
    if (row == -1) return;
    LVITEMW item = {};
    item.state = LVIS_SELECTED | LVIS_FOCUSED;
    item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
    if (!Send(LVM_SETITEMSTATE, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item))) return;
    Send(LVM_SETSELECTIONMARK, 0, row);
    Send(LVM_ENSUREVISIBLE, static_cast<WPARAM>(row), FALSE);
}

void CFileList::ClearSelection() const {
    LVITEMW item = {};
    item.stateMask = LVIS_SELECTED;
    Send(LVM_SETITEMSTATE, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(&item));
}

void CFileList::SelectFocusedRow(const NMLISTVIEW& change) const {
    // In Wine 8 and 10 a row that is just being deselected still has the focus. Selecting that one again
    // would leave two rows selected, or one after a batch.
    constexpr UINT kBoth = LVIS_SELECTED | LVIS_FOCUSED;
    const bool isDeselected =
        (change.uOldState & kBoth) == kBoth && (change.uNewState & kBoth) == LVIS_FOCUSED;
    if ((change.uNewState & LVIS_FOCUSED) != 0 && !isDeselected) SelectListItem(change.iItem);
}

void CFileList::SetDurationText(int row, const std::wstring& text) const {
    LVITEMW item = {};
    item.mask = LVIF_TEXT;
    item.iItem = row;
    item.iSubItem = kDurationColumn;
    item.pszText = const_cast<wchar_t*>(text.c_str());  // the list only reads it
    Send(LVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item));
}

void CFileList::ClearDurations() const {
    for (int row = 0; row < RowCount(); ++row) SetDurationText(row, L"");
}
