// "Ouvrir le dossier de destination" starts the system's explorer, and no other of that name that somebody
// has planted, as in a download folder.
//
// Wine's shell takes the explorer of its system folder, where Windows has none, before any other. These tests
// run with WINEDLLOVERRIDES saying that an explorer.exe has to be a file of its own (CMakeLists.txt): the
// shell then goes on to look where it does on Windows.
#include "tests/app/app_fixture.h"

#include <shellapi.h>

#include <memory>

#include "tests/equipment/failure.h"
#include "tests/equipment/file_bytes.h"
#include "tests/equipment/handle.h"
#include "tests/equipment/system_program_swap.h"
#include "tests/equipment/wine.h"

namespace {

using testing::ElementsAre;

constexpr wchar_t kName[] = L"explorer.exe";

std::wstring SystemsOwnFolder() {
    wchar_t folder[MAX_PATH] = {};
    if (!::GetSystemWindowsDirectoryW(folder, MAX_PATH))
        driver::FailCall("GetSystemWindowsDirectoryW", ::GetLastError());
    return folder;
}

// A witness leaves a file beside itself when it runs.
std::wstring Sign(const std::wstring& folder) {
    return folder + L"\\" + kName + L".ran";
}

class SystemExplorer : public AppTest {
protected:
    // The system's own is a witness, too.
    void SetUp() override {
        if (!UnderWine()) GTEST_SKIP() << "a real Windows keeps its explorer";
        m_systemsOwn = std::make_unique<driver::SystemProgramSwap>(m_windows + L"\\" + kName,
                                                                   Equipment(L"witness_program.exe"));
    }
    void TearDown() override { ::DeleteFileW(Sign(m_windows).c_str()); }  // there may be none

    static void Plant(const std::wstring& folder) {
        const std::wstring path = folder + L"\\" + kName;
        ASSERT_TRUE(::CopyFileW(Equipment(L"witness_program.exe").c_str(), path.c_str(), TRUE));
    }
    [[nodiscard]] bool SystemsOwnHasRun() const { return driver::FileExists(Sign(m_windows)); }
    [[nodiscard]] bool OneBesideTheProgramHasRun() const {
        return driver::FileExists(Sign(installed.Folder()));
    }
    [[nodiscard]] bool OneAmongThePdfsHasRun() const {
        return driver::FileExists(Sign(installed.PdfFolder()));
    }
    [[nodiscard]] bool AnyHasRun() const {
        return SystemsOwnHasRun() || OneBesideTheProgramHasRun() || OneAmongThePdfsHasRun();
    }
    void OpenDestination() const {
        Window().Tick(id::kOutputFolderBox);
        Window().Type(id::kOutputFolder, installed.PdfFolder());
        ASSERT_TRUE(Comes([&] { return IsEnabled(id::kOpenDestination); }));
        driver::Click(Control(id::kOpenDestination));
        ASSERT_TRUE(Comes([&] { return AnyHasRun(); })) << "none is started";
    }
    void ExpectOnlyTheSystemsOwn() const {
        EXPECT_TRUE(SystemsOwnHasRun());
        EXPECT_FALSE(OneBesideTheProgramHasRun());
        EXPECT_FALSE(OneAmongThePdfsHasRun());
        EXPECT_EQ(Window().OpenBox(), nullptr);
    }

private:
    const std::wstring m_windows = SystemsOwnFolder();
    std::unique_ptr<driver::SystemProgramSwap> m_systemsOwn;
};

TEST_F(SystemExplorer, IsStartedAndNotTheOneBesideTheProgram) {
    Plant(installed.Folder());
    Start();
    OpenDestination();
    ExpectOnlyTheSystemsOwn();
}

TEST_F(SystemExplorer, IsStartedAndNotTheOneInTheFolderThatTheOpenDialogLedTo) {
    Plant(installed.PdfFolder());
    const auto pdf = installed.MakePdf(L"a.pdf");
    Start();
    AddByDialog(pdf);
    Window().OpenAndCancelAddDialog();  // Wine's moves when it next opens, not when it closes
    ASSERT_THAT(driver::ColumnTexts(List(), 0), ElementsAre(pdf));
    OpenDestination();
    ExpectOnlyTheSystemsOwn();
}

TEST_F(SystemExplorer, IsStartedAndNotOneOfTwo) {
    Plant(installed.Folder());
    Plant(installed.PdfFolder());
    startOptions.directory = installed.PdfFolder();
    Start();
    OpenDestination();
    ExpectOnlyTheSystemsOwn();
}

// Without care it would be another: here, for the test program itself.
TEST_F(SystemExplorer, ByItsBareNameIsThePlantedOne) {
    Plant(installed.PdfFolder());
    wchar_t before[MAX_PATH] = {};
    ASSERT_NE(::GetCurrentDirectoryW(MAX_PATH, before), 0u);
    ASSERT_TRUE(::SetCurrentDirectoryW(installed.PdfFolder().c_str()));
    SHELLEXECUTEINFOW request = {};
    request.cbSize = sizeof request;
    request.fMask = SEE_MASK_FLAG_NO_UI | SEE_MASK_NOCLOSEPROCESS;
    request.lpFile = kName;
    EXPECT_TRUE(::ShellExecuteExW(&request)) << ::GetLastError();
    EXPECT_TRUE(::SetCurrentDirectoryW(before));
    const driver::UniqueHandle started(request.hProcess);
    EXPECT_TRUE(Comes([&] { return OneAmongThePdfsHasRun(); }));
    if (started) ::TerminateProcess(started.Get(), 0);  // the real one would stay
}

}  // namespace
