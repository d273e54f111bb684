// The common ground of the application tests: an installed program, started and driven by the test.
#pragma once
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <windows.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/unique_resource.h"
#include "tests/app/installed_program.h"
#include "tests/app/recorded_run.h"
#include "tests/app/small_pdf.h"
#include "tests/equipment/failure.h"
#include "tests/equipment/file_bytes.h"
#include "tests/equipment/list_reader.h"
#include "tests/equipment/main_window.h"
#include "tests/equipment/program.h"
#include "tests/equipment/system_program_swap.h"
#include "tests/equipment/text.h"
#include "tests/equipment/wait_until.h"
#include "tests/equipment/window_driver.h"
#include "tests/equipment/wine.h"

class AppTest : public testing::Test {
protected:
    explicit AppTest(Converter converter = Converter::StandIn) : installed(converter) {
        startOptions.environment[L"TALVENOR_STANDIN_OUT"] = installed.Record();
    }
    // Ends the program with everything it started, which is gone before its files are removed. One that had
    // crashed fails the test.
    ~AppTest() override {
        if (!m_program) return;
        if (!m_program->HasEnded()) m_program->EndTree();
        const DWORD code = m_program->WaitForExit().value_or(STILL_ACTIVE);
        EXPECT_TRUE(code == driver::kExitCodeOfQuit || code == driver::kEndedByDriver)
            << "the program ended with code " << code;
        m_program.reset();
    }

    // Starts the program and waits for its window. The stand-ins record what happens to them.
    void Start() {
        Launch();
        m_window.emplace(*m_program);
    }
    // The same with files in the list and Convertir enabled: drops them, then opens and cancels the add
    // dialog.
    void StartWith(const std::vector<std::wstring>& paths) {
        Start();
        m_window->DropPdfs(paths);
        m_window->OpenAndCancelAddDialog();
    }
    // The same with consoles hidden and the batch begun.
    void StartHiddenBatch(const std::vector<std::wstring>& paths) {
        StartWith(paths);
        m_window->Check(IDC_HIDE_OUTPUT);
        m_window->StartBatch();
    }
    // The same without waiting, for a start that shows no main window.
    void Launch() {
        m_window.reset();
        m_program.reset();
        // It would only end while another program has the mutex, or an earlier test's copy is left.
        driver::Await("no other copy of the program runs in this session", [] {
            return !UniqueHandle(::OpenMutexW(SYNCHRONIZE, FALSE, L"{6E2F0C41-93B7-4D58-A1C6-2B7E95D0F384}"));
        });
        m_program = std::make_unique<driver::Program>(installed.Program(), startOptions);
    }

    [[nodiscard]] const driver::Program& Process() const { return *m_program; }
    [[nodiscard]] const driver::MainWindow& Window() const { return *m_window; }
    [[nodiscard]] HWND Control(int controlId) const { return m_window->Control(controlId); }
    [[nodiscard]] HWND List() const { return Control(IDC_FILE_LIST); }
    [[nodiscard]] std::wstring Text(int controlId) const { return driver::Text(Control(controlId)); }
    [[nodiscard]] bool IsEnabled(int controlId) const { return driver::IsEnabled(Control(controlId)); }
    [[nodiscard]] bool IsChecked(int controlId) const { return driver::IsChecked(Control(controlId)); }
    [[nodiscard]] std::vector<std::wstring> Paths() const { return driver::ColumnTexts(List(), 0); }
    [[nodiscard]] std::vector<std::wstring> Durations() const { return driver::ColumnTexts(List(), 1); }
    [[nodiscard]] std::vector<RecordedRun> Runs() const { return ReadRuns(installed.Record()); }
    // All that a person can change but for the rows: texts, check boxes, and the row that is selected.
    [[nodiscard]] std::wstring State() const {
        std::wstring state = driver::AllText(m_window->Window());
        for (int id = IDC_ADD; id <= IDC_FILE_LIST; ++id) {
            const HWND control = driver::FindControl(m_window->Window(), id);
            if (control && driver::IsChecked(control)) state += L'\n' + std::to_wstring(id) + L" is checked";
        }
        return state + L"\nrow " + std::to_wstring(driver::SelectedRow(List()));
    }

    // Presses Convertir, waits for the message at the end and closes it.
    void Convert() const {
        m_window->StartBatch();
        CompleteBatch();
    }
    // The same for a batch that has begun.
    void CompleteBatch() const {
        m_window->CloseCompletion(m_window->WaitForCompletion(driver::Milliseconds(60'000)));
    }
    // Waits for a dialog or message box in front of the window.
    [[nodiscard]] HWND WaitForDialog() const { return m_window->WaitForDialog(); }
    // The same, then presses a button of it and waits until it is gone.
    void AnswerDialog(int buttonId) const { driver::AnswerDialog(WaitForDialog(), buttonId); }
    // Presses the stop button, confirms, and waits until the window is idle.
    void Stop() const {
        driver::Click(Control(IDCANCEL));
        AnswerDialog(IDYES);
        ASSERT_TRUE(BecomesIdle());
    }
    // Waits until the window shows no batch, and no message box either.
    [[nodiscard]] bool BecomesIdle() const {
        return Comes([&] { return !m_window->IsRunning() && m_window->OpenDialog() == nullptr; });
    }

    // Waits for a condition; false when it does not hold in time.
    [[nodiscard]] static bool Comes(auto&& condition, driver::Milliseconds limit = driver::kSoon) {
        return driver::WaitUntil(condition, limit);
    }

    // Puts the stand-in in the command interpreter's place until the program has ended. Under Wine only.
    void ReplaceInterpreter() {
        wchar_t folder[MAX_PATH] = {};
        if (!::GetSystemDirectoryW(folder, MAX_PATH))
            driver::FailCall("GetSystemDirectoryW", ::GetLastError());
        m_interpreter.emplace(folder + std::wstring(L"\\cmd.exe"), Equipment(L"stand_in_interpreter.exe"));
    }

    InstalledProgram installed;
    driver::StartOptions startOptions;

private:
    std::optional<driver::SystemProgramSwap> m_interpreter;  // in use as long as the program
    std::unique_ptr<driver::Program> m_program;
    std::optional<driver::MainWindow> m_window;
};

// With the converter that people use: under Wine the system's own, behind a bridge.
class RealConverterFixture : public AppTest {
protected:
    RealConverterFixture() : AppTest(Converter::Real) {}
    void SetUp() override {
        if (!UnderWine()) GTEST_SKIP() << "the bridge to the converter is a program for Wine";
    }
    [[nodiscard]] std::wstring RealPdf(const std::wstring& name, int pages = 2) const {
        return installed.MakePdf(name, SmallPdf(pages));
    }
    static void ExpectDjvu(const std::wstring& path) {
        ASSERT_TRUE(driver::FileExists(path)) << driver::ToUtf8(path);
        EXPECT_THAT(driver::ReadFileBytes(path), testing::StartsWith("AT&TFORM")) << driver::ToUtf8(path);
    }
};
