// The bare dialog with what any program of Talvenor's kind has besides: COM, a mutex against second copies
// and the tool tips. What the memory and the handles of Talvenor are measured against.

#include "benchmarks/bare/bare_dialog.h"

#include "res/resource.h"

#include <commctrl.h>
#include <objbase.h>

namespace {

void AddToolTips(HWND dialog, HINSTANCE instance) {
    static constexpr struct {
        int control;
        UINT text;
    } kTips[] = {
        {IDC_PAGES, IDS_TIP_PAGES},
        {IDC_EXTRA_OPTIONS, IDS_TIP_EXTRA_OPTIONS},
        {IDC_ADD, IDS_TIP_ADD},
        {IDC_HIDE_OUTPUT, IDS_TIP_HIDE_OUTPUT},
        {IDC_OUTPUT_FOLDER_CHECK, IDS_TIP_OUTPUT_FOLDER},
        {IDC_SHUT_DOWN, IDS_TIP_SHUT_DOWN},
    };
    const HWND toolTips =
        ::CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_NOPREFIX | TTS_ALWAYSTIP, 0,
                          0, 0, 0, dialog, nullptr, instance, nullptr);
    for (const auto& tip : kTips) {
        TTTOOLINFOW tool = {};
        tool.cbSize = sizeof tool;
        tool.uFlags = TTF_SUBCLASS;
        tool.hwnd = ::GetDlgItem(dialog, tip.control);
        tool.hinst = instance;
        tool.lpszText = MAKEINTRESOURCEW(tip.text);
        ::SendMessageW(toolTips, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
    }
}

}  // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, LPWSTR, int showCommand) {
    const HANDLE mutex = ::CreateMutexW(nullptr, FALSE, L"{B9D5A7C2-BARE-PROGRAM}");
    if (::CoInitialize(nullptr) != S_OK) return 1;
    ::InitCommonControls();
    const HWND dialog = CreateBareDialog(instance);
    AddToolTips(dialog, instance);
    ::ShowWindow(dialog, showCommand);
    RunBareDialog(dialog);
    ::CoUninitialize();
    ::CloseHandle(mutex);
    return 0;
}
