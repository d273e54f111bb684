// The About dialog: its version line, and its ways out.
#include "ui/about/about_dlg.h"

#include "tests/equipment/shipped_version.h"
#include "tests/support/replaced_imports.h"
#include "tests/window/modal_thread.h"

#include "framework/app_module.h"
#include "res/resource.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

class AboutDlgTest : public testing::Test {
protected:
    AboutDlgTest() { CAppModule::Instance().Init(::GetModuleHandleW(nullptr)); }
    ~AboutDlgTest() override { CAppModule::Instance().Term(); }

    static constexpr wchar_t kTitle[] = L"À propos...";
};

TEST_F(AboutDlgTest, ShowsTheVersionOfTheProgramsOwnResource) {
    const ModalThread<CAboutDlg> about(kTitle);
    wchar_t text[100] = L"no dialog";
    ::GetDlgItemTextW(about.Window(), IDC_VERSION, text, ARRAYSIZE(text));
    EXPECT_EQ(std::wstring(text), shipped::kAboutLine);
}

TEST_F(AboutDlgTest, IsCenteredBeforeItsVersionIsShown) {
    std::vector<std::string> steps;
    const auto move = REPLACE_IMPORT(SetWindowPos, [&](auto original, HWND window, HWND after, int left,
                                                       int top, int width, int height, UINT flags) {
        steps.push_back(flags == (SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE) ? "center" : "another place");
        return original(window, after, left, top, width, height, flags);
    });
    const auto setText = REPLACE_IMPORT(SetWindowTextW, [&](auto original, HWND window, LPCWSTR text) {
        steps.push_back("text");
        return original(window, text);
    });
    const ModalThread<CAboutDlg> about(kTitle);
    ASSERT_NE(about.Window(), nullptr);
    EXPECT_THAT(steps, testing::ElementsAre("center", "text"));
}

TEST_F(AboutDlgTest, LeavesTheFocusToTheSystem) {
    CAboutDlg about;
    LRESULT result = 0;
    EXPECT_TRUE(about.ProcessWindowMessage(nullptr, WM_INITDIALOG, 0, 0, result, 0));
    EXPECT_EQ(result, TRUE);
}

TEST_F(AboutDlgTest, EndsWithTheResultOfEachWayOut) {
    static constexpr struct {
        const char* name;
        UINT message;
        WPARAM wParam;
        INT_PTR result;
    } kWays[] = {
        {"OK", WM_COMMAND, IDOK, 1},          {"OK by any notification", WM_COMMAND, MAKEWPARAM(IDOK, 7), 1},
        {"cancel", WM_COMMAND, IDCANCEL, 2},  {"Enter", WM_KEYDOWN, VK_RETURN, 1},
        {"Escape", WM_KEYDOWN, VK_ESCAPE, 2}, {"close button", WM_SYSCOMMAND, SC_CLOSE, 2},
    };
    for (const auto& way : kWays) {
        SCOPED_TRACE(way.name);
        const ModalThread<CAboutDlg> about(kTitle);
        const HWND window = about.Window();
        ASSERT_NE(window, nullptr);
        EXPECT_EQ(about.Focused(), ::GetDlgItem(window, IDOK));
        const bool isKey = way.message == WM_KEYDOWN;
        ::PostMessageW(isKey ? about.Focused() : window, way.message, way.wParam, isKey ? 1 : 0);
        EXPECT_EQ(about.Result(), way.result);
    }
}

TEST_F(AboutDlgTest, OtherMessagesAndCommandsGetDefaultProcessing) {
    CAboutDlg about;
    LRESULT result = 0;
    for (UINT message = 0; message <= WM_APP + 0x100; ++message) {
        if (message == WM_INITDIALOG || message == WM_COMMAND) continue;
        EXPECT_FALSE(about.ProcessWindowMessage(nullptr, message, 0, 0, result, 0)) << message;
    }
    EXPECT_FALSE(about.ProcessWindowMessage(nullptr, WM_COMMAND, 3, 0, result, 0));
    EXPECT_FALSE(about.ProcessWindowMessage(nullptr, WM_COMMAND, IDC_VERSION, 0, result, 0));
}

}  // namespace
