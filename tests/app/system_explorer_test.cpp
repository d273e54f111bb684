// "Ouvrir le dossier de destination" starts the system's explorer, and no other of that name that somebody
// has planted, as in a download folder.
//
// Wine's shell takes the explorer of its system folder, where Windows has none, before any other. These tests
// run with WINEDLLOVERRIDES saying that an explorer.exe has to be a file of its own (CMakeLists.txt): the
// shell then goes on to look where it does on Windows.
#include "tests/app/app_fixture.h"

#include <shellapi.h>

namespace {

std::wstring SystemsOwnFolder() {
    wchar_t folder[MAX_PATH] = {};
    if (!::GetSystemWindowsDirectoryW(folder, MAX_PATH))
        driver::FailCall("GetSystemWindowsDirectoryW", ::GetLastError());
    return folder;
}

class SystemExplorer : public AppTest {
protected:
    // The system's own is a witness, too.
    void SetUp() override {
        if (!UnderWine()) GTEST_SKIP() << "a real Windows keeps its explorer";
        m_systemsOwn.emplace(windows + L"\\explorer.exe", Equipment(L"witness_program.exe"));
    }
    void TearDown() override { ::DeleteFileW(Sign(windows).c_str()); }  // there may be none

    static void Plant(const std::wstring& folder) {
        std::filesystem::copy(Equipment(L"witness_program.exe"), folder + L"\\explorer.exe");
    }
    static bool HasRun(const std::wstring& folder) { return driver::FileExists(Sign(folder)); }

    const std::wstring windows = SystemsOwnFolder();

private:
    // A witness leaves it beside itself when it runs.
    static std::wstring Sign(const std::wstring& folder) { return folder + L"\\explorer.exe.ran"; }

    std::optional<driver::SystemProgramSwap> m_systemsOwn;
};

TEST_F(SystemExplorer, IsStartedAndNotTheOneBesideTheProgramNorThatOfTheCurrentDirectory) {
    Plant(installed.Folder());
    Plant(installed.PdfFolder());
    startOptions.directory = installed.PdfFolder();
    Start();
    Window().Check(IDC_OUTPUT_FOLDER_CHECK);
    Window().Type(IDC_OUTPUT_FOLDER, installed.PdfFolder());
    ASSERT_TRUE(Comes([&] { return IsEnabled(IDC_OPEN_DESTINATION); }));
    driver::Click(Control(IDC_OPEN_DESTINATION));
    ASSERT_TRUE(Comes([&] {
        return HasRun(windows) || HasRun(installed.Folder()) || HasRun(installed.PdfFolder());
    })) << "none is started";
    EXPECT_TRUE(HasRun(windows));
    EXPECT_FALSE(HasRun(installed.Folder()));
    EXPECT_FALSE(HasRun(installed.PdfFolder()));
    EXPECT_EQ(Window().OpenDialog(), nullptr);
}

// Without care it would be another: here, for the test program itself.
TEST_F(SystemExplorer, ByItsBareNameIsThePlantedOne) {
    Plant(installed.PdfFolder());
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(installed.PdfFolder());
    SHELLEXECUTEINFOW request = {};
    request.cbSize = sizeof request;
    request.fMask = SEE_MASK_FLAG_NO_UI | SEE_MASK_NOCLOSEPROCESS;
    request.lpFile = L"explorer.exe";
    EXPECT_TRUE(::ShellExecuteExW(&request)) << ::GetLastError();
    std::filesystem::current_path(before);
    const driver::UniqueHandle started(request.hProcess);
    EXPECT_TRUE(Comes([&] { return HasRun(installed.PdfFolder()); }));
    if (started) ::TerminateProcess(started.Get(), 0);  // the real one would stay
}

}  // namespace
