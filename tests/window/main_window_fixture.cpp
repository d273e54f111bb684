#include "tests/window/main_window_fixture.h"

#include "tests/support/dropped_files.h"

#include <fstream>

MainWindowFixture::MainWindowFixture() {
    programPath = folder.File(L"Talvenor.exe");
    std::ofstream(folder.Path() / "pdf2djvu.exe") << "stand-in";
    calls.Clear();
    messageAnswer = IDOK;
    CAppModule::Instance().Init(::GetModuleHandleW(nullptr));
    CAppModule::Instance().AddMessageLoop(loop);
}

MainWindowFixture::~MainWindowFixture() {
    Destroy();
    CAppModule::Instance().RemoveMessageLoop();
    CAppModule::Instance().Term();
}

void MainWindowFixture::Create() {
    dialog = std::make_unique<CMainDlg>();
    m_created = dialog->Create(nullptr);
    ASSERT_NE(m_created, nullptr);
}

void MainWindowFixture::Destroy() {
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

std::wstring MainWindowFixture::Text(int id) const {
    std::wstring text(static_cast<std::size_t>(::GetWindowTextLengthW(Control(id))) + 1, L'\0');
    text.resize(
        static_cast<std::size_t>(::GetWindowTextW(Control(id), text.data(), static_cast<int>(text.size()))));
    return text;
}

void MainWindowFixture::Click(int id) {
    if (IsEnabled(id)) ::SendMessageW(Control(id), BM_CLICK, 0, 0);
}

int MainWindowFixture::ListWidth() const {
    RECT client = {};
    ::GetClientRect(Control(IDC_FILE_LIST), &client);
    return client.right;
}

int MainWindowFixture::RowCount() const {
    return static_cast<int>(SendList(LVM_GETITEMCOUNT));
}

std::wstring MainWindowFixture::Cell(int row, int column) const {
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

std::vector<std::wstring> MainWindowFixture::Column(int column) const {
    std::vector<std::wstring> cells;
    for (int row = 0; row < RowCount(); ++row) cells.push_back(Cell(row, column));
    return cells;
}

int MainWindowFixture::SelectedRow() const {
    return static_cast<int>(SendList(LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
}

int MainWindowFixture::ColumnWidth(int column) const {
    return static_cast<int>(SendList(LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(column)));
}

void MainWindowFixture::InsertRow(std::wstring path) {
    LVITEMW item = {};
    item.mask = LVIF_TEXT;
    item.pszText = path.data();
    SendList(LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
}

void MainWindowFixture::SelectRow(int row) {
    SetRowState(row, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
}

void MainWindowFixture::AllowSeveralSelectedRows() {
    const HWND list = Control(IDC_FILE_LIST);
    ::SetWindowLongPtrW(list, GWL_STYLE, ::GetWindowLongPtrW(list, GWL_STYLE) & ~LVS_SINGLESEL);
}

void MainWindowFixture::SetRowState(int row, UINT state, UINT mask) {
    LVITEMW item = {};
    item.state = state;
    item.stateMask = mask;
    SendList(LVM_SETITEMSTATE, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
}

void MainWindowFixture::PressListKey(WORD key) {
    SendList(WM_KEYDOWN, key, 1);
    SendList(WM_KEYUP, key, 1);
}

void MainWindowFixture::Drop(const std::vector<std::wstring>& paths) {
    const DroppedFiles drop(paths);
    SendList(WM_DROPFILES, reinterpret_cast<WPARAM>(drop.Get()));
}
