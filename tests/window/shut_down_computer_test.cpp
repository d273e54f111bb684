// The request to switch the machine off: its steps, and that every failure is silent.
#include "tests/window/scripted_shutdown.h"

#include "ui/shutdown/shut_me_down_dlg.h"

#include <gtest/gtest.h>

namespace {

constexpr char kOpen[] = "OpenProcessToken self 40";
constexpr char kLookUp[] = "LookupPrivilegeValueW (null) \"SeShutdownPrivilege\"";
constexpr char kEnable[] = "AdjustTokenPrivileges token 0 (null) count=1 luid=5:19 attributes=2";
constexpr char kInitiate[] = "InitiateSystemShutdownW (null) (null) 0 0 0";
constexpr char kDisable[] = "AdjustTokenPrivileges token 0 (null) count=1 luid=5:19 attributes=0";

class ShutDownComputerTest : public testing::Test {
protected:
    CallRecord calls;  // a message box and a handle that is closed would be among them

private:
    Replaced m_messageBox = REPLACE_IMPORT(MessageBoxW, [this](HWND, LPCWSTR, LPCWSTR, UINT) {
        calls.Add("MessageBoxW");
        return IDOK;
    });
    Replaced m_close = REPLACE_IMPORT(CloseHandle, [this](HANDLE) {
        calls.Add("CloseHandle");
        return TRUE;
    });
};

TEST_F(ShutDownComputerTest, EnablesThePrivilegeAsksAndDisablesItUnlessAStepFails) {
    static const struct {
        const char* name;
        void (*prepare)(ScriptedShutdown& system);
        bool result;
        std::vector<std::string> calls;
    } kCases[] = {
        {"as it should go, with the token left open",
         [](ScriptedShutdown&) {},
         true,
         {kOpen, kLookUp, kEnable, kInitiate, kDisable}},
        {"without a token", [](ScriptedShutdown& system) { system.opensToken = false; }, false, {kOpen}},
        {"an unknown privilege is not looked at",
         [](ScriptedShutdown& system) { system.knowsPrivilege = false; },
         true,
         {kOpen, kLookUp, "AdjustTokenPrivileges token 0 (null) count=1 luid=0:0 attributes=2", kInitiate,
          "AdjustTokenPrivileges token 0 (null) count=1 luid=0:0 attributes=0"}},
        {"an account without the privilege, which comes with a success",
         [](ScriptedShutdown& system) { system.adjustError = ERROR_NOT_ALL_ASSIGNED; },
         false,
         {kOpen, kLookUp, kEnable}},
        {"only the last error of the adjustment counts",
         [](ScriptedShutdown& system) { system.adjustSucceeds = false; },
         true,
         {kOpen, kLookUp, kEnable, kInitiate, kDisable}},
        {"a refused request leaves the privilege",
         [](ScriptedShutdown& system) { system.accepts = false; },
         false,
         {kOpen, kLookUp, kEnable, kInitiate}},
    };
    for (const auto& row : kCases) {
        SCOPED_TRACE(row.name);
        calls.Clear();
        ScriptedShutdown system(calls);
        row.prepare(system);
        EXPECT_EQ(CShutMeDownDlg::ShutDownComputer(), row.result);
        EXPECT_EQ(calls.Calls(), row.calls);
    }
}

}  // namespace
