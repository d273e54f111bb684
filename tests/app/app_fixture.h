// The common ground of the application tests: an installed program, started and driven by the test.
#pragma once
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <windows.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tests/app/installed_program.h"
#include "tests/app/recorded_run.h"
#include "tests/app/small_pdf.h"
#include "tests/equipment/file_bytes.h"
#include "tests/equipment/list_reader.h"
#include "tests/equipment/main_window.h"
#include "tests/equipment/program.h"
#include "tests/equipment/system_program_swap.h"
#include "tests/equipment/text.h"
#include "tests/equipment/wait_until.h"
#include "tests/equipment/window_driver.h"
#include "tests/equipment/wine.h"

// How long anything may take that a person does not wait for: generous, for the machine may be busy.
constexpr driver::Milliseconds kSoon{20'000};

class AppTest : public testing::Test {
protected:
    explicit AppTest(Converter converter = Converter::StandIn, const wchar_t* folderName = L"Programme");
    // Ends the program with everything it started. One that had crashed fails the test.
    ~AppTest() override;

    // Starts the program and waits for its window. The stand-ins record what happens to them.
    void Start();
    // The same with files in the list and Convertir enabled: drops them, then opens and cancels the add
    // dialog.
    void StartWith(const std::vector<std::wstring>& paths);
    // The same with consoles hidden and the batch begun.
    void StartHiddenBatch(const std::vector<std::wstring>& paths);
    // The same without waiting, for a start that shows no main window.
    void Launch();

    [[nodiscard]] const driver::Program& Process() const { return *m_program; }
    [[nodiscard]] const driver::MainWindow& Window() const { return *m_window; }
    [[nodiscard]] HWND Control(int controlId) const { return m_window->Control(controlId); }
    [[nodiscard]] HWND List() const { return Control(IDC_FILE_LIST); }
    [[nodiscard]] std::wstring Text(int controlId) const { return driver::Text(Control(controlId)); }
    [[nodiscard]] bool IsEnabled(int controlId) const { return driver::IsEnabled(Control(controlId)); }
    [[nodiscard]] bool IsChecked(int controlId) const { return driver::IsChecked(Control(controlId)); }
    [[nodiscard]] std::vector<std::wstring> Durations() const { return driver::ColumnTexts(List(), 1); }
    [[nodiscard]] std::vector<RecordedRun> Runs() const { return ReadRuns(installed.Record()); }

    // Names files in the open dialog as a person types them, and accepts.
    void AddByDialog(const std::wstring& names) const;
    // Presses Convertir, waits for the message at the end and closes it.
    void Convert(driver::Milliseconds limit = driver::Milliseconds(60'000)) const;
    // The same for a batch that has begun.
    void CompleteBatch(driver::Milliseconds limit = kSoon) const;
    // Waits for a dialog or message box in front of the window.
    [[nodiscard]] HWND WaitForDialog() const;
    // The same, then presses a button of it and waits until it is gone.
    void AnswerDialog(int buttonId) const;
    // Presses the stop button, confirms, and waits until the window is idle.
    void Stop() const;
    // Waits until the window shows no batch, and no message box either.
    [[nodiscard]] bool BecomesIdle(driver::Milliseconds limit = kSoon) const;

    // Waits for a condition; false when it does not hold in time.
    template <class Condition>
    [[nodiscard]] static bool Comes(Condition&& condition, driver::Milliseconds limit = kSoon) {
        return driver::WaitUntil(condition, limit);
    }

    // Puts another program in the command interpreter's place until the program has ended. Under Wine only.
    void ReplaceInterpreter(const std::wstring& replacement);

    InstalledProgram installed;
    driver::StartOptions startOptions;

private:
    std::unique_ptr<driver::SystemProgramSwap> m_interpreter;  // in use as long as the program
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
