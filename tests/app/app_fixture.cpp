#include "tests/app/app_fixture.h"

#include "tests/equipment/failure.h"
#include "tests/equipment/handle.h"

namespace {

constexpr DWORD kOtherCopyRuns = 0;

// A copy started now would only end: another program has the mutex, or an earlier test left its own copy.
bool AnotherCopyRuns() {
    const driver::UniqueHandle mutex(
        ::OpenMutexW(SYNCHRONIZE, FALSE, L"{6E2F0C41-93B7-4D58-A1C6-2B7E95D0F384}"));
    return static_cast<bool>(mutex);
}

}  // namespace

AppTest::AppTest(Converter converter, const wchar_t* folderName) : installed(converter, folderName) {
    startOptions.environment[L"TALVENOR_STANDIN_OUT"] = installed.Record();
    startOptions.environment[L"TALVENOR_INTERPRETER_OUT"] = installed.Record();
}

AppTest::~AppTest() {
    if (!m_program) return;
    // What the program started ends too, and is gone before its files are removed.
    if (!m_program->HasEnded()) m_program->EndTree();
    const auto code = m_program->WaitForExit(kSoon);
    EXPECT_TRUE(code == driver::kExitCodeOfQuit || code == kOtherCopyRuns || code == driver::kEndedByDriver)
        << "the program ended with code " << (code ? std::to_string(*code) : "none");
    m_window.reset();
    m_program.reset();
}

void AppTest::Launch() {
    m_window.reset();
    m_program.reset();
    if (!driver::WaitUntil([] { return !AnotherCopyRuns(); }, kSoon))
        throw driver::Failure("another copy of the program runs in this session");
    m_program = std::make_unique<driver::Program>(installed.Program(), startOptions);
}

void AppTest::Start() {
    Launch();
    m_window.emplace(*m_program);
}

void AppTest::StartWith(const std::vector<std::wstring>& paths) {
    Start();
    m_window->DropPdfs(paths);
    m_window->OpenAndCancelAddDialog();
}

void AppTest::StartHiddenBatch(const std::vector<std::wstring>& paths) {
    StartWith(paths);
    m_window->Check(IDC_HIDE_OUTPUT);
    m_window->StartBatch();
}

void AppTest::AddByDialog(const std::wstring& names) const {
    driver::Click(Control(IDC_ADD));
    const HWND dialog = WaitForDialog();
    const HWND open = driver::Control(dialog, IDOK);
    ASSERT_TRUE(Comes([&] { return driver::IsVisible(open) && driver::IsEnabled(open); }));
    driver::SetText(driver::NameEditOfOpenDialog(dialog), names);
    driver::Click(open);
    ASSERT_TRUE(Comes([&] { return !::IsWindow(dialog) && driver::IsEnabled(m_window->Window()); }));
    driver::Ask(m_window->Window(), WM_NULL);
}

void AppTest::Convert(driver::Milliseconds limit) const {
    m_window->StartBatch();
    CompleteBatch(limit);
}

void AppTest::CompleteBatch(driver::Milliseconds limit) const {
    try {
        m_window->CloseCompletion(m_window->WaitForCompletion(limit));
    } catch (const driver::Failure& failure) {
        // Where it stopped, and how far the last converter got, show why.
        std::string state = std::string(failure.what()) + "\n";
        for (const std::wstring& duration : Durations()) state += "row: " + driver::ToUtf8(duration) + "\n";
        for (const RecordedRun& run : Runs())
            state += run.ended ? "run ended with " + std::to_string(*run.ended) + "\n" : "run without end\n";
        throw driver::Failure(state);
    }
}

HWND AppTest::WaitForDialog() const {
    return driver::WaitForDialog(*m_program, m_window->Window(), kSoon);
}

void AppTest::AnswerDialog(int buttonId) const {
    const HWND dialog = WaitForDialog();
    driver::PressDialogButton(dialog, buttonId);
    ASSERT_TRUE(Comes([&] { return !::IsWindow(dialog); })) << "the dialog stays";
}

void AppTest::Stop() const {
    driver::Click(Control(IDCANCEL));
    AnswerDialog(IDYES);
    ASSERT_TRUE(BecomesIdle());
}

bool AppTest::BecomesIdle(driver::Milliseconds limit) const {
    return Comes([&] { return !m_window->IsRunning() && m_window->OpenDialog() == nullptr; }, limit);
}

void AppTest::ReplaceInterpreter(const std::wstring& replacement) {
    m_interpreter = driver::SwapInterpreter(replacement);
}
