// The request to switch the machine off: its steps, and that every failure is silent.
#include "tests/window/scripted_shutdown.h"

#include "ui/shutdown/shut_me_down_dlg.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kOpen[] = "OpenProcessToken self access=0x28";
constexpr char kLookUp[] = "LookupPrivilegeValueW local SeShutdownPrivilege";
constexpr char kEnable[] = "AdjustTokenPrivileges token all=0 count=1 luid=5:19 attributes=2 previous=none";
constexpr char kInitiate[] = "InitiateSystemShutdownW machine=none message=none seconds=0 force=0 reboot=0";
constexpr char kDisable[] = "AdjustTokenPrivileges token all=0 count=1 luid=5:19 attributes=0 previous=none";

class ShutdownTest : public testing::Test {
protected:
    ShutdownTest() { s_other.Clear(); }

    CallRecord calls;
    ScriptedShutdown system{calls};
    static inline CallRecord s_other;  // what must not happen

private:
    static int WINAPI RecordBox(HWND, LPCWSTR, LPCWSTR, UINT) {
        s_other.Add("MessageBoxW");
        return IDOK;
    }
    static BOOL WINAPI RecordClose(HANDLE handle) {
        s_other.Add("CloseHandle " + std::to_string(reinterpret_cast<ULONG_PTR>(handle)));
        return TRUE;
    }
    ReplacedImport m_box{"MessageBoxW", &RecordBox};
    ReplacedImport m_close{"CloseHandle", &RecordClose};
};

TEST_F(ShutdownTest, EnablesThePrivilegeAsksAndDisablesIt) {
    EXPECT_TRUE(CShutMeDownDlg::ShutDownComputer());
    EXPECT_THAT(calls.Calls(), ElementsAre(kOpen, kLookUp, kEnable, kInitiate, kDisable));
}

TEST_F(ShutdownTest, LeavesTheTokenOpen) {
    CShutMeDownDlg::ShutDownComputer();
    EXPECT_THAT(s_other.Calls(), IsEmpty());
}

TEST_F(ShutdownTest, WithoutATokenNothingMoreIsTried) {
    system.opensToken = false;
    EXPECT_FALSE(CShutMeDownDlg::ShutDownComputer());
    EXPECT_THAT(calls.Calls(), ElementsAre(kOpen));
    EXPECT_THAT(s_other.Calls(), IsEmpty());
}

TEST_F(ShutdownTest, AnUnknownPrivilegeIsNotLookedAt) {
    system.knowsPrivilege = false;
    EXPECT_TRUE(CShutMeDownDlg::ShutDownComputer());
    EXPECT_THAT(calls.Calls(),
                ElementsAre(kOpen, kLookUp,
                            "AdjustTokenPrivileges token all=0 count=1 luid=0:0 attributes=2 previous=none",
                            kInitiate,
                            "AdjustTokenPrivileges token all=0 count=1 luid=0:0 attributes=0 previous=none"));
}

TEST_F(ShutdownTest, AnAccountWithoutThePrivilegeMakesNoRequest) {
    system.adjustError = ERROR_NOT_ALL_ASSIGNED;  // which comes with a success
    EXPECT_FALSE(CShutMeDownDlg::ShutDownComputer());
    EXPECT_THAT(calls.Calls(), ElementsAre(kOpen, kLookUp, kEnable));
    EXPECT_THAT(s_other.Calls(), IsEmpty());
}

TEST_F(ShutdownTest, TheLastErrorCountsAndNotTheResultOfTheAdjustment) {
    system.adjustSucceeds = false;
    EXPECT_TRUE(CShutMeDownDlg::ShutDownComputer());
    EXPECT_THAT(calls.Calls(), ElementsAre(kOpen, kLookUp, kEnable, kInitiate, kDisable));
}

TEST_F(ShutdownTest, ARefusedRequestLeavesThePrivilegeAndSaysNothing) {
    system.accepts = false;
    EXPECT_FALSE(CShutMeDownDlg::ShutDownComputer());
    EXPECT_THAT(calls.Calls(), ElementsAre(kOpen, kLookUp, kEnable, kInitiate));
    EXPECT_THAT(s_other.Calls(), IsEmpty());
}

TEST_F(ShutdownTest, ASecondRequestTakesAllSteps) {
    system.accepts = false;
    EXPECT_FALSE(CShutMeDownDlg::ShutDownComputer());
    system.accepts = true;
    calls.Clear();
    EXPECT_TRUE(CShutMeDownDlg::ShutDownComputer());
    EXPECT_THAT(calls.Calls(), ElementsAre(kOpen, kLookUp, kEnable, kInitiate, kDisable));
}

}  // namespace
