#include "benchmarks/drop/bare_list.h"

#include "benchmarks/bare/bare_dialog.h"
#include "res/resource.h"
#include "tests/equipment/failure.h"
#include "tests/support/pump.h"

#include <commctrl.h>

BareList::BareList() : m_dialog(CreateBareDialog(::GetModuleHandleW(nullptr))) {
    if (!m_dialog) throw driver::Failure("the bare dialog cannot be created");
    ::ShowWindow(m_dialog, SW_SHOW);
    m_list = ::GetDlgItem(m_dialog, IDC_FILE_LIST);
    PumpPending();
}

BareList::~BareList() {
    ::DestroyWindow(m_dialog);
    PumpPending();
}

void BareList::Drop(HDROP drop, Rows rows) {
    wchar_t path[MAX_PATH];
    ::SendMessageW(m_list, WM_SETREDRAW, FALSE, 0);
    for (UINT index = 0; ::DragQueryFileW(drop, index, path, MAX_PATH) != 0; ++index) {
        if (rows == Rows::All || index % 2 == 1) Insert(path);
    }
    ::SendMessageW(m_list, WM_SETREDRAW, TRUE, 0);
}

void BareList::Paint() const {
    ::UpdateWindow(m_list);
}

void BareList::Insert(wchar_t* path) {
    LVITEMW item = {};
    item.mask = LVIF_TEXT;
    item.iItem = m_rowCount++;
    item.pszText = path;
    ::SendMessageW(m_list, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
}
