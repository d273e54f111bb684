// The main window's set-up, in the order of OnInitDialog. What has a subject of its own is in that file: the
// list, the tool tips, the log button.

#include "ui/main_dlg.h"

#include "base/fatal_error.h"
#include "base/program_folder.h"
#include "framework/app_module.h"
#include "ui/messages.h"
#include "ui/sized_icon.h"

#include <windows.h>
#include <shlwapi.h>

namespace {

// Empty: no control of the dialog has its state refreshed when idle.
UpdateEntry g_updateTable[] = {{kUpdateTableEnd, false, false, false}};

}  // namespace

CMainDlg::CMainDlg() : CUpdateUI(g_updateTable) {}

bool CMainDlg::OnInitDialog() {
    if (!ConverterPresent()) {
        ShowMessage(nullptr, MAKEINTRESOURCEW(IDS_CONVERTER_MISSING), MAKEINTRESOURCEW(IDS_PROGRAM_NAME),
                    MB_OK | MB_ICONERROR);
        Send(WM_COMMAND, IDCANCEL, 0);
        return false;
    }
    Center();
    SetWindowIcons();
    JoinMessageLoop();
    m_pageEdit.SubclassWindow(Item(IDC_PAGES).Handle());
    m_fileList.Init(Item(IDC_FILE_LIST).Handle());
    InitToolTips();
    InitAccessibleNames();
    UpdateLogButton();
    SetButtonIcons();
    return true;
}

bool CMainDlg::ConverterPresent() const {
    const ProgramPath program = GetProgramPath();
    // Deliberate: where the program's own path is too long, nothing works that is beside it.
    if (program.isCut) EndByFatalError();
    return ::PathFileExistsW(FileBeside(program, L"pdf2djvu.exe").c_str()) != FALSE;
}

void CMainDlg::SetWindowIcons() {
    m_bigIcon =
        LoadSizedIcon(IDI_APPLICATION_ICON, ::GetSystemMetrics(SM_CXICON), ::GetSystemMetrics(SM_CYICON));
    Send(WM_SETICON, ICON_BIG, reinterpret_cast<LPARAM>(m_bigIcon.Get()));
    m_smallIcon =
        LoadSizedIcon(IDI_APPLICATION_ICON, ::GetSystemMetrics(SM_CXSMICON), ::GetSystemMetrics(SM_CYSMICON));
    Send(WM_SETICON, ICON_SMALL, reinterpret_cast<LPARAM>(m_smallIcon.Get()));
}

void CMainDlg::JoinMessageLoop() {
    if (CMessageLoop* const loop = CAppModule::Instance().MessageLoop()) {
        loop->AddMessageFilter(*this);
        loop->AddIdleHandler(*this);
        m_disabledKeys.SetDialog(m_hWnd);
        loop->AddMessageFilter(m_disabledKeys);  // behind the dialog's: it is asked before
    }
    UIAddChildWindowContainer(m_hWnd);
}

// The texts are those that are beside the controls for those who see them.
void CMainDlg::InitAccessibleNames() {
    if (!AccessibleNames::AreWanted()) return;
    static constexpr struct {
        int control;
        int labelled;  // a control with the text
    } kLabels[] = {
        {IDC_PAGES, IDC_PAGES_CHECK},
        {IDC_RESOLUTION, IDC_RESOLUTION_CHECK},
        {IDC_OUTPUT_FOLDER, IDC_OUTPUT_FOLDER_CHECK},
        {IDC_BROWSE, IDC_OUTPUT_FOLDER_CHECK},
    };
    for (const auto& label : kLabels) {
        m_accessibleNames.Name(Item(label.control).Handle(), Item(label.labelled).Text());
    }
    // The group box around it precedes it in the template.
    const HWND extraOptions = Item(IDC_EXTRA_OPTIONS).Handle();
    m_accessibleNames.Name(extraOptions, CWindow(::GetWindow(extraOptions, GW_HWNDPREV)).Text());
    // The status line names a file of the list, or is empty.
    const std::wstring files = CFileList::FilesTitle();
    m_accessibleNames.Name(m_fileList.Handle(), files);
    m_accessibleNames.NameWhileEmpty(Item(IDC_STATUS).Handle(), files);
}

void CMainDlg::SetButtonIcons() {
    static constexpr struct {
        int button;
        UINT icon;
    } kPictures[] = {
        {IDOK, IDI_APPLICATION_ICON},
        {IDC_ADD, IDI_ADD},
        {IDC_CLEAR, IDI_CLEAR},
        {IDC_BROWSE, IDI_FOLDER},
    };
    for (const auto& picture : kPictures) {
        const HICON icon =
            ::LoadIconW(CAppModule::Instance().ResourceInstance(), MAKEINTRESOURCEW(picture.icon));
        Item(picture.button).Send(BM_SETIMAGE, IMAGE_ICON, reinterpret_cast<LPARAM>(icon));
        // Deliberate: the icon is shared, and the system keeps such icons for the life of the program. The
        // button's picture stays.
        ::DestroyIcon(icon);
    }
}
