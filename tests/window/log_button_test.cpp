// The button of the log: when it is there, and what it opens.
#include "tests/window/main_window_fixture.h"
#include "tests/window/path_steps.h"
#include "tests/window/scripted_shell.h"

#include <fstream>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

using LogButtonTest = MainWindowFixture;

TEST_F(LogButtonTest, IsEnabledAndShownAtTheStartWhenThereIsALog) {
    std::ofstream(folder.Path() / "TalvenorLog.txt") << "earlier";
    EXPECT_THAT(Recorded([&] { Create(); }, {"EnableWindow 1024", "ShowWindow 1024"}),
                ElementsAre("EnableWindow 1024 1", "ShowWindow 1024 5"));
}

TEST_F(LogButtonTest, OpensTheLogByItsOwnProgramAndTakesTheExtensionOffTheProgramsPathBeforeItsName) {
    Create();
    programPath = L"C:\\Talvenor\\Talvenor.exe";
    ScriptedShell shell;
    PathSteps path;
    Command(IDC_OPEN_LOG, BN_CLICKED);
    EXPECT_THAT(path.steps, ElementsAre("PathRemoveExtensionW C:\\Talvenor\\Talvenor.exe",
                                        "PathRemoveFileSpecW C:\\without\\extension"));
    ASSERT_THAT(shell.requests, SizeIs(1));
    ExpectPlainRequest(shell.requests[0], Dialog(), L"C:\\folder\\TalvenorLog.txt", L"(null)");
    EXPECT_THAT(calls.Calls(), IsEmpty());
}

}  // namespace
