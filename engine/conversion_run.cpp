// The batch: one worker thread that converts the files of the list, strictly one after another. The worker
// reaches controls only through messages, which the user-interface thread serves because it never waits for
// the worker.

#include "ui/main_dlg.h"

#include "engine/awake_system.h"
#include "engine/command_line.h"
#include "engine/console_request.h"
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

}  // namespace

void CMainDlg::StartConversion() {
    if (IsChecked(IDC_OUTPUT_FOLDER_CHECK) && !OutputFolderExists()) {
        ShowMessage(m_hWnd, MAKEINTRESOURCEW(IDS_BAD_OUTPUT_FOLDER), MAKEINTRESOURCEW(IDS_PROGRAM_NAME),
                    MB_OK | MB_ICONERROR);
        return;
    }
    m_taskbarProgress.Prepare(m_hWnd);
    // Nothing is disabled here: the worker takes the window into the running state. If the thread cannot be
    // created, the window stays idle and nothing is reported.
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
    // First: a stop that finds the batch running then knows its number.
    const unsigned batch = m_taskbarProgress.BeginBatch();
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
    {
        AwakeSystem awake;
        ConvertRows(programFolder, batch, awake);
        OfferShutdown();
        // Here, before the message that waits for somebody to read it: the machine may sleep until then.
    }
    m_taskbarProgress.EndBatch(batch);
    EndBatch();
    ::SetCursor(previousCursor);
}

void CMainDlg::ConvertRows(const std::wstring& programFolder, unsigned batch, AwakeSystem& awake) {
    int row = 0;
    int rows = RowCount();
    if (rows < 1) return;
    std::wstring pdfPath;
    do {
        if (!m_running) return;
        awake.Hold();
        m_taskbarProgress.Report(batch, row, rows);
        GetListItemText(row, 0, pdfPath);
        SelectListItem(row);
        SetStatusText(LoadText(IDS_CONVERTING) + pdfPath);
        const std::wstring converter = BuildCommandLine(pdfPath);  // its boxes are read before the next
        const std::wstring arguments = BuildInterpreterArguments(converter, IsChecked(IDC_HIDE_OUTPUT));
        if (!RunConverter(arguments, programFolder, pdfPath)) return;
        ++row;
        rows = RowCount();
    } while (row < rows);
    m_taskbarProgress.Report(batch, row, rows);
}

// Deliberate: also after a batch that was stopped or failed. Whoever goes to bed wants the machine off, and
// whoever is there can cancel.
void CMainDlg::OfferShutdown() {
    if (!IsChecked(IDC_SHUT_DOWN)) return;
    CShutMeDownDlg countdown;
    countdown.DoModal(::GetActiveWindow());
}

void CMainDlg::EndBatch() {
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
        // No longer to be looked for: once its handle is closed the system may give the id to any program.
        // Another worker may have written that of its own interpreter meanwhile, which stays.
        DWORD own = started.dwProcessId;
        m_converterProcessId.compare_exchange_strong(own, 0);
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
        m_converterJob.Add(process.hProcess);
        return true;
    }
    // At once: even freeing a text may change the last error. Deliberate: the batch ends but still counts as
    // running, so that this row gets a duration.
    ShowLastError(IDS_CREATE_PROCESS_FAILED);
    return false;
}

// Asks the console of the interpreter that runs to close, and ends what has none that could be asked. Nothing
// is sent to anybody when no interpreter runs.
void CMainDlg::RequestConverterClose() const {
    UniqueHandle process;  // as long as it is held, the id is no other program's
    DWORD processId = 0;
    do {
        processId = m_converterProcessId;
        if (processId == 0) return;
        process.Reset(::OpenProcess(SYNCHRONIZE, FALSE, processId));
        // Whoever runs it held it up to now, if it is still the one: what was opened is the interpreter.
    } while (m_converterProcessId != processId);
    if (AskConsoleToClose(processId) == ConsoleAnswer::NoWindow) m_converterJob.End();
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
