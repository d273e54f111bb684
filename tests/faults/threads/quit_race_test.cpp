// The program as it ships is left while a stopped worker waits for its converter, which ends just then: the
// worker wakes while the process is ending, or just before.
#include "tests/faults/options.h"

#include "tests/equipment/wine.h"
#include "tests/equipment/system_program_swap.h"
#include "tests/equipment/main_window.h"
#include "tests/equipment/program.h"
#include "tests/equipment/window_driver.h"
#include "tests/faults/harness/child_process.h"
#include "tests/faults/harness/platform.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <string>

namespace {

constexpr driver::Milliseconds kSoon{20'000};

class QuitRace : public testing::Test {
protected:
    QuitRace() {
        std::ofstream(std::filesystem::path(platform.File(L"a.pdf"))) << "%PDF-1.4";
        options.environment[L"TALVENOR_STANDIN_OUT"] = Record();
        options.environment[L"TALVENOR_INTERPRETER_OUT"] = Record();
    }

    [[nodiscard]] std::wstring Record() const { return platform.File(L"runs.txt"); }
    [[nodiscard]] static std::wstring Equipment(const wchar_t* name) {
        return TestFolder() / TALVENOR_EQUIPMENT / name;
    }

    // A batch that has been stopped, at the moment when its worker waits, or has just ceased to.
    void QuitAfterStop(DWORD delayMs) {
        std::filesystem::remove(Record());
        const driver::Program program(platform.File(L"Talvenor.exe"), options);
        const driver::MainWindow window(program);
        window.DropPdfs({platform.File(L"a.pdf")});
        window.OpenAndCancelAddDialog();
        window.StartBatch();
        ASSERT_TRUE(driver::WaitUntil([&] { return std::filesystem::exists(Record()); }, kSoon));
        driver::Click(window.Control(IDCANCEL));
        driver::PressDialogButton(driver::WaitForDialog(program, window.Window(), kSoon), IDYES);
        ASSERT_TRUE(driver::WaitUntil([&] { return !window.IsRunning() && !window.OpenDialog(); }, kSoon));
        WaitPrecisely(delayMs);
        EXPECT_EQ(window.Quit(), 2u) << "left after " << delayMs << " ms";
    }

    // What is provoked here is a matter of milliseconds.
    static void WaitPrecisely(DWORD milliseconds) {
        const auto end = std::chrono::steady_clock::now() + driver::Milliseconds(milliseconds);
        while (std::chrono::steady_clock::now() < end) ::SwitchToThread();
    }

    [[nodiscard]] static int Times() { return IsFull() ? 40 : 4; }

    const Platform platform;  // for its folder with the program in it
    driver::StartOptions options;
    std::mt19937 random{20261116};  // NOLINT(cert-msc51-cpp): the same delays in every run
};

// The interpreter ends at the close request of the stop, so the worker wakes about when the user presses
// again.
TEST_F(QuitRace, ConverterEndsAtTheStop) {
    if (!UnderWine()) GTEST_SKIP() << "a real Windows keeps its interpreter";
    const auto interpreter = driver::SwapInterpreter(Equipment(L"stand_in_interpreter.exe"));
    options.environment[L"TALVENOR_INTERPRETER_MS"] = L"60000";
    std::uniform_int_distribution<DWORD> delay(0, 40);
    for (int i = 0; i < Times() && !HasFailure(); ++i) QuitAfterStop(delay(random));
}

// The converter does not hear of the stop and ends by itself, somewhere around the end of the program.
TEST_F(QuitRace, ConverterEndsByItself) {
    std::filesystem::copy_file(Equipment(L"stand_in_converter.exe"), platform.File(L"pdf2djvu.exe"),
                               std::filesystem::copy_options::overwrite_existing);
    std::uniform_int_distribution<DWORD> runs(300, 900);
    std::uniform_int_distribution<DWORD> delay(0, 300);
    for (int i = 0; i < Times() && !HasFailure(); ++i) {
        options.environment[L"TALVENOR_STANDIN_MS"] = std::to_wstring(runs(random));
        QuitAfterStop(delay(random));
    }
}

}  // namespace
