#include "benchmarks/drop/talvenor_list.h"

#include "tests/equipment/failure.h"
#include "tests/support/pump.h"
#include "framework/app_module.h"

#include <commctrl.h>

TalvenorList::TalvenorList() {
    CAppModule::Instance().AddMessageLoop(m_loop);
    if (!m_dialog.Create(nullptr)) throw driver::Failure("the main window cannot be created");
    ::ShowWindow(m_dialog.Handle(), SW_SHOW);
    m_list = ::GetDlgItem(m_dialog.Handle(), IDC_FILE_LIST);
    PumpPending();
}

TalvenorList::~TalvenorList() {
    ::DestroyWindow(m_dialog.Handle());
    CAppModule::Instance().RemoveMessageLoop();
    PumpPending();
}

void TalvenorList::Drop(HDROP drop) const {
    ::SendMessageW(m_list, WM_DROPFILES, reinterpret_cast<WPARAM>(drop), 0);
}

void TalvenorList::Paint() const {
    ::UpdateWindow(m_list);
}

int TalvenorList::RowCount() const {
    return static_cast<int>(::SendMessageW(m_list, LVM_GETITEMCOUNT, 0, 0));
}
