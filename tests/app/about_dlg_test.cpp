// The About box in the program as it ships.
#include "tests/app/app_fixture.h"

#include "tests/equipment/shipped_version.h"

namespace {

class AboutDlg : public AppTest {
protected:
    // The control that shows the program's icon; null when there is none.
    static HWND Icon(HWND about) {
        HWND child = nullptr;
        while ((child = ::FindWindowExW(about, child, L"Static", nullptr)) != nullptr)
            if ((::GetWindowLongPtrW(child, GWL_STYLE) & SS_TYPEMASK) == SS_ICON) break;
        return child;
    }
};

TEST_F(AboutDlg, ShowsTheProgramsVersionAndItsIconWhole) {
    Start();
    driver::Click(Control(IDC_ABOUT));
    const HWND about = WaitForDialog();
    EXPECT_EQ(driver::Text(about), L"À propos...");
    EXPECT_EQ(::GetWindow(about, GW_OWNER), Window().Window());
    EXPECT_EQ(driver::Text(driver::Control(about, IDC_VERSION)), shipped::kAboutLine);
    ASSERT_NE(Icon(about), nullptr);
    RECT area = {};
    ::GetClientRect(Icon(about), &area);
    EXPECT_GE(area.right, ::GetSystemMetrics(SM_CXICON));
    EXPECT_GE(area.bottom, ::GetSystemMetrics(SM_CYICON));
    driver::PressKey(driver::Control(about, IDOK), VK_ESCAPE);
    EXPECT_TRUE(Comes([&] { return !::IsWindow(about); }));
    EXPECT_TRUE(driver::IsEnabled(Window().Window()));
    EXPECT_EQ(Window().Quit(), 2u);
}

}  // namespace
