// The real main window in the test process, hidden, with the platform calls that would disturb the desktop or
// cannot be observed replaced by recording ones.
#pragma once

#include "tests/support/call_record.h"
#include "tests/support/call_text.h"
#include "tests/support/dropped_files.h"
#include "tests/support/pump.h"
#include "tests/support/replaced_imports.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/utf8.h"
#include "tests/window/control_calls.h"

#include "res/resource.h"
#include "framework/app_module.h"
#include "framework/message_loop.h"
#include "ui/main_dlg.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <windows.h>
#include <commctrl.h>

#include <algorithm>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

// A program folder with a stand-in for the converter, a module, a loop and the dialog in it. The program's
// path is `folder`\Talvenor.exe for every caller. Message boxes are answered by `messageAnswer` and recorded
// in `calls` as "MessageBoxW owner=main|none text=... caption=... type=0x..", beeps as "Beep 440 100".
class MainWindowFixture : public testing::Test {
protected:
    MainWindowFixture() {
        programPath = folder.File(L"Talvenor.exe");
        std::ofstream(folder.Path() / "pdf2djvu.exe") << "stand-in";
        calls.Clear();
        messageAnswer = IDOK;
        CAppModule::Instance().Init(::GetModuleHandleW(nullptr));
        CAppModule::Instance().AddMessageLoop(loop);
    }
    ~MainWindowFixture() override {
        Destroy();
        CAppModule::Instance().RemoveMessageLoop();
        CAppModule::Instance().Term();
    }

