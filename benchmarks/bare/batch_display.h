// What the bare dialog shows of a batch: the least that tells a person how far it is.
#pragma once

#include "res/resource.h"

#include <windows.h>
#include <commctrl.h>

#include <string>

// Called from any thread.
class BatchDisplay {
public:
    explicit BatchDisplay(HWND dialog) : m_dialog(dialog), m_list(::GetDlgItem(dialog, IDC_FILE_LIST)) {}

    void ShowStart(int row, const std::wstring& path) const {
        LVITEMW item = {};
        item.state = item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
        Send(LVM_SETITEMSTATE, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
        Send(LVM_ENSUREVISIBLE, static_cast<WPARAM>(row), FALSE);
        ::SetDlgItemTextW(m_dialog, IDC_STATUS, path.c_str());
    }
    void ShowEnd(int row) const { SetText(LVM_SETITEMW, row, 1, L"00:00:00"); }
    void AddRow(int row, const std::wstring& path) const { SetText(LVM_INSERTITEMW, row, 0, path); }
    // As wide as Talvenor has them in a batch.
    void FitColumns() const {
        Send(LVM_SETCOLUMNWIDTH, 1, LVSCW_AUTOSIZE_USEHEADER);
        RECT client = {};
        ::GetClientRect(m_list, &client);
        Send(LVM_SETCOLUMNWIDTH, 0, client.right - Send(LVM_GETCOLUMNWIDTH, 1, 0));
    }

private:
    LRESULT Send(UINT message, WPARAM wParam, LPARAM lParam) const {
        return ::SendMessageW(m_list, message, wParam, lParam);
    }
    void SetText(UINT message, int row, int column, const std::wstring& text) const {
        LVITEMW item = {};
        item.mask = LVIF_TEXT;
        item.iItem = row;
        item.iSubItem = column;
        item.pszText = const_cast<wchar_t*>(text.c_str());  // the list only reads it
        Send(message, 0, reinterpret_cast<LPARAM>(&item));
    }

    HWND m_dialog;  // borrowed
    HWND m_list;    // belongs to the dialog
};
