// The request to switch the machine off: its steps, and that every failure is silent.
#include "tests/window/scripted_shutdown.h"

#include "ui/shutdown/shut_me_down_dlg.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;

constexpr char kOpen[] = "OpenProcessToken self access=0x28";
constexpr char kLookUp[] = "LookupPrivilegeValueW local SeShutdownPrivilege";
constexpr char kEnable[] = "AdjustTokenPrivileges token all=0 count=1 luid=5:19 attributes=2 previous=none";
constexpr char kInitiate[] = "InitiateSystemShutdownW machine=none message=none seconds=0 force=0 reboot=0";
constexpr char kDisable[] = "AdjustTokenPrivileges token all=0 count=1 luid=5:19 attributes=0 previous=none";

class ShutDownComputerTest : public testing::Test {
protected:
    CallRecord calls;  // a message box and a handle that is closed would be among them
    ScriptedShutdown system{calls};

private:
    std::unique_ptr<ReplacedImport> m_messageBox =
        Replace<decltype(::MessageBoxW)>("MessageBoxW", [this](HWND, LPCWSTR, LPCWSTR, UINT) {
            calls.Add("MessageBoxW");
            return IDOK;
        });
    std::unique_ptr<ReplacedImport> m_close = Replace<decltype(::CloseHandle)>("CloseHandle", [this](HANDLE) {
        calls.Add("CloseHandle");
        return TRUE;
    });
};

TEST_F(ShutDownComputerTest, EnablesThePrivilegeAsksAndDisablesItAndLeavesTheTokenOpen) {
    EXPECT_TRUE(CShutMeDownDlg::ShutDownComputer());
    EXPECT_THAT(calls.Calls(), ElementsAre(kOpen, kLookUp, kEnable, kInitiate, kDisable));
}

TEST_F(ShutDownComputerTest, TriesNothingMoreWithoutAToken) {
    system.opensToken = false;
    EXPECT_FALSE(CShutMeDownDlg::ShutDownComputer());
    EXPECT_THAT(calls.Calls(), ElementsAre(kOpen));
}

TEST_F(ShutDownComputerTest, DoesNotLookAtAnUnknownPrivilege) {
    system.knowsPrivilege = false;
    EXPECT_TRUE(CShutMeDownDlg::ShutDownComputer());
    EXPECT_THAT(calls.Calls(),
                ElementsAre(kOpen, kLookUp,
                            "AdjustTokenPrivileges token all=0 count=1 luid=0:0 attributes=2 previous=none",
                            kInitiate,
                            "AdjustTokenPrivileges token all=0 count=1 luid=0:0 attributes=0 previous=none"));
}

TEST_F(ShutDownComputerTest, MakesNoRequestForAnAccountWithoutThePrivilege) {
    system.adjustError = ERROR_NOT_ALL_ASSIGNED;  // which comes with a success
    EXPECT_FALSE(CShutMeDownDlg::ShutDownComputer());
    EXPECT_THAT(calls.Calls(), ElementsAre(kOpen, kLookUp, kEnable));
}

TEST_F(ShutDownComputerTest, LooksAtTheLastErrorAndNotAtTheResultOfTheAdjustment) {
    system.adjustSucceeds = false;
    EXPECT_TRUE(CShutMeDownDlg::ShutDownComputer());
    EXPECT_THAT(calls.Calls(), ElementsAre(kOpen, kLookUp, kEnable, kInitiate, kDisable));
}

TEST_F(ShutDownComputerTest, LeavesThePrivilegeAfterARefusedRequestAndCanBeRepeated) {
    system.accepts = false;
    EXPECT_FALSE(CShutMeDownDlg::ShutDownComputer());
    EXPECT_THAT(calls.Calls(), ElementsAre(kOpen, kLookUp, kEnable, kInitiate));
    system.accepts = true;
    calls.Clear();
    EXPECT_TRUE(CShutMeDownDlg::ShutDownComputer());
    EXPECT_THAT(calls.Calls(), ElementsAre(kOpen, kLookUp, kEnable, kInitiate, kDisable));
}

}  // namespace