    // Creates the dialog. Not shown: a test that needs it shown does so.
    void Create() {
        dialog = std::make_unique<CMainDlg>();
        m_created = dialog->Create(nullptr);
        ASSERT_NE(m_created, nullptr);
    }
    // Ends the batch that may be going on, then the dialog.
    void Destroy() {
        if (!dialog) return;
        if (dialog->Handle()) {
            if (dialog->IsRunning()) {
                messageAnswer = IDYES;  // to "really stop?"
                Command(IDCANCEL, BN_CLICKED);
            }
            EXPECT_TRUE(WaitFor([&] { return !dialog->HasWorker(); })) << "a worker did not end";
            ::DestroyWindow(dialog->Handle());
        }
        dialog.reset();
        MSG message;
        while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            if (message.message != WM_QUIT) ::DispatchMessageW(&message);
        }
    }

    [[nodiscard]] HWND Dialog() const { return dialog->Handle(); }
    [[nodiscard]] HWND Control(int id) const { return ::GetDlgItem(dialog->Handle(), id); }
    [[nodiscard]] bool IsEnabled(int id) const { return ::IsWindowEnabled(Control(id)) != FALSE; }
    // Whether the control would be seen if the dialog were.
    [[nodiscard]] bool IsShown(int id) const {
        return (::GetWindowLongPtrW(Control(id), GWL_STYLE) & WS_VISIBLE) != 0;
    }
    [[nodiscard]] bool IsChecked(int id) const { return ::IsDlgButtonChecked(Dialog(), id) != 0; }
    [[nodiscard]] std::wstring Text(int id) const {
        std::wstring text(static_cast<std::size_t>(::GetWindowTextLengthW(Control(id))) + 1, L'\0');
        text.resize(static_cast<std::size_t>(
            ::GetWindowTextW(Control(id), text.data(), static_cast<int>(text.size()))));
        return text;
    }
    void SetText(int id, const wchar_t* text) { ::SetWindowTextW(Control(id), text); }
    // What a click of the user does to a button or a check box: nothing when it is disabled.
    void Click(int id) {
        if (IsEnabled(id)) ::SendMessageW(Control(id), BM_CLICK, 0, 0);
    }
    // Changes a check box without a notification.
    void Check(int id, bool checked = true) {
        ::CheckDlgButton(Dialog(), id, checked ? BST_CHECKED : BST_UNCHECKED);
    }
    void Command(int id, int code) {
        ::SendMessageW(Dialog(), WM_COMMAND, MAKEWPARAM(id, code), reinterpret_cast<LPARAM>(Control(id)));
    }

    // What `action` makes the dialog do, as a ControlCalls writes it down: all, or the calls that begin with
    // one of `beginnings`. `answer` is for messages to controls.
    std::vector<std::string> Recorded(const std::function<void()>& action,
                                      const std::vector<std::string>& beginnings = {},
                                      ControlCalls::Answer answer = nullptr) {
        calls.Clear();
        const ControlCalls recorded(calls, std::move(answer));
        action();
        return beginnings.empty() ? calls.Calls() : Only(beginnings, calls.Calls());
    }
    // How `calls` has a message box.
    [[nodiscard]] static std::string MessageBoxCall(const std::string& text, const char* type,
                                                    const char* owner = "main",
                                                    const std::string& caption = "Talvenor") {
        return std::string("MessageBoxW owner=") + owner + " text=" + text + " caption=" + caption +
               " type=" + type;
    }

    // The file list.
    // Tells the dialog that something of a row has changed, as the list does.
    void ReportChange(int row, UINT oldState = 0, UINT newState = 0, UINT kind = LVIF_STATE) {
        NMLISTVIEW change = {};
        change.hdr = {Control(IDC_FILE_LIST), IDC_FILE_LIST, static_cast<UINT>(LVN_ITEMCHANGED)};
        change.iItem = row;
        change.uChanged = kind;
        change.uOldState = oldState;
        change.uNewState = newState;
        ::SendMessageW(Dialog(), WM_NOTIFY, IDC_FILE_LIST, reinterpret_cast<LPARAM>(&change));
    }
    LRESULT SendList(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
        return ::SendMessageW(Control(IDC_FILE_LIST), message, wParam, lParam);
    }
    // The width of its client area.
    [[nodiscard]] int ListWidth() const {
        RECT client = {};
        ::GetClientRect(Control(IDC_FILE_LIST), &client);
        return client.right;
    }
    [[nodiscard]] int RowCount() const { return static_cast<int>(SendList(LVM_GETITEMCOUNT)); }
    [[nodiscard]] std::wstring Cell(int row, int column) const {
        std::wstring text(40000, L'\0');
        LVITEMW item = {};
        item.iSubItem = column;
        item.pszText = text.data();
        item.cchTextMax = static_cast<int>(text.size());
        const LRESULT length =
            SendList(LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
        text.resize(static_cast<std::size_t>(length));
        return text;
    }
    [[nodiscard]] std::vector<std::wstring> Column(int column) const {
        std::vector<std::wstring> cells;
        for (int row = 0; row < RowCount(); ++row) cells.push_back(Cell(row, column));
        return cells;
    }
    [[nodiscard]] int SelectedRow() const {
        return static_cast<int>(SendList(LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
    }
    [[nodiscard]] int ColumnWidth(int column) const {
        return static_cast<int>(SendList(LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(column)));
    }
    // Adds a row as it is: no filter of names, no limit of length.
    void InsertRow(std::wstring path) {
        LVITEMW item = {};
        item.mask = LVIF_TEXT;
        item.pszText = path.data();
        SendList(LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
    }
    void SelectRow(int row) { SetRowState(row, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED); }
    void ClearSelection() { SetRowState(-1, 0, LVIS_SELECTED); }
    void AllowSeveralSelectedRows() {
        const HWND list = Control(IDC_FILE_LIST);
        ::SetWindowLongPtrW(list, GWL_STYLE, ::GetWindowLongPtrW(list, GWL_STYLE) & ~LVS_SINGLESEL);
    }
    void SetRowState(int row, UINT state, UINT mask) {
        LVITEMW item = {};
        item.state = state;
        item.stateMask = mask;
        SendList(LVM_SETITEMSTATE, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
    }
    void PressListKey(WORD key) {
        SendList(WM_KEYDOWN, key, 1);
        SendList(WM_KEYUP, key, 1);
    }
    // Sends the list a drop of these paths.
    void Drop(const std::vector<std::wstring>& paths) {
        const DroppedFiles drop(paths);
        SendList(WM_DROPFILES, reinterpret_cast<WPARAM>(drop.Get()));
    }

    // Serves messages until `condition` holds or ten seconds are over.
    bool WaitFor(const std::function<bool()>& condition) {
        return PumpUntil(condition, std::chrono::seconds(10));
    }

    TemporaryFolder folder;
    CMessageLoop loop;
    std::unique_ptr<CMainDlg> dialog;

    static inline CallRecord calls;
    static inline int messageAnswer = IDOK;
    static inline std::wstring programPath;

private:
    HWND m_created = nullptr;  // the dialog
    Replaced m_moduleFileName = REPLACE_IMPORT(GetModuleFileNameW, [](HMODULE, LPWSTR path, DWORD size) {
        ::lstrcpynW(path, programPath.c_str(), static_cast<int>(size));
        return std::min(static_cast<DWORD>(programPath.size()), size);
    });
    Replaced m_messageBox =
        REPLACE_IMPORT(MessageBoxW, [this](HWND owner, LPCWSTR text, LPCWSTR caption, UINT type) {
            const char* const name = !owner ? "none" : owner == m_created ? "main" : "other";
            const auto shown = [](LPCWSTR value) { return value ? Utf8(value) : "(null)"; };
            calls.Add(std::string("MessageBoxW owner=") + name + " text=" + shown(text) +
                      " caption=" + shown(caption) + " type=" + Hex(type));
            return messageAnswer;
        });
    Replaced m_beep = REPLACE_IMPORT(Beep, [](DWORD frequency, DWORD duration) {
        calls.Add(CallText("Beep", frequency, duration));
        return TRUE;
    });
};
