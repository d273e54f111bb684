// The About box: its version line, from whatever the version resource says, and its two ways out.
#include "tests/equipment/shipped_version.h"
#include "tests/window/modal_thread.h"
#include "tests/window/scripted_version.h"

#include "res/resource.h"
#include "ui/about/about_dlg.h"
#include "framework/app_module.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace {

using testing::ElementsAre;

class AboutTest : public testing::Test {
protected:
    AboutTest() { CAppModule::Instance().Init(::GetModuleHandleW(nullptr)); }
    ~AboutTest() override { CAppModule::Instance().Term(); }

    // Opens the box, reads its version line and closes it.
    static std::wstring VersionLine() {
        const ModalThread<CAboutDlg> about(L"À propos...");
        const HWND window = about.Window();
        wchar_t text[100] = L"no box";
        ::GetDlgItemTextW(window, IDC_VERSION, text, ARRAYSIZE(text));
        ::PostMessageW(window, WM_COMMAND, IDOK, 0);
        EXPECT_EQ(about.Result(), 1);
        return text;
    }
};

TEST_F(AboutTest, ShowsTheVersionOfTheProgramsOwnResource) {
    EXPECT_EQ(VersionLine(), shipped::kAboutLine);
}

TEST_F(AboutTest, LeavesTheFocusToTheSystem) {
    CAboutDlg about;
    LRESULT result = 0;
    EXPECT_TRUE(about.ProcessWindowMessage(nullptr, WM_INITDIALOG, 0, 0, result, 0));
    EXPECT_EQ(result, TRUE);
}

struct WayOut {
    const char* name;
    UINT message;
    WPARAM wParam;
    INT_PTR result;
};
class AboutEndTest : public AboutTest, public testing::WithParamInterface<WayOut> {};

TEST_P(AboutEndTest, EndsWithItsResult) {
    const ModalThread<CAboutDlg> about(L"À propos...");
    const HWND window = about.Window();
    ASSERT_NE(window, nullptr);
    GUITHREADINFO thread = {};
    thread.cbSize = sizeof thread;
    ::GetGUIThreadInfo(about.ThreadId(), &thread);
    EXPECT_EQ(thread.hwndFocus, ::GetDlgItem(window, IDOK));
    const bool isKey = GetParam().message == WM_KEYDOWN;
    ::PostMessageW(isKey ? thread.hwndFocus : window, GetParam().message, GetParam().wParam, isKey ? 1 : 0);
    EXPECT_EQ(about.Result(), GetParam().result);
}

INSTANTIATE_TEST_SUITE_P(All, AboutEndTest,
                         testing::Values(WayOut{"Ok", WM_COMMAND, IDOK, 1},
                                         WayOut{"OkByAnyNotification", WM_COMMAND, MAKEWPARAM(IDOK, 7), 1},
                                         WayOut{"Cancel", WM_COMMAND, IDCANCEL, 2},
                                         WayOut{"Enter", WM_KEYDOWN, VK_RETURN, 1},
                                         WayOut{"Esc", WM_KEYDOWN, VK_ESCAPE, 2},
                                         WayOut{"CloseBox", WM_SYSCOMMAND, SC_CLOSE, 2}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(AboutTest, OtherCommandsAreLeftAlone) {
    const ModalThread<CAboutDlg> about(L"À propos...");
    ::SendMessageW(about.Window(), WM_COMMAND, IDC_VERSION, 0);
    ::SendMessageW(about.Window(), WM_COMMAND, 3, 0);
    EXPECT_FALSE(about.HasEnded());
}

TEST_F(AboutTest, OtherCommandsGetDefaultProcessing) {
    CAboutDlg about;
    LRESULT result = 0;
    EXPECT_FALSE(about.ProcessWindowMessage(nullptr, WM_COMMAND, 3, 0, result, 0));
}

struct VersionCase {
    const char* name;
    DWORD fileVersion;
    DWORD productMs;
    DWORD productLs;
    DWORD flags;
    const wchar_t* line;
};
class AboutVersionTest : public AboutTest, public testing::WithParamInterface<VersionCase> {
protected:
    ScriptedVersion version;
};

TEST_P(AboutVersionTest, IsMadeOfTheProductVersion) {
    version.fixed.dwFileVersionMS = version.fixed.dwFileVersionLS = GetParam().fileVersion;
    version.fixed.dwProductVersionMS = GetParam().productMs;
    version.fixed.dwProductVersionLS = GetParam().productLs;
    version.fixed.dwFileFlags = GetParam().flags;
    EXPECT_EQ(VersionLine(), GetParam().line);
}

INSTANTIATE_TEST_SUITE_P(
    All, AboutVersionTest,
    testing::Values(
        VersionCase{"WithoutBuild", 0, 0x00010002, 0x00000001, 0, L"Version 1.2 (64-bit)"},
        VersionCase{"WithBuild", 0, 0x00020005, 0x00030007, 0, L"Version 2.5.3 (64-bit)"},
        VersionCase{"PreRelease", 0, 0x00020005, 0x00030007, VS_FF_PRERELEASE,
                    L"Version ß 2.5.3 (7) (64-bit)"},
        VersionCase{"PreReleaseWithoutBuild", 0, 0x00010002, 0x00000001, VS_FF_PRERELEASE,
                    L"Version ß 1.2.0 (1) (64-bit)"},
        VersionCase{"PreReleaseAmongOtherFlags", 0, 0x00010002, 0x00000001,
                    VS_FF_DEBUG | VS_FF_PRERELEASE | VS_FF_PRIVATEBUILD, L"Version ß 1.2.0 (1) (64-bit)"},
        VersionCase{"OtherFlagsOnly", 0, 0x00010002, 0x00000001, VS_FF_DEBUG | VS_FF_PATCHED,
                    L"Version 1.2 (64-bit)"},
        VersionCase{"NotOfTheFileVersion", 0x00090009, 0x00010002, 0x00000001, 0, L"Version 1.2 (64-bit)"},
        VersionCase{"LargestNumbers", 0, 0xFFFFFFFE, 0xFFFDFFFC, VS_FF_PRERELEASE,
                    L"Version ß 65535.65534.65533 (65532) (64-bit)"}),
    [](const auto& row) { return std::string(row.param.name); });

}  // namespace
