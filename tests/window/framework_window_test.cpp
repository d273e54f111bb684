// What a window handle offers: texts of any length, items that may be missing, and the middle of the screen.
#include "framework/window.h"

#include "tests/support/replaced_imports.h"

#include <gtest/gtest.h>

#include <optional>
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

TEST_F(FrameworkWindowTest, ItemsAreFoundByIdAndAMissingOneIsNoWindowAndDoesNothing) {
    const CWindow parent(m_parent);
    EXPECT_EQ(parent.Item(10).Handle(), m_edit);
    EXPECT_EQ(parent.Item(10).ClientWidth(), 33);
    const CWindow missing = parent.Item(99);
    EXPECT_EQ(missing.Handle(), nullptr);
    EXPECT_EQ(missing.Text(), L"");
    EXPECT_EQ(missing.ClientWidth(), 0);
    EXPECT_FALSE(parent.IsChecked(99));
    missing.Enable(true);
    missing.SetText(L"nothing happens");
    missing.Center();
}

// A desktop of one window, perhaps an owner, and a monitor.
const HWND kWindow = reinterpret_cast<HWND>(0x100);
const HWND kOwner = reinterpret_cast<HWND>(0x200);
enum class OwnerState { None, Visible, Hidden, Minimised };

struct Desktop {
    const char* name;
    OwnerState owner;
    RECT ownerArea;
    POINT expected;
    RECT window = {0, 0, 300, 200};
};

class FrameworkWindowCenterTest : public testing::Test {
protected:
    void CenterOn(const Desktop& shown) {
        desktop = shown;
        CWindow(kWindow).Center();
    }

    Desktop desktop = {};
    bool hasPlace = true;
    bool hasMonitor = true;
    HWND monitorOf = nullptr;
    std::optional<POINT> movedTo;

private:
    Replaced m_rect = REPLACE_IMPORT(GetWindowRect, [this](HWND asked, LPRECT area) {
        *area = asked == kOwner ? desktop.ownerArea : desktop.window;
        return hasPlace;
    });
    Replaced m_related = REPLACE_IMPORT(GetWindow, [this](HWND asked, UINT command) {
        EXPECT_EQ(asked, kWindow);
        EXPECT_EQ(command, static_cast<UINT>(GW_OWNER));
        return desktop.owner == OwnerState::None ? nullptr : kOwner;
    });
    Replaced m_visible =
        REPLACE_IMPORT(IsWindowVisible, [this](HWND) -> BOOL { return desktop.owner != OwnerState::Hidden; });
    Replaced m_iconic =
        REPLACE_IMPORT(IsIconic, [this](HWND) -> BOOL { return desktop.owner == OwnerState::Minimised; });
    Replaced m_monitor = REPLACE_IMPORT(MonitorFromWindow, [this](HWND asked, DWORD whenOutside) {
        EXPECT_EQ(whenOutside, static_cast<DWORD>(MONITOR_DEFAULTTONEAREST));
        monitorOf = asked;
        return reinterpret_cast<HMONITOR>(0x300);
    });
    Replaced m_monitorInfo = REPLACE_IMPORT(GetMonitorInfoW, [this](HMONITOR, LPMONITORINFO info) -> BOOL {
        info->rcMonitor = {-5000, -5000, 5000, 5000};  // does not count
        info->rcWork = {100, 50, 1100, 850};           // without a task bar on the left and a tool bar on top
        return hasMonitor;
    });
    Replaced m_position =
        REPLACE_IMPORT(SetWindowPos, [this](HWND moved, HWND, int x, int y, int, int, UINT flags) {
            EXPECT_EQ(moved, kWindow);
            EXPECT_EQ(flags, static_cast<UINT>(SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE));
            movedTo = POINT{x, y};
            return TRUE;
        });
};

TEST_F(FrameworkWindowCenterTest, PutsTheWindowInTheMiddleOfItsOwnerOrTheWorkAreaButNeverOverAnEdge) {
    using enum OwnerState;
    static constexpr Desktop kCases[] = {
        {"without owner", None, {}, {450, 350}},
        {"wherever it was before", None, {}, {450, 350}, {700, 600, 1000, 800}},
        {"with an owner", Visible, {200, 300, 700, 600}, {300, 350}},
        {"with a hidden owner", Hidden, {200, 300, 700, 600}, {450, 350}},
        {"with a minimised owner", Minimised, {200, 300, 700, 600}, {450, 350}},
        {"with an owner at the left edge", Visible, {100, 300, 200, 600}, {100, 350}},
        {"with an owner at the top edge", Visible, {200, 0, 700, 100}, {300, 50}},
        {"with an owner at the right edge", Visible, {1000, 300, 1200, 600}, {800, 350}},
        {"with an owner at the bottom edge", Visible, {200, 800, 700, 1000}, {300, 650}},
        {"larger than the work area: its corner is visible", None, {}, {100, 50}, {0, 0, 2000, 1500}},
    };
    for (const Desktop& row : kCases) {
        SCOPED_TRACE(row.name);
        movedTo.reset();
        CenterOn(row);
        ASSERT_TRUE(movedTo);
        EXPECT_EQ(movedTo->x, row.expected.x);
        EXPECT_EQ(movedTo->y, row.expected.y);
        EXPECT_EQ(monitorOf, row.owner == Visible ? kOwner : kWindow);
    }
}

TEST_F(FrameworkWindowCenterTest, StaysWhenTheMonitorIsUnknownOrWhereTheWindowIs) {
    for (bool* const isKnown : {&hasPlace, &hasMonitor}) {
        *isKnown = false;
        CenterOn({});
        EXPECT_FALSE(movedTo);
        *isKnown = true;
    }
}

}  // namespace
