#include "tests/window/batch_fixture.h"

#include <shlobj.h>
#include <shlwapi.h>

#include <fstream>

BatchFixture::BatchFixture() {
    s_current = this;
    stopAnswer = IDYES;
    Create();
}

BatchFixture::~BatchFixture() {
    converters.ReleaseAll();
    TakeQuitMessage();  // nothing is waited for while there is one
    // Before the window is: a worker that ends between the look at the flag and the stop would make a quit of
    // it.
    EXPECT_TRUE(WaitFor([&] { return !dialog->HasWorker(); })) << "a worker did not end";
    stopAnswer = IDYES;
    Destroy();
}

void BatchFixture::AddFiles(const std::vector<std::wstring>& paths) {
    Drop(paths);
    Click(IDC_ADD);
    ASSERT_TRUE(IsEnabled(IDOK));
}

void BatchFixture::StartHeldBatch() {
    AddFiles({L"C:\\in\\a.pdf", L"C:\\in\\b.pdf"});
    converters.Plan({{.held = true, .processId = 777}, {.processId = 888}});
    PressConvert();
    WaitForConverter(1);
}

void BatchFixture::RunBatch() {
    PressConvert();
    WaitForEnd();
}

void BatchFixture::WaitForConverter(int number) {
    const std::string wait = "WaitForSingleObject process " + std::to_string(number) + ' ';
    ASSERT_TRUE(WaitFor([&] { return worker.Count(wait) > 0; }))
        << "converter " << number << " did not start";
}

void BatchFixture::WaitForEnd() {
    ASSERT_TRUE(WaitFor([&] { return !dialog->HasWorker(); })) << "the worker did not end";
}

int BatchFixture::TakeQuitMessage() {
    MSG message;
    if (!::PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE)) return -1;
    return static_cast<int>(message.wParam);
}

void BatchFixture::Tick(DWORD tick, WPARAM timerId) {
    converters.tick = tick;
    ::SendMessageW(Dialog(), WM_TIMER, timerId, 0);
}

void BatchFixture::WriteLog(const std::string& bytes) const {
    std::ofstream(std::filesystem::path(LogFile()), std::ios::binary | std::ios::app) << bytes;
}

std::vector<std::string> BatchFixture::Boxes() const {
    std::vector<std::string> texts;
    for (const std::string& call : calls.Calls()) {
        const std::size_t text = call.find(" text=");
        const std::size_t caption = call.find(" caption=");
        if (call.starts_with("MessageBoxW")) texts.push_back(call.substr(text + 6, caption - text - 6));
    }
    return texts;
}

int WINAPI BatchFixture::AnswerBox(HWND owner, LPCWSTR text, LPCWSTR caption, UINT type) {
    s_current->m_box.Original<decltype(::MessageBoxW)>()(owner, text, caption, type);  // writes it down
    s_current->worker.Note("MessageBoxW " + Utf8(text));
    return (type & MB_YESNO) ? stopAnswer.load() : IDOK;
}

BOOL WINAPI BatchFixture::CancelOpenDialog(LPOPENFILENAMEW /*dialog*/) {
    return FALSE;
}

BOOL WINAPI BatchFixture::RecordDelete(LPCWSTR path) {
    s_current->worker.Note("DeleteFileW " + Utf8(path));
    return s_current->m_delete.Original<decltype(::DeleteFileW)>()(path);
}

void WINAPI BatchFixture::RecordStrip(LPWSTR path) {
    s_current->worker.Note("PathStripPathW " + Utf8(path));
    s_current->m_strip.Original<decltype(::PathStripPathW)>()(path);
}

HRESULT WINAPI BatchFixture::AnswerFolder(HWND owner, int folder, HANDLE token, DWORD flags, LPWSTR path) {
    char call[100];
    ::wsprintfA(call, "SHGetFolderPathW owner=%s folder=0x%X token=%s flags=%d", owner ? "some" : "none",
                folder, token ? "some" : "none", flags);
    s_current->worker.Note(call);
    ::lstrcpynW(path, L"C:\\système", MAX_PATH);
    return S_OK;
}
