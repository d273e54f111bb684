// The main window: the list of PDF files, the options, and the batch that converts them.
//
// Its methods are grouped by subject, each group in the file that its heading names.
#pragma once

#include "base/unique_resource.h"
#include "engine/conversion_options.h"
#include "engine/converter_job.h"
#include "framework/contained_window.h"
#include "framework/dialog.h"
#include "framework/invoker.h"
#include "framework/message_loop.h"
#include "framework/update_ui.h"
#include "res/resource.h"
#include "ui/accessible_names.h"
#include "ui/disabled_key_filter.h"
#include "ui/file_list.h"
#include "ui/taskbar_progress.h"

#include <windows.h>
#include <commctrl.h>
#include <shellapi.h>

#include <atomic>
#include <cstdint>
#include <optional>
#include <string>

class AwakeSystem;
class InterpreterRun;

class CMainDlg final : public CDialogImpl<CMainDlg>,
                       public CUpdateUI,
                       public CMessageFilter,
                       public CIdleHandler {
public:
    static constexpr UINT kTemplateId = IDD_MAIN;
    // Asks ShowLastError for no prefix from the string table.
    static constexpr UINT kNoPrefix = 0xFFFFFFFF;

    CMainDlg();
    ~CMainDlg() override = default;

    // The message map. `section` is one of the kSection constants.
    bool DispatchDialogMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result,
                               DWORD section);
    bool ProcessWindowMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result,
                              DWORD section) override {
        return DispatchDialogMessage(window, message, wParam, lParam, result, section);
    }

    bool FilterMessage(MSG& message) override;
    bool HandleIdle() override;

    // Whether a batch is going on and has neither been stopped nor failed.
    [[nodiscard]] bool IsRunning() const noexcept { return m_running; }

    // Whether a worker thread may still touch this object, running or stopped.
    [[nodiscard]] bool HasWorker() const noexcept { return m_workers != 0; }

    // Shows the system's text for the calling thread's last error behind a prefix: `prefixText`, else string
    // `prefixId`, else "Err : ". Any thread; returns when the box is closed.
    void ShowLastError(UINT prefixId, const wchar_t* prefixText = nullptr);

private:
    static constexpr DWORD kSectionDialog = 0;
    static constexpr DWORD kSectionPageEdit = 1;
    static constexpr DWORD kSectionFileList = 2;
    static constexpr UINT_PTR kElapsedTimerId = 2;
    static constexpr UINT kElapsedPeriodMs = 1000;

    // dispatch.cpp: the three sections of the map, the tables of its commands and notifications ...
    bool DispatchToDialog(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result);
    bool DispatchCommand(WORD id, WORD code);
    bool DispatchNotification(const NMHDR& header);
    bool DispatchToPageEdit(UINT message, WPARAM wParam);
    bool DispatchToFileList(UINT message, WPARAM wParam, LRESULT& result);
    // ... and small handlers.
    void OnDestroy();
    void OnAbout();
    void OnPageEditChar(unsigned character);
    void OnPageEditKeyDown(unsigned key);

    // set_up.cpp
    bool OnInitDialog();
    [[nodiscard]] bool ConverterPresent() const;
    void SetWindowIcons();
    void JoinMessageLoop();
    void InitAccessibleNames();
    void SetButtonIcons();
    void InitToolTips();  // tool_tips.cpp

    // file_list_handlers.cpp
    void OnAddPdfs();
    LRESULT OnDropFiles(HDROP drop);
    void OnClearList();
    void OnListItemChanged(const NMLISTVIEW& change);
    // file_list_keys.cpp
    void OnListKeyDown(WORD key);
    void ShowCommandLine();

    // control_state.cpp
    void SetRunningState(bool running);
    void EnableConvert(bool enabled);
    void OnPagesCheck();
    void OnResolutionCheck(WORD code);
    void OnResolutionKillFocus();
    void OnNoTextCheck();
    void OnOutputFolderCheck(WORD code);
    void OnOutputFolderChange();
    void OnOutputFolderKillFocus();
    void OnLButtonDown(WPARAM flags, POINT point);
    [[nodiscard]] bool ItemContains(int id, POINT point) const;
    void SetStatusText(const std::wstring& text) const { Item(IDC_STATUS).SetText(text.c_str()); }

    // log_button.cpp
    void UpdateLogButton();
    void ShowLogButton(bool shown);  // and enables it, or hides and disables it
    void OnOpenLog();

    // output_folder.cpp
    void OnBrowse();
    void OnOpenDestination();
    [[nodiscard]] bool OutputFolderExists() const;
    void ShellOpen(const wchar_t* file, const wchar_t* parameters);

    // options.cpp
    [[nodiscard]] ConversionOptions ReadOptions() const;
    [[nodiscard]] std::wstring BuildCommandLine(const std::wstring& pdfPath) const;

    // batch.cpp: the row that is being converted, and what its converter is to be started with.
    struct BatchRow {
        unsigned batch = 0;  // its number
        int index = 0;
        int count = 0;  // rows in the list
        std::wstring pdfPath;
        std::wstring arguments;  // of the interpreter
        bool isHidden = false;   // its console
    };
    // The user interface's part ...
    void StartConversion();
    void OnTimer();
    void OnQuit();  // or stop, while a batch runs
    // The text of the duration column at tick `now`, or at the end of the file when `now` is 0. Any thread.
    [[nodiscard]] std::wstring FormatElapsed(DWORD now) const;
    // Shows row `row.index` as the one being converted and fills `row`.
    void BeginRow(BatchRow& row) const;
    // The same with the next row. False when there is none, or the batch has been stopped.
    bool BeginNextRow(BatchRow& row) const;
    // ... and the worker's.
    static void ConversionThreadProc(void* dialog);
    void ConvertAll();
    void ConvertRows(const std::wstring& programFolder, unsigned batch, AwakeSystem& awake);
    void OfferShutdown();
    void EndBatch();
    // Whether the file was converted. Its row has no duration yet; `run` has had the interpreter.
    bool RunConverter(std::optional<InterpreterRun>& run, BatchRow& row, const std::wstring& workingFolder);
    void WriteLogRecord();

    CContainedWindow m_pageEdit{*this, kSectionPageEdit};
    CFileList m_fileList{*this, kSectionFileList};
    HWND m_toolTips = nullptr;  // owned by the dialog window
    UniqueIcon m_bigIcon;
    UniqueIcon m_smallIcon;
    AccessibleNames m_accessibleNames;
    DisabledKeyFilter m_disabledKeys;
    TaskbarProgress m_taskbarProgress;
    CInvoker m_userInterface;  // open from the first batch on
    const ConverterJob m_converterJob;

    // Shared between the user-interface thread and the workers without a lock. Each is independent: nothing
    // else is published through it, and a reader that is one step late does no harm.

    // Workers: true at a batch's start, false at its end or on a failed file. User interface: false on a
    // confirmed stop.
    std::atomic<bool> m_running{false};
    // Milliseconds of GetTickCount around the current file. Written by workers.
    std::atomic<std::uint32_t> m_startTick{0};
    std::atomic<std::uint32_t> m_endTick{0};
    // The interpreter that runs, whose process the worker that wrote this holds; 0 when none does. Written by
    // workers, read by a stop request.
    std::atomic<DWORD> m_converterProcessId{0};
    // Worker threads that have not ended. Counted up by the user interface, down by each worker.
    std::atomic<int> m_workers{0};
};
