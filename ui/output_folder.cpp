// The folder that the DjVu files go to, and what is handed to the shell. User-interface thread.

#include "ui/main_dlg.h"

#include "base/path_buffer.h"
#include "base/unique_resource.h"
#include "ui/system_explorer.h"

#include <windows.h>
#include <objbase.h>
#include <shellapi.h>
#include <shlobj.h>
#include <shlwapi.h>

namespace {

struct ItemListTraits {
    using Handle = PIDLIST_ABSOLUTE;
    static constexpr Handle Empty() noexcept { return nullptr; }
    static void Close(Handle list) noexcept { ::CoTaskMemFree(list); }
};
using UniqueItemList = UniqueResource<ItemListTraits>;

// The browser opens at its default place: there is no folder to preselect.
int CALLBACK BrowseCallback(HWND, UINT, LPARAM, LPARAM) {
    return 0;
}

}  // namespace

bool CMainDlg::OutputFolderExists() const {
    return ::PathIsDirectoryW(Item(IDC_OUTPUT_FOLDER).Text().c_str()) != FALSE;
}

void CMainDlg::OnBrowse() {
    wchar_t displayName[MAX_PATH] = {};
    BROWSEINFOW browser = {};
    browser.hwndOwner = Handle();
    if (!browser.hwndOwner) browser.hwndOwner = ::GetActiveWindow();
    browser.pszDisplayName = displayName;
    browser.ulFlags = BIF_RETURNONLYFSDIRS;
    browser.lpfn = &BrowseCallback;
    const UniqueItemList chosen(::SHBrowseForFolderW(&browser));
    if (!chosen) return;
    wchar_t path[MAX_PATH] = {};
    if (::SHGetPathFromIDListW(chosen.Get(), path)) Item(IDC_OUTPUT_FOLDER).SetText(path);
}

void CMainDlg::OnOpenDestination() {
    std::wstring folder;
    if (IsChecked(IDC_OUTPUT_FOLDER_CHECK)) {
        folder = Item(IDC_OUTPUT_FOLDER).Text();
    } else if (const int row = m_fileList.FirstSelectedRow(); row != -1) {
        std::wstring pdfPath;
        m_fileList.GetListItemText(row, 0, pdfPath);
        PathBuffer path(pdfPath);
        ::PathRemoveExtensionW(path.Data());
        ::PathRemoveFileSpecW(path.Data());
        folder = path.Text();
    }
    if (folder.empty()) return;
    // Deliberate: no quotes around the folder, as in every version. Explorer then takes a comma for the end
    // of the path.
    ShellOpen(SystemExplorer().c_str(), folder.c_str());
}

void CMainDlg::ShellOpen(const wchar_t* file, const wchar_t* parameters) {
    SHELLEXECUTEINFOW request = {};
    request.cbSize = sizeof request;
    request.hwnd = m_hWnd;
    request.lpVerb = L"open";
    request.lpFile = file;
    request.lpParameters = parameters;
    request.nShow = SW_SHOW;
    if (!::ShellExecuteExW(&request)) ShowLastError(IDS_SHELL_EXECUTE_FAILED);
}
