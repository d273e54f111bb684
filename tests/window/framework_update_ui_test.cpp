// Refreshing controls when the thread is idle: nothing with an empty table, each change once otherwise.
#include "framework/update_ui.h"

#include "tests/support/call_record.h"
#include "tests/window/control_calls.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Updated : public CUpdateUI {
public:
    explicit Updated(std::span<UpdateEntry> table) : CUpdateUI(table) {}
    using CUpdateUI::UIAddChildWindowContainer;
    using CUpdateUI::UIUpdateChildWindows;
};

// A window with two check boxes, 10 and 11.
class Container {
public:
    Container() {
        m_window =
            ::CreateWindowExW(0, L"Static", L"", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr, nullptr, nullptr);
        for (const INT_PTR id : {10, 11}) {
            ::CreateWindowExW(0, L"Button", L"", WS_CHILD | BS_AUTOCHECKBOX, 0, 0, 0, 0, m_window,
                              reinterpret_cast<HMENU>(id), nullptr, nullptr);
        }
    }
    Container(const Container&) = delete;
    Container& operator=(const Container&) = delete;
    ~Container() { ::DestroyWindow(m_window); }

    [[nodiscard]] HWND Window() const { return m_window; }
    [[nodiscard]] bool IsEnabled(int id) const {
        return ::IsWindowEnabled(::GetDlgItem(m_window, id)) != FALSE;
    }
    [[nodiscard]] bool IsChecked(int id) const { return ::IsDlgButtonChecked(m_window, id) != 0; }

private:
    HWND m_window;
};

class FrameworkUpdateUiTest : public testing::Test {
protected:
    std::vector<std::string> Pass(Updated& updated) {
        m_calls.Clear();
        const ControlCalls recorded(m_calls);
        updated.UIUpdateChildWindows();
        return m_calls.Calls();
    }

    CallRecord m_calls;
    Container m_container;
};

TEST_F(FrameworkUpdateUiTest, AnEmptyTableChangesNothing) {
    std::array<UpdateEntry, 1> table = {{{0xFFFF, true, true, true}}};
    Updated updated(table);
    updated.UIAddChildWindowContainer(m_container.Window());
    EXPECT_THAT(Pass(updated), IsEmpty());
}

TEST_F(FrameworkUpdateUiTest, ChangedEntriesAreAppliedOnce) {
    std::array<UpdateEntry, 3> table = {
        {{10, false, true, true}, {11, true, false, true}, {0xFFFF, {}, {}, {}}}};
    Updated updated(table);
    updated.UIAddChildWindowContainer(m_container.Window());
    ::CheckDlgButton(m_container.Window(), 11, BST_CHECKED);
    EXPECT_THAT(Pass(updated), ElementsAre("EnableWindow 10 0", "CheckDlgButton 10 1", "EnableWindow 11 1",
                                           "CheckDlgButton 11 0"));
    EXPECT_FALSE(m_container.IsEnabled(10));
    EXPECT_TRUE(m_container.IsChecked(10));
    EXPECT_TRUE(m_container.IsEnabled(11));
    EXPECT_FALSE(m_container.IsChecked(11));
    EXPECT_THAT(Pass(updated), IsEmpty());
}

TEST_F(FrameworkUpdateUiTest, UnchangedEntriesAndThoseBehindTheEndMarkAreLeftAlone) {
    std::array<UpdateEntry, 3> table = {
        {{10, false, true, false}, {0xFFFF, {}, {}, {}}, {11, false, true, true}}};
    Updated updated(table);
    updated.UIAddChildWindowContainer(m_container.Window());
    EXPECT_THAT(Pass(updated), IsEmpty());
}

TEST_F(FrameworkUpdateUiTest, AChangeReachesEveryContainer) {
    const Container other;
    std::array<UpdateEntry, 2> table = {{{11, false, true, true}, {0xFFFF, {}, {}, {}}}};
    Updated updated(table);
    updated.UIAddChildWindowContainer(m_container.Window());
    updated.UIAddChildWindowContainer(other.Window());
    Pass(updated);
    const Container& first = m_container;
    for (const Container* container : {&first, &other}) {
        EXPECT_FALSE(container->IsEnabled(11));
        EXPECT_TRUE(container->IsChecked(11));
    }
}

}  // namespace
