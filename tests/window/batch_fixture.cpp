#include "tests/window/batch_fixture.h"

#include <fstream>

BatchFixture::BatchFixture() {
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

std::vector<std::string> BatchFixture::MessageTexts() const {
    std::vector<std::string> texts;
    for (const std::string& call : calls.Calls()) {
        const std::size_t text = call.find(" text=");
        const std::size_t caption = call.find(" caption=");
        if (call.starts_with("MessageBoxW")) texts.push_back(call.substr(text + 6, caption - text - 6));
    }
    return texts;
}
