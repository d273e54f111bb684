// The main window's set-up: everything that happens once, while the dialog is created.

#include "ui/main_dlg.h"

#include "log/log_file_name.h"
#include "log/messages.h"
#include "log/program_folder.h"
#include "log/string_table.h"
#include "ui/framework/app_module.h"
#include "ui/framework/fatal_error.h"

#include <windows.h>
#include <commctrl.h>
#include <shellapi.h>
#include <shlwapi.h>

namespace {

constexpr int kListImageSize = 16;

// Empty: no control of the dialog has its state refreshed when idle.
UpdateEntry g_updateTable[] = {{kUpdateTableEnd, false, false, false}};

UniqueIcon LoadSizedIcon(UINT id, int width, int height) {
    return UniqueIcon(
        static_cast<HICON>(::LoadImageW(CAppModule::Instance().ResourceInstance(), MAKEINTRESOURCEW(id),
                                        IMAGE_ICON, width, height, LR_DEFAULTCOLOR)));
}

void InsertColumn(const CWindow& list, int index, std::wstring title, int width, int format) {
    constexpr int kTextBufferSize = 260;
    LVCOLUMNW column = {};
    column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_FMT;
    column.fmt = format | LVCFMT_COL_HAS_IMAGES;
    column.cx = width;
    column.pszText = title.data();
    column.cchTextMax = kTextBufferSize;
    list.Send(LVM_INSERTCOLUMNW, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&column));
}

bool DrawsPicture(const CWindow& header, int column) {
    HDITEMW item = {};
    item.mask = HDI_FORMAT;
    header.Send(HDM_GETITEMW, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&item));
    return (item.fmt & HDF_IMAGE) != 0;
}

bool IsVistaOrLater() {
    OSVERSIONINFOEXW wanted = {};
    wanted.dwOSVersionInfoSize = sizeof wanted;
    wanted.dwMajorVersion = 6;
    DWORDLONG conditions = ::VerSetConditionMask(0, VER_MAJORVERSION, VER_GREATER_EQUAL);
    conditions = ::VerSetConditionMask(conditions, VER_MINORVERSION, VER_GREATER_EQUAL);
    conditions = ::VerSetConditionMask(conditions, VER_SERVICEPACKMAJOR, VER_GREATER_EQUAL);
    return ::VerifyVersionInfoW(&wanted, VER_MAJORVERSION | VER_MINORVERSION | VER_SERVICEPACKMAJOR,
                                conditions) != FALSE;
}

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
    InitFileList();
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

void CMainDlg::InitFileList() {
    m_fileList.SubclassWindow(Item(IDC_FILE_LIST).Handle());
    constexpr DWORD kStyles = LVS_EX_GRIDLINES | LVS_EX_FULLROWSELECT | LVS_EX_INFOTIP;
    m_fileList.Send(LVM_SETEXTENDEDLISTVIEWSTYLE, kStyles, kStyles);

    if (const HIMAGELIST images =
            ::ImageList_Create(kListImageSize, kListImageSize, ILC_COLOR32 | ILC_MASK, 1, 0)) {
        const UniqueIcon page = LoadSizedIcon(IDI_PAGE, kListImageSize, kListImageSize);
        ::ImageList_ReplaceIcon(images, -1, page.Get());
        // The list destroys its image list with itself.
        m_fileList.Send(LVM_SETIMAGELIST, LVSIL_SMALL, reinterpret_cast<LPARAM>(images));
    }

    const std::wstring titles = LoadText(IDS_COLUMN_TITLES);
    const std::size_t bar = titles.find(L'|');
    InsertColumn(m_fileList, 0, titles.substr(0, bar), m_fileList.ClientWidth(), LVCFMT_LEFT);
    InsertColumn(m_fileList, 1, bar == std::wstring::npos ? std::wstring() : titles.substr(bar + 1), 0,
                 LVCFMT_CENTER);
    ::DragAcceptFiles(m_fileList.Handle(), TRUE);
}

void CMainDlg::InitToolTips() {
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
    RECT area = {};
    ::GetClientRect(Item(IDC_EXTRA_OPTIONS).Handle(), &area);
    m_toolTips =
        ::CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_NOPREFIX | TTS_ALWAYSTIP,
                          CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, m_hWnd, nullptr,
                          CAppModule::Instance().ResourceInstance(), nullptr);
    const CWindow toolTips(m_toolTips);
    toolTips.Send(TTM_SETMAXTIPWIDTH, 0, area.right - area.left);

    TTTOOLINFOW tool = {};
    tool.cbSize = IsVistaOrLater() ? static_cast<UINT>(sizeof tool) : TTTOOLINFOW_V2_SIZE;
    tool.uFlags = TTF_SUBCLASS;
    tool.uId = 1;
    // Deliberate: one rectangle for all tools, in each control's own coordinates. It is as wide as the widest
    // control that has a tip; where a control is higher, its lowest part has none.
    tool.rect = area;
    for (const auto& tip : kTips) {
        std::wstring text = LoadText(tip.text);
        tool.hwnd = Item(tip.control).Handle();
        tool.lpszText = text.data();
        toolTips.Send(TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
    }
    toolTips.Send(TTM_ACTIVATE, TRUE);
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
    // The status line tells about a file of the list, or nothing.
    const std::wstring titles = LoadText(IDS_COLUMN_TITLES);
    const std::wstring files = titles.substr(0, titles.find(L'|'));
    m_accessibleNames.Name(m_fileList.Handle(), files);
    m_accessibleNames.NameWhileEmpty(Item(IDC_STATUS).Handle(), files);
}

void CMainDlg::UpdateLogButton() {
    const bool logExists = ::PathFileExistsW(LogPath().c_str()) != FALSE;
    const CWindow button = Item(IDC_OPEN_LOG);
    button.Enable(logExists);
    button.Show(logExists ? SW_SHOW : SW_HIDE);
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
        // The system keeps icons loaded like this for the life of the program: the button's picture stays.
        ::DestroyIcon(icon);
    }
}

void CMainDlg::FitColumns(bool showDuration) {
    const auto setWidth = [this](WPARAM column, int width) {
        m_fileList.Send(LVM_SETCOLUMNWIDTH, column, MAKELPARAM(width, 0));
    };
    if (!showDuration) {
        setWidth(0, m_fileList.ClientWidth());
        setWidth(1, 0);
        return;
    }
    setWidth(1, LVSCW_AUTOSIZE_USEHEADER);
    int durationWidth = static_cast<int>(m_fileList.Send(LVM_GETCOLUMNWIDTH, 1));
    const std::wstring titles = LoadText(IDS_COLUMN_TITLES);
    const wchar_t* const title = titles.c_str() + titles.find(L'|') + 1;
    int neededWidth =
        static_cast<int>(m_fileList.Send(LVM_GETSTRINGWIDTHW, 0, reinterpret_cast<LPARAM>(title)));
    // Wine makes the last column as wide as the first one leaves room, which may be nothing, and its header
    // draws the list's picture before the title, with a margin on every side of both.
    const CWindow header(reinterpret_cast<HWND>(m_fileList.Send(LVM_GETHEADER)));
    if (DrawsPicture(header, 1)) {
        const int margin = static_cast<int>(header.Send(HDM_GETBITMAPMARGIN));
        neededWidth += kListImageSize + 4 * margin;
    }
    if (durationWidth < neededWidth) {
        durationWidth = neededWidth;
        setWidth(1, durationWidth);
    }
    setWidth(0, m_fileList.ClientWidth() - durationWidth);
    ::UpdateWindow(m_fileList.Handle());
}
