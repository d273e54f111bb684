// The two columns: their titles, and how wide each is.

#include "ui/file_list.h"

#include "base/string_table.h"
#include "res/resource.h"

namespace {

void InsertColumn(const CWindow& list, int index, std::wstring title, int width, int format) {
    constexpr int kTextBufferSize = 260;
    LVCOLUMNW column = {};
    column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_FMT;
    column.fmt = format | LVCFMT_COL_HAS_IMAGES;
    column.cx = width;
    column.pszText = title.data();
    column.cchTextMax = kTextBufferSize;
    list.Send(LVM_INSERTCOLUMNW, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&column));
}

bool DrawsPicture(const CWindow& header, int column) {
    HDITEMW item = {};
    item.mask = HDI_FORMAT;
    header.Send(HDM_GETITEMW, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&item));
    return (item.fmt & HDF_IMAGE) != 0;
}

// One text has both titles, with a bar between them.
std::wstring BeforeBar(const std::wstring& titles) {
    return titles.substr(0, titles.find(L'|'));
}

std::wstring BehindBar(const std::wstring& titles) {
    const std::size_t bar = titles.find(L'|');
    return bar == std::wstring::npos ? std::wstring() : titles.substr(bar + 1);
}

}  // namespace

std::wstring CFileList::FilesTitle() {
    return BeforeBar(LoadText(IDS_COLUMN_TITLES));
}

void CFileList::InitColumns() const {
    const std::wstring titles = LoadText(IDS_COLUMN_TITLES);
    InsertColumn(*this, 0, BeforeBar(titles), ClientWidth(), LVCFMT_LEFT);
    InsertColumn(*this, 1, BehindBar(titles), 0, LVCFMT_CENTER);
}

void CFileList::FitColumns(bool showDuration) const {
    if (!showDuration) {
        SetColumnWidth(0, ClientWidth());
        SetColumnWidth(1, 0);
        return;
    }
    SetColumnWidth(1, LVSCW_AUTOSIZE_USEHEADER);
    int durationWidth = static_cast<int>(Send(LVM_GETCOLUMNWIDTH, 1));
    // Wine 8 and 10 make the last column as wide as the first one leaves room, which may be nothing.
    if (const int titleWidth = DurationTitleWidth(); durationWidth < titleWidth) {
        durationWidth = titleWidth;
        SetColumnWidth(1, durationWidth);
    }
    SetColumnWidth(0, ClientWidth() - durationWidth);
    ::UpdateWindow(m_hWnd);
}

void CFileList::SetColumnWidth(int column, int width) const {
    Send(LVM_SETCOLUMNWIDTH, static_cast<WPARAM>(column), MAKELPARAM(width, 0));
}

int CFileList::DurationTitleWidth() const {
    const std::wstring title = BehindBar(LoadText(IDS_COLUMN_TITLES));
    int width = static_cast<int>(Send(LVM_GETSTRINGWIDTHW, 0, reinterpret_cast<LPARAM>(title.c_str())));
    // Wine's header draws the list's picture before the title, with a margin on every side of both.
    const CWindow header(reinterpret_cast<HWND>(Send(LVM_GETHEADER)));
    if (DrawsPicture(header, 1)) {
        const int margin = static_cast<int>(header.Send(HDM_GETBITMAPMARGIN));
        width += kPictureSize + 4 * margin;
    }
    return width;
}
