// What a window handle offers: texts of any length, items that may be missing, and the middle of the screen.
#include "framework/window.h"

#include "tests/support/replaced_imports.h"

#include <gtest/gtest.h>

#include <optional>
#include <ostream>
#include <string>

namespace {

class FrameworkWindowTest : public testing::Test {
protected:
    FrameworkWindowTest() {
        m_parent =
            ::CreateWindowExW(0, L"Static", L"", WS_POPUP, 0, 0, 50, 20, nullptr, nullptr, nullptr, nullptr);
        m_edit = ::CreateWindowExW(0, L"Edit", L"", WS_CHILD | ES_AUTOHSCROLL, 0, 0, 33, 10, m_parent,
                                   reinterpret_cast<HMENU>(INT_PTR{10}), nullptr, nullptr);
        ::SendMessageW(m_edit, EM_SETLIMITTEXT, 1'000'000, 0);
    }
    ~FrameworkWindowTest() override { ::DestroyWindow(m_parent); }

    HWND m_parent = nullptr;
    HWND m_edit = nullptr;
};

TEST_F(FrameworkWindowTest, TextIsReadWholeWhateverItsLength) {
    const CWindow edit(m_edit);
    for (const std::size_t length : {0u, 1u, 255u, 256u, 257u, 260u, 511u, 512u, 4096u, 70'000u}) {
        std::wstring text(length, L'é');
        if (length > 0) text.back() = L'!';
        edit.SetText(text.c_str());
        EXPECT_EQ(edit.Text(), text) << length << " characters";
    }
}

TEST_F(FrameworkWindowTest, ItemsAreFoundById) {
    EXPECT_EQ(CWindow(m_parent).Item(10).Handle(), m_edit);
}

TEST_F(FrameworkWindowTest, AMissingItemIsAWindowThatIsNotThere) {
    const CWindow parent(m_parent);
    const CWindow missing = parent.Item(99);
    EXPECT_EQ(missing.Handle(), nullptr);
    EXPECT_EQ(missing.Text(), L"");
    EXPECT_EQ(missing.ClientWidth(), 0);
    EXPECT_FALSE(parent.IsChecked(99));
    missing.Enable(true);
    missing.SetText(L"nothing happens");
    missing.Center();
}

TEST_F(FrameworkWindowTest, ClientWidthIsThatOfTheClientArea) {
    EXPECT_EQ(CWindow(m_edit).ClientWidth(), 33);
}

TEST_F(FrameworkWindowTest, BoxesAreCheckedAndUnchecked) {
    ::CreateWindowExW(0, L"Button", L"", WS_CHILD | BS_AUTOCHECKBOX, 0, 0, 9, 9, m_parent,
                      reinterpret_cast<HMENU>(INT_PTR{11}), nullptr, nullptr);
    const CWindow parent(m_parent);
    parent.SetChecked(11, true);
    EXPECT_TRUE(parent.IsChecked(11));
    parent.SetChecked(11, false);
    EXPECT_FALSE(parent.IsChecked(11));
}

// The desktop of the centring tests: one window, perhaps an owner, and a monitor.
struct Desktop {
    enum class OwnerState { None, Visible, Hidden, Iconic };

    static inline const HWND kWindow = reinterpret_cast<HWND>(0x100);
    static inline const HWND kOwner = reinterpret_cast<HWND>(0x200);

    RECT window = {};
    RECT work = {};
    RECT owner = {};
    OwnerState ownerState = OwnerState::None;
    bool hasMonitor = true;
    // Results.
    HWND monitorOf = nullptr;
    std::optional<POINT> movedTo;

    static inline Desktop* current = nullptr;

    static BOOL WINAPI WindowRect(HWND window, LPRECT area) {
        *area = window == kOwner ? current->owner : current->window;
        return TRUE;
    }
    static HWND WINAPI Related(HWND window, UINT command) {
        EXPECT_EQ(window, kWindow);
        EXPECT_EQ(command, static_cast<UINT>(GW_OWNER));
        return current->ownerState == OwnerState::None ? nullptr : kOwner;
    }
    static BOOL WINAPI Visible(HWND) { return current->ownerState != OwnerState::Hidden; }
    static BOOL WINAPI Iconic(HWND) { return current->ownerState == OwnerState::Iconic; }
    static HMONITOR WINAPI MonitorOf(HWND window, DWORD whenOutside) {
        EXPECT_EQ(whenOutside, static_cast<DWORD>(MONITOR_DEFAULTTONEAREST));
        current->monitorOf = window;
        return reinterpret_cast<HMONITOR>(0x300);
    }
    static BOOL WINAPI MonitorInfo(HMONITOR, LPMONITORINFO info) {
        info->rcMonitor = {-5000, -5000, 5000, 5000};  // of no account
        info->rcWork = current->work;
        return current->hasMonitor;
    }
    static BOOL WINAPI SetPosition(HWND window, HWND, int x, int y, int, int, UINT flags) {
        EXPECT_EQ(window, kWindow);
        EXPECT_EQ(flags, static_cast<UINT>(SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE));
        current->movedTo = POINT{x, y};
        return TRUE;
    }
};

void CenterOn(Desktop& desktop) {
    Desktop::current = &desktop;
    const ReplacedImport rect("GetWindowRect", &Desktop::WindowRect);
    const ReplacedImport related("GetWindow", &Desktop::Related);
    const ReplacedImport visible("IsWindowVisible", &Desktop::Visible);
    const ReplacedImport iconic("IsIconic", &Desktop::Iconic);
    const ReplacedImport monitor("MonitorFromWindow", &Desktop::MonitorOf);
    const ReplacedImport info("GetMonitorInfoW", &Desktop::MonitorInfo);
    const ReplacedImport position("SetWindowPos", &Desktop::SetPosition);
    CWindow(Desktop::kWindow).Center();
}

struct CenterCase {
    const char* name;
    RECT window;
    Desktop::OwnerState ownerState;
    RECT owner;
    POINT expected;

    friend void PrintTo(const CenterCase& row, std::ostream* out) { *out << row.name; }
};

class FrameworkWindowCenterTest : public testing::TestWithParam<CenterCase> {};

// The work area leaves out a task bar on the left and a tool bar on top.
constexpr RECT kWork = {100, 50, 1100, 850};

TEST_P(FrameworkWindowCenterTest, IsPutInTheMiddle) {
    const CenterCase& row = GetParam();
    Desktop desktop;
    desktop.window = row.window;
    desktop.work = kWork;
    desktop.owner = row.owner;
    desktop.ownerState = row.ownerState;
    CenterOn(desktop);
    ASSERT_TRUE(desktop.movedTo);
    EXPECT_EQ(desktop.movedTo->x, row.expected.x);
    EXPECT_EQ(desktop.movedTo->y, row.expected.y);
    const bool byOwner = row.ownerState == Desktop::OwnerState::Visible;
    EXPECT_EQ(desktop.monitorOf, byOwner ? Desktop::kOwner : Desktop::kWindow);
}

INSTANTIATE_TEST_SUITE_P(
    All, FrameworkWindowCenterTest,
    testing::Values(
        CenterCase{"OfTheWorkAreaWithoutOwner", {0, 0, 300, 200}, Desktop::OwnerState::None, {}, {450, 350}},
        CenterCase{"WhereverItWasBefore", {700, 600, 1000, 800}, Desktop::OwnerState::None, {}, {450, 350}},
        CenterCase{
            "OfItsOwner", {0, 0, 300, 200}, Desktop::OwnerState::Visible, {200, 300, 700, 600}, {300, 350}},
        CenterCase{"OfTheWorkAreaWhenTheOwnerIsHidden",
                   {0, 0, 300, 200},
                   Desktop::OwnerState::Hidden,
                   {200, 300, 700, 600},
                   {450, 350}},
        CenterCase{"OfTheWorkAreaWhenTheOwnerIsMinimised",
                   {0, 0, 300, 200},
                   Desktop::OwnerState::Iconic,
                   {200, 300, 700, 600},
                   {450, 350}},
        CenterCase{"ButNotOverTheLeftEdge",
                   {0, 0, 300, 200},
                   Desktop::OwnerState::Visible,
                   {100, 300, 200, 600},
                   {100, 350}},
        CenterCase{"ButNotOverTheTopEdge",
                   {0, 0, 300, 200},
                   Desktop::OwnerState::Visible,
                   {200, 0, 700, 100},
                   {300, 50}},
        CenterCase{"ButNotOverTheRightEdge",
                   {0, 0, 300, 200},
                   Desktop::OwnerState::Visible,
                   {1000, 300, 1200, 600},
                   {800, 350}},
        CenterCase{"ButNotOverTheBottomEdge",
                   {0, 0, 300, 200},
                   Desktop::OwnerState::Visible,
                   {200, 800, 700, 1000},
                   {300, 650}},
        CenterCase{"WithItsUpperLeftCornerInSightWhenItIsTooLarge",
                   {0, 0, 2000, 1500},
                   Desktop::OwnerState::None,
                   {},
                   {100, 50}}),
    [](const auto& test) { return std::string(test.param.name); });

TEST(FrameworkWindowCenterFailureTest, StaysWhereItIsWhenTheMonitorIsUnknown) {
    Desktop desktop;
    desktop.window = {0, 0, 300, 200};
    desktop.work = kWork;
    desktop.hasMonitor = false;
    CenterOn(desktop);
    EXPECT_FALSE(desktop.movedTo);
}

}  // namespace
