// The bare dialog as a program: what the start of Talvenor is measured against.

#include "benchmarks/bare/bare_dialog.h"

#include <commctrl.h>

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, LPWSTR, int showCommand) {
    ::InitCommonControls();  // its library brings the list
    const HWND dialog = CreateBareDialog(instance);
    ::ShowWindow(dialog, showCommand);
    RunBareDialog(dialog);
    return 0;
}
