// The batch: one worker thread that converts the files of the list, strictly one after another; and the stop.
// The worker reaches controls only through messages, which the user-interface thread serves because it never
// waits for the worker.

#include "ui/main_dlg.h"

#include "base/path_buffer.h"
#include "base/program_folder.h"
#include "base/string_table.h"
#include "engine/awake_system.h"
#include "engine/command_line.h"
#include "engine/interpreter.h"
#include "engine/stop_request.h"
#include "log/conversion_log.h"
#include "log/elapsed_time.h"
#include "ui/messages.h"
#include "ui/shutdown/shut_me_down_dlg.h"

#include <windows.h>
#include <process.h>
#include <shlwapi.h>

#include <optional>

namespace {

std::wstring LastComponent(const std::wstring& path) {
    PathBuffer name(path);
    ::PathStripPathW(name.Data());
    return name.Text();
}

}  // namespace

void CMainDlg::StartConversion() {
    if (IsChecked(IDC_OUTPUT_FOLDER_CHECK) && !OutputFolderExists()) {
        ShowMessage(m_hWnd, MAKEINTRESOURCEW(IDS_BAD_OUTPUT_FOLDER), MAKEINTRESOURCEW(IDS_PROGRAM_NAME),
                    MB_OK | MB_ICONERROR);
        return;
    }
    m_taskbarProgress.Prepare(m_hWnd);
    m_userInterface.Open();
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
    if (m_fileList.RowCount() == 0) return;

    const std::wstring programFolder = ProgramFolder();
    ShowLogButton(false);
    ::DeleteFileW(LogPath().c_str());  // there may be none
    m_fileList.FitColumns(true);
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

// What a row's end and the next one's beginning do to controls is one step of the user-interface thread: it
// costs one message, and what changes is drawn once.
void CMainDlg::ConvertRows(const std::wstring& programFolder, unsigned batch, AwakeSystem& awake) {
    BatchRow row;
    row.batch = batch;
    row.count = m_fileList.RowCount();
    if (row.count < 1 || !m_running) return;
    awake.Hold();
    m_userInterface.Invoke([&] { BeginRow(row); });
    bool goesOn = false;
    do {
        std::optional<InterpreterRun> interpreter;
        const bool converted = RunConverter(interpreter, row, programFolder);
        const std::wstring duration = FormatElapsed(0);
        m_userInterface.Invoke([&] {
            m_fileList.SetDurationText(m_fileList.FirstSelectedRow(), duration);
            interpreter.reset();
            goesOn = converted && BeginNextRow(row);
        });
    } while (goesOn);
}

bool CMainDlg::BeginNextRow(BatchRow& row) const {
    ++row.index;
    row.count = m_fileList.RowCount();
    if (row.index >= row.count) {
        m_taskbarProgress.Report(row.batch, row.count, row.count);
        return false;
    }
    if (!m_running) return false;
    BeginRow(row);
    return true;
}

void CMainDlg::BeginRow(BatchRow& row) const {
    m_taskbarProgress.Report(row.batch, row.index, row.count);
    m_fileList.GetListItemText(row.index, 0, row.pdfPath);
    m_fileList.SelectListItem(row.index);
    SetStatusText(LoadText(IDS_CONVERTING) + row.pdfPath);
    const std::wstring converter = BuildCommandLine(row.pdfPath);  // its boxes are read before the next
    row.isHidden = IsChecked(IDC_HIDE_OUTPUT);
    row.arguments = BuildInterpreterArguments(converter, row.isHidden);
}

// Deliberate: also after a batch that was stopped or failed. Whoever goes to bed wants the machine off, and
// whoever is there can cancel.
void CMainDlg::OfferShutdown() {
    if (!IsChecked(IDC_SHUT_DOWN)) return;
    CShutMeDownDlg countdown;
    countdown.DoModal(::GetActiveWindow());
}

void CMainDlg::EndBatch() {
    m_fileList.ClearSelection();
    if (m_running) {
        ShowMessage(m_hWnd, MAKEINTRESOURCEW(IDS_CONVERSION_FINISHED), MAKEINTRESOURCEW(IDS_PROGRAM_NAME),
                    MB_OK | MB_ICONINFORMATION);
    }
    SetStatusText(L"");
    if (IsChecked(IDC_HIDE_OUTPUT)) ShowLogButton(true);
    m_running = false;
    SetRunningState(false);
}

bool CMainDlg::RunConverter(std::optional<InterpreterRun>& run, BatchRow& row,
                            const std::wstring& workingFolder) {
    std::wstring title = LastComponent(row.pdfPath);
    InterpreterRun& interpreter = run.emplace();
    m_startTick = ::GetTickCount();
    ::SetTimer(m_hWnd, kElapsedTimerId, kElapsedPeriodMs, nullptr);
    bool converted = false;
    if (interpreter.Start(row.arguments, workingFolder, title, row.isHidden)) {
        m_converterJob.Add(interpreter.Process());
        m_converterProcessId = interpreter.ProcessId();
        converted = interpreter.WaitForSuccess();
        // No longer to be looked for: once its handle is closed the system may use the id for any program.
        // Another worker may have written that of its own interpreter meanwhile, which stays.
        DWORD own = interpreter.ProcessId();
        m_converterProcessId.compare_exchange_strong(own, 0);
        if (!converted) m_running = false;
    } else {
        // At once: even freeing a text may change the last error. Deliberate: the batch ends but still counts
        // as running, so that this row gets a duration.
        ShowLastError(IDS_CREATE_PROCESS_FAILED);
    }
    m_endTick = ::GetTickCount();
    ::KillTimer(m_hWnd, kElapsedTimerId);
    if (IsChecked(IDC_HIDE_OUTPUT)) WriteLogRecord();
    return converted;
}

void CMainDlg::WriteLogRecord() {
    const std::optional<std::wstring> time = RecordTimeNow();
    AppendLogRecord(time, FormatElapsed(0));
}

std::wstring CMainDlg::FormatElapsed(DWORD now) const {
    const bool running = m_running;
    return FormatDuration(running, m_startTick, DurationEnd(now, m_endTick),
                          running ? std::wstring() : LoadText(IDS_CANCELLED));
}

// The batch keeps the file being converted selected, so that its row is found without being handed over.
void CMainDlg::OnTimer() {
    const int row = m_fileList.FirstSelectedRow();
    m_fileList.SetDurationText(row, FormatElapsed(::GetTickCount()));
}

void CMainDlg::OnQuit() {
    if (!m_running) {
        const HWND window = m_hWnd;
        // A worker that still winds down waits for nobody here from now on, and finds no controls instead of
        // some that are just being destroyed: Wine 10 hangs, with all its programs, when a thread asks for
        // the siblings of one.
        if (HasWorker()) {
            m_hWnd = nullptr;
            m_userInterface.Close();
        }
        ::DestroyWindow(window);
        ::PostQuitMessage(IDCANCEL);
        return;
    }
    if (ShowMessage(m_hWnd, MAKEINTRESOURCEW(IDS_CONFIRM_STOP), MAKEINTRESOURCEW(IDS_PROGRAM_NAME),
                    MB_YESNO | MB_ICONQUESTION) != IDYES) {
        return;
    }
    m_running = false;
    RequestConverterClose(m_converterProcessId, m_converterJob);
    SetRunningState(false);
    m_taskbarProgress.Stop();
}
