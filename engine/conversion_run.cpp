// The batch: one worker thread that converts the files of the list, strictly one after another. The worker
// reaches controls only through messages, which the user-interface thread serves because it never waits for
// the worker.

#include "ui/main_dlg.h"

#include "engine/command_line.h"
#include "engine/output_path.h"
#include "log/messages.h"
#include "log/path_buffer.h"
#include "log/program_folder.h"
#include "log/string_table.h"
#include "ui/framework/unique_resource.h"
#include "ui/shutdown/shut_me_down_dlg.h"

#include <windows.h>
#include <process.h>
#include <shlobj.h>
#include <shlwapi.h>

namespace {

std::wstring LastComponent(const std::wstring& path) {
    PathBuffer name(path);
    ::PathStripPathW(name.Data());
    return name.Text();
}

std::wstring InterpreterPath() {
    wchar_t systemFolder[MAX_PATH] = {};
    ::SHGetFolderPathW(nullptr, CSIDL_SYSTEM, nullptr, SHGFP_TYPE_DEFAULT, systemFolder);
    return std::wstring(systemFolder) + L"\\cmd.exe";
}

// EnumWindows: asks the first window of the process to close and ends the search there.
BOOL CALLBACK CloseWindowOfProcess(HWND window, LPARAM processId) {
    DWORD owner = 0;
    ::GetWindowThreadProcessId(window, &owner);
    if (owner != static_cast<DWORD>(processId)) return TRUE;
    // Sent, but without waiting: a console that hangs must not take our window with it.
    ::SendNotifyMessageW(window, WM_SYSCOMMAND, SC_CLOSE, 0);
    return FALSE;
}

}  // namespace

void CMainDlg::StartConversion() {
    if (IsChecked(IDC_OUTPUT_FOLDER_CHECK) && !OutputFolderExists()) {
        ShowMessage(m_hWnd, MAKEINTRESOURCEW(IDS_BAD_OUTPUT_FOLDER), MAKEINTRESOURCEW(IDS_PROGRAM_NAME),
                    MB_OK | MB_ICONERROR);
        return;
    }
    // Nothing is disabled here: the worker takes the window into the running state. A thread that cannot be
    // had leaves the window as it is, which is all there is to say.
    ++m_workers;
    constexpr auto kFailed = static_cast<std::uintptr_t>(-1);
    if (::_beginthread(&ConversionThreadProc, 0, this) == kFailed) --m_workers;
}

void CMainDlg::ConversionThreadProc(void* dialog) {
    auto* const self = static_cast<CMainDlg*>(dialog);
    self->ConvertAll();
    --self->m_workers;
}

void CMainDlg::ConvertAll() {
    m_running = true;
    SetRunningState(true);
    // Deliberate: a batch without files goes on, in the running state, until the user stops it.
    if (RowCount() == 0) return;

    const std::wstring programFolder = ProgramFolder();
    const CWindow logButton = Item(IDC_OPEN_LOG);
    logButton.Enable(false);
    logButton.Show(SW_HIDE);
    ::DeleteFileW(LogPath().c_str());  // there may be none
    FitColumns(true);
    const HCURSOR previousCursor = ::SetCursor(::LoadCursorW(nullptr, IDC_APPSTARTING));
    ConvertRows(programFolder);
    EndBatch();
    ::SetCursor(previousCursor);
}

void CMainDlg::ConvertRows(const std::wstring& programFolder) {
    int row = 0;
    if (RowCount() < 1) return;
    std::wstring pdfPath;
    do {
        if (!m_running) return;
        GetListItemText(row, 0, pdfPath);
        SelectListItem(row);
        SetStatusText(LoadText(IDS_CONVERTING) + pdfPath);
        const std::wstring converter = BuildCommandLine(pdfPath);  // its boxes are read before the next
        const std::wstring arguments = BuildInterpreterArguments(converter, IsChecked(IDC_HIDE_OUTPUT));
        if (!RunConverter(arguments, programFolder, pdfPath)) return;
        ++row;
    } while (row < RowCount());
}

void CMainDlg::EndBatch() {
    // Deliberate: also after a batch that was stopped or failed. Whoever goes to bed wants the machine off,
    // and whoever is there can cancel.
    if (IsChecked(IDC_SHUT_DOWN)) {
        CShutMeDownDlg countdown;
        countdown.DoModal(::GetActiveWindow());
    }
    ClearListSelection();
    if (m_running) {
        ShowMessage(m_hWnd, MAKEINTRESOURCEW(IDS_CONVERSION_FINISHED), MAKEINTRESOURCEW(IDS_PROGRAM_NAME),
                    MB_OK | MB_ICONINFORMATION);
    }
    SetStatusText(L"");
    if (IsChecked(IDC_HIDE_OUTPUT)) {
        const CWindow logButton = Item(IDC_OPEN_LOG);
        logButton.Enable(true);
        logButton.Show(SW_SHOW);
    }
    m_running = false;
    SetRunningState(false);
}

