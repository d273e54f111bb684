#include "ui/application.h"

#include "framework/app_module.h"
#include "framework/message_loop.h"
#include "ui/main_dlg.h"

namespace {

// The code of a quit message that is already there: a dialog that closed itself while it was being created
// has posted one. 0 when there is none. Windows returns it when no posted message is left, whatever is asked
// for: those before it are served until it comes.
int PendingQuitCode() {
    MSG message = {};
    while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message == WM_QUIT) return static_cast<int>(message.wParam);
        ::DispatchMessageW(&message);
    }
    return 0;
}

}  // namespace

int RunMainDialog(const wchar_t* /*commandLine*/, int showCommand) {
    CMessageLoop loop;
    CAppModule::Instance().AddMessageLoop(loop);
    int exitCode = 0;
    {
        CMainDlg dialog;
        if (dialog.Create(nullptr)) {
            ::ShowWindow(dialog.Handle(), showCommand);
            exitCode = loop.Run();
        } else {
            exitCode = PendingQuitCode();
        }
        // A worker that still waits for its converter may wake at any moment and must find the dialog whole.
        // The process ends here then, with the dialog, and the worker with it.
        if (dialog.HasWorker()) ::ExitProcess(static_cast<UINT>(exitCode));
        CAppModule::Instance().RemoveMessageLoop();
    }
    return exitCode;
}
