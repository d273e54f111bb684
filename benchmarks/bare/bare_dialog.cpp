#include "benchmarks/bare/bare_dialog.h"

#include "res/resource.h"

#include <commctrl.h>

namespace {

HICON LoadSizedIcon(HINSTANCE instance, int id, int width, int height) {
    return static_cast<HICON>(
        ::LoadImageW(instance, MAKEINTRESOURCEW(id), IMAGE_ICON, width, height, LR_DEFAULTCOLOR));
}

void SetWindowIcon(HWND dialog, HINSTANCE instance, int which, int widthMetric, int heightMetric) {
    const HICON icon = LoadSizedIcon(instance, IDI_APPLICATION_ICON, ::GetSystemMetrics(widthMetric),
                                     ::GetSystemMetrics(heightMetric));
    ::SendMessageW(dialog, WM_SETICON, static_cast<WPARAM>(which), reinterpret_cast<LPARAM>(icon));
}

void SetButtonIcon(HWND dialog, HINSTANCE instance, int button, int id) {
    const HICON icon = ::LoadIconW(instance, MAKEINTRESOURCEW(id));
    ::SendDlgItemMessageW(dialog, button, BM_SETIMAGE, IMAGE_ICON, reinterpret_cast<LPARAM>(icon));
}

void InsertColumn(HWND list, int index, const wchar_t* title, int width, int format) {
    LVCOLUMNW column = {};
    column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_FMT;
    column.fmt = format | LVCFMT_COL_HAS_IMAGES;
    column.cx = width;
    column.pszText = const_cast<wchar_t*>(title);  // the list only reads it
    ::SendMessageW(list, LVM_INSERTCOLUMNW, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&column));
}

void FillList(HWND list, HINSTANCE instance) {
    constexpr LPARAM kStyles = LVS_EX_GRIDLINES | LVS_EX_FULLROWSELECT | LVS_EX_INFOTIP;
    ::SendMessageW(list, LVM_SETEXTENDEDLISTVIEWSTYLE, kStyles, kStyles);
    constexpr int kImageSize = 16;
    const HIMAGELIST images = ::ImageList_Create(kImageSize, kImageSize, ILC_COLOR32 | ILC_MASK, 1, 0);
    const HICON page = LoadSizedIcon(instance, IDI_PAGE, kImageSize, kImageSize);
    ::ImageList_ReplaceIcon(images, -1, page);
    ::DestroyIcon(page);
    ::SendMessageW(list, LVM_SETIMAGELIST, LVSIL_SMALL, reinterpret_cast<LPARAM>(images));
    RECT client = {};
    ::GetClientRect(list, &client);
    InsertColumn(list, 0, L"Fichiers PDF", client.right, LVCFMT_LEFT);
    InsertColumn(list, 1, L"Durée de conversion", 0, LVCFMT_CENTER);
}

INT_PTR CALLBACK BareDialogProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_INITDIALOG) {
        const auto instance = reinterpret_cast<HINSTANCE>(lParam);
        SetWindowIcon(dialog, instance, ICON_BIG, SM_CXICON, SM_CYICON);
        SetWindowIcon(dialog, instance, ICON_SMALL, SM_CXSMICON, SM_CYSMICON);
        FillList(::GetDlgItem(dialog, IDC_FILE_LIST), instance);
        SetButtonIcon(dialog, instance, IDOK, IDI_APPLICATION_ICON);
        SetButtonIcon(dialog, instance, IDC_ADD, IDI_ADD);
        SetButtonIcon(dialog, instance, IDC_CLEAR, IDI_CLEAR);
        SetButtonIcon(dialog, instance, IDC_BROWSE, IDI_FOLDER);
        return TRUE;
    }
    if (message == WM_COMMAND && LOWORD(wParam) == IDCANCEL) ::DestroyWindow(dialog);
    return FALSE;
}

}  // namespace

HWND CreateBareDialog(HINSTANCE instance) {
    return ::CreateDialogParamW(instance, MAKEINTRESOURCEW(IDD_MAIN), nullptr, &BareDialogProc,
                                reinterpret_cast<LPARAM>(instance));
}

void RunBareDialog(HWND dialog) {
    MSG message;
    while (::IsWindow(dialog) && ::GetMessageW(&message, nullptr, 0, 0) > 0) {
        if (::IsDialogMessageW(dialog, &message)) continue;
        ::TranslateMessage(&message);
        ::DispatchMessageW(&message);
    }
}
