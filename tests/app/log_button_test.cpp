// The log button, with the system's own shell.
#include "tests/app/app_fixture.h"

namespace {

class LogButton : public AppTest {};

TEST_F(LogButton, ReportsALogThatHasVanished) {
    driver::WriteFileBytes(installed.Log(), "left by an earlier run");
    Start();
    ASSERT_TRUE(::DeleteFileW(installed.Log().c_str()));
    driver::Click(Control(IDC_OPEN_LOG));
    // The shell may report it in its own words first, then the program does.
    if (driver::Text(WaitForDialog()) != L"Talvenor") AnswerDialog(IDOK);
    const HWND message = WaitForDialog();
    EXPECT_EQ(driver::Text(message), L"Talvenor");
    EXPECT_THAT(driver::AllText(message), testing::HasSubstr(L"\nErreur ShellExecute : "));
    AnswerDialog(IDOK);
    EXPECT_FALSE(Process().HasEnded());
}

}  // namespace
