// The button of the log: when it is there, and what it opens.
#include "tests/window/main_window_fixture.h"
#include "tests/window/path_steps.h"
#include "tests/window/scripted_shell.h"

#include <filesystem>
#include <fstream>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class LogButtonTest : public MainWindowFixture {
protected:
    void OpenLog() {
        if (!dialog) Create();
        Command(IDC_OPEN_LOG, BN_CLICKED);
    }

    ScriptedShell shell;
};

TEST_F(LogButtonTest, IsEnabledAndShownAtTheStartWhenThereIsALog) {
    std::ofstream(folder.Path() / "TalvenorLog.txt") << "earlier";
    EXPECT_THAT(Recorded([&] { Create(); }, {"EnableWindow 1024", "ShowWindow 1024"}),
                ElementsAre("EnableWindow 1024 1", "ShowWindow 1024 5"));
}

TEST_F(LogButtonTest, OpensTheLogByItsOwnProgram) {
    OpenLog();
    ASSERT_THAT(shell.requests, SizeIs(1));
    ExpectPlainRequest(shell.requests[0], Dialog(), folder.File(L"TalvenorLog.txt"), L"(null)");
    EXPECT_THAT(calls.Calls(), IsEmpty());
}

TEST_F(LogButtonTest, TakesTheExtensionOffTheProgramsPathBeforeItsName) {
    Create();
    programPath = L"C:\\Talvenor\\Talvenor.exe";
    const PathSteps path;
    OpenLog();
    EXPECT_THAT(path.steps, ElementsAre("PathRemoveExtensionW C:\\Talvenor\\Talvenor.exe",
                                        "PathRemoveFileSpecW C:\\without\\extension"));
    EXPECT_EQ(shell.requests.at(0).file, L"C:\\folder\\TalvenorLog.txt");
}

}  // namespace
