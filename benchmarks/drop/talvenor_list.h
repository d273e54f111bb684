// Talvenor's real main window in this process, shown, and its list.
#pragma once

#include "framework/message_loop.h"
#include "ui/main_dlg.h"

#include <windows.h>
#include <shellapi.h>

// The process must have initialised CAppModule.
class TalvenorList {
public:
    TalvenorList();
    ~TalvenorList();
    TalvenorList(const TalvenorList&) = delete;
    TalvenorList& operator=(const TalvenorList&) = delete;

    // Takes a drop as the shell sends it.
    void Drop(HDROP drop) const;
    // Draws what the drop has changed.
    void Paint() const;
    [[nodiscard]] int RowCount() const;

private:
    CMessageLoop m_loop;
    CMainDlg m_dialog;
    HWND m_list = nullptr;  // belongs to the dialog
};