bool CMainDlg::RunConverter(const std::wstring& arguments, const std::wstring& workingFolder,
                            const std::wstring& pdfPath) {
    // The handles stay with this call: after a stop a second batch may run beside the first, and neither may
    // wait for or close what is the other's.
    UniqueHandle thread;
    UniqueHandle process;  // the first to be closed
    bool converted = false;
    PROCESS_INFORMATION started = {};
    if (RunInterpreter(arguments, workingFolder, LastComponent(pdfPath), started)) {
        process.Reset(started.hProcess);
        thread.Reset(started.hThread);
        m_converterProcessId = started.dwProcessId;
        ::WaitForSingleObject(process.Get(), INFINITE);
        DWORD exitCode = STILL_ACTIVE;  // what cannot be read is no success
        ::GetExitCodeProcess(process.Get(), &exitCode);
        converted = exitCode == 0;
        if (!converted) m_running = false;
    }
    m_endTick = ::GetTickCount();
    ::KillTimer(m_hWnd, kElapsedTimerId);
    if (IsChecked(IDC_HIDE_OUTPUT)) WriteLogRecord();
    const std::wstring duration = FormatElapsed(0);
    SetDurationText(FirstSelectedRow(), duration);
    return converted;
}

bool CMainDlg::RunInterpreter(const std::wstring& arguments, const std::wstring& workingFolder,
                              const std::wstring& windowTitle, PROCESS_INFORMATION& process) {
    std::wstring title = windowTitle;
    std::wstring commandLine = arguments;  // the system may write into both
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESHOWWINDOW;
    startup.wShowWindow = IsChecked(IDC_HIDE_OUTPUT) ? SW_HIDE : SW_SHOW;
    startup.lpTitle = title.data();
    const std::wstring interpreter = InterpreterPath();
    m_startTick = ::GetTickCount();
    ::SetTimer(m_hWnd, kElapsedTimerId, kElapsedPeriodMs, nullptr);
    if (::CreateProcessW(interpreter.c_str(), commandLine.data(), nullptr, nullptr, TRUE, 0, nullptr,
                         workingFolder.c_str(), &startup, &process)) {
        return true;
    }
    // At once: even freeing a text may change the last error. Deliberate: the batch ends but still counts as
    // running, so that this row gets a duration.
    ShowLastError(IDS_CREATE_PROCESS_FAILED);
    return false;
}

void CMainDlg::RequestConverterClose() const {
    ::EnumWindows(&CloseWindowOfProcess, static_cast<LPARAM>(m_converterProcessId.load()));
}

// Every question is a message to the other thread: what an unchecked box makes meaningless is not asked.
ConversionOptions CMainDlg::ReadOptions() const {
    ConversionOptions options;
    options.pagesEnabled = IsChecked(IDC_PAGES_CHECK);
    if (options.pagesEnabled) options.pages = Item(IDC_PAGES).Text();
    options.resolutionEnabled = IsChecked(IDC_RESOLUTION_CHECK);
    if (options.resolutionEnabled) options.resolution = Item(IDC_RESOLUTION).Text();
    options.noMetadata = IsChecked(IDC_NO_METADATA);
    options.noOutline = IsChecked(IDC_NO_OUTLINE);
    options.noHyperlinks = IsChecked(IDC_NO_HYPERLINKS);
    options.noText = IsChecked(IDC_NO_TEXT);
    options.lines = !options.noText && IsChecked(IDC_LINES);
    options.monochrome = IsChecked(IDC_MONOCHROME);
    options.extraOptions = Item(IDC_EXTRA_OPTIONS).Text();
    options.outputFolderEnabled = IsChecked(IDC_OUTPUT_FOLDER_CHECK);
    if (options.outputFolderEnabled) options.outputFolder = Item(IDC_OUTPUT_FOLDER).Text();
    return options;
}

std::wstring CMainDlg::BuildCommandLine(const std::wstring& pdfPath) const {
    const ConversionOptions options = ReadOptions();
    return BuildConverterCommandLine(options, BuildOutputPath(options, pdfPath), pdfPath);
}

void CMainDlg::ShowCommandLine() {
    const int row = FirstSelectedRow();
    if (row == -1) return;
    std::wstring pdfPath;
    GetListItemText(row, 0, pdfPath);
    ShowMessage(m_hWnd, BuildCommandLine(pdfPath).c_str(), MAKEINTRESOURCEW(IDS_PROGRAM_NAME),
                MB_OK | MB_ICONINFORMATION);
}
