// The countdown before the machine is shut down. Modal, on the thread that runs it: a batch's worker.
#pragma once

#include "res/resource.h"
#include "framework/dialog.h"

#include <windows.h>

class CShutMeDownDlg final : public CDialogImpl<CShutMeDownDlg, CWindow> {
public:
    static constexpr UINT kTemplateId = IDD_COUNTDOWN;

    bool ProcessWindowMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result,
                              DWORD section) override;

    // Asks the system to switch the machine off at once without forcing applications to close. True when the
    // request was accepted. Says nothing when it was not.
    static bool ShutDownComputer();

private:
    static constexpr UINT_PTR kCountdownTimerId = 1;

    bool DispatchCommand(WORD id);
    void OnInitDialog();
    void OnTimer();
    void OnShutDownNow();
    void OnCancel();

    int m_secondsLeft = 30;
};
