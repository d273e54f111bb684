// "Ouvrir le dossier de destination" starts the system's explorer, and no other of that name that somebody
// has planted, as in a download folder.
//
// Wine's shell takes the explorer of its system folder, where Windows has none, before any other. These tests
// run with WINEDLLOVERRIDES saying that an explorer.exe has to be a file of its own (CMakeLists.txt): the
// shell then goes on to look where it does on Windows.
#include "tests/app/app_fixture.h"

#include <shellapi.h>

namespace {

using testing::Each;
using testing::ElementsAre;
using testing::StrCaseEq;

std::wstring SystemsOwn() {
    wchar_t folder[MAX_PATH] = {};
    if (!::GetSystemWindowsDirectoryW(folder, MAX_PATH))
        driver::FailCall("GetSystemWindowsDirectoryW", ::GetLastError());
    return folder + std::wstring(L"\\explorer.exe");
}

// Each explorer, also the system's own, is a stand-in that writes down which file it is.
class SystemExplorer : public AppTest {
protected:
    void SetUp() override {
        if (!UnderWine()) GTEST_SKIP() << "a real Windows keeps its explorer";
        m_systemsOwn.emplace(SystemsOwn(), m_standIn);
    }
    // Returns its path.
    std::wstring PlantIn(const std::wstring& folder) {
        const std::wstring path = folder + L"\\explorer.exe";
        std::filesystem::copy_file(m_standIn, path);
        return path;
    }
    // Waits until so many have been started.
    [[nodiscard]] std::vector<std::wstring> Started(std::size_t count) const {
        EXPECT_TRUE(Comes([&] { return Runs().size() >= count; }));
        std::vector<std::wstring> programs;
        for (const RecordedRun& run : Runs()) programs.push_back(run.at(L"program"));
        return programs;
    }

private:
    const std::wstring m_standIn = Equipment(L"stand_in_converter.exe");
    std::optional<driver::SystemProgramSwap> m_systemsOwn;
};

TEST_F(SystemExplorer, IsStartedAndNotTheOneBesideTheProgramNorThatOfTheCurrentDirectory) {
    startOptions.directory = installed.PdfFolder();
    Start();
    Window().Check(IDC_OUTPUT_FOLDER_CHECK);
    Window().Type(IDC_OUTPUT_FOLDER, installed.PdfFolder());
    ASSERT_TRUE(Comes([&] { return IsEnabled(IDC_OPEN_DESTINATION); }));
    std::size_t clicks = 0;
    for (const std::wstring& folder : {installed.Folder(), installed.PdfFolder()}) {
        const std::wstring planted = PlantIn(folder);
        driver::Click(Control(IDC_OPEN_DESTINATION));
        EXPECT_THAT(Started(++clicks), Each(StrCaseEq(SystemsOwn())));
        EXPECT_EQ(Window().OpenDialog(), nullptr);
        std::filesystem::remove(planted);
    }
}

// Without care it would be another: here, for the test program itself.
TEST_F(SystemExplorer, ByItsBareNameIsThePlantedOne) {
    const std::wstring planted = PlantIn(installed.PdfFolder());
    const driver::ExchangedVariables variables(startOptions.environment);
    const CurrentFolder current(installed.PdfFolder());
    SHELLEXECUTEINFOW request = {};
    request.cbSize = sizeof request;
    request.fMask = SEE_MASK_FLAG_NO_UI | SEE_MASK_NOCLOSEPROCESS;
    request.lpFile = L"explorer.exe";
    EXPECT_TRUE(::ShellExecuteExW(&request)) << ::GetLastError();
    const UniqueHandle started(request.hProcess);
    EXPECT_THAT(Started(1), ElementsAre(StrCaseEq(planted)));
    if (started) ::TerminateProcess(started.Get(), 0);  // the real one would stay
}

}  // namespace
