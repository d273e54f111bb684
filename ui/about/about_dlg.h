// The About box. Modal, on the user-interface thread.
#pragma once

#include "res/resource.h"
#include "framework/dialog.h"

#include <windows.h>

class CAboutDlg final : public CDialogImpl<CAboutDlg, CWindow> {
public:
    static constexpr UINT kTemplateId = IDD_ABOUT;

    bool ProcessWindowMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result,
                              DWORD section) override;

private:
    bool DispatchCommand(WORD id);
    void OnInitDialog();
};
