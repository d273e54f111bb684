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

class FrameworkUpdateUiTest : public testing::Test {
protected:
    ~FrameworkUpdateUiTest() override {
        for (const HWND container : {m_container, m_other}) ::DestroyWindow(container);
    }
    // A window with two check boxes, 10 and 11.
    static HWND NewContainer() {
        const HWND container =
            ::CreateWindowExW(0, L"Static", L"", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr, nullptr, nullptr);
        for (const INT_PTR id : {10, 11}) {
            ::CreateWindowExW(0, L"Button", L"", WS_CHILD | BS_AUTOCHECKBOX, 0, 0, 0, 0, container,
                              reinterpret_cast<HMENU>(id), nullptr, nullptr);
        }
        return container;
    }
    std::vector<std::string> Pass(Updated& updated) {
        m_calls.Clear();
        const ControlCalls recorded(m_calls);
        updated.UIUpdateChildWindows();
        return m_calls.Calls();
    }

    CallRecord m_calls;
    const HWND m_container = NewContainer();
    const HWND m_other = NewContainer();
};

TEST_F(FrameworkUpdateUiTest, AnEmptyTableChangesNothing) {
    std::array<UpdateEntry, 1> table = {{{0xFFFF, true, true, true}}};
    Updated updated(table);
    updated.UIAddChildWindowContainer(m_container);
    EXPECT_THAT(Pass(updated), IsEmpty());
}

TEST_F(FrameworkUpdateUiTest, ChangedEntriesAreAppliedOnce) {
    std::array<UpdateEntry, 3> table = {
        {{10, false, true, true}, {11, true, false, true}, {0xFFFF, {}, {}, {}}}};
    Updated updated(table);
    updated.UIAddChildWindowContainer(m_container);
    ::CheckDlgButton(m_container, 11, BST_CHECKED);
    EXPECT_THAT(Pass(updated), ElementsAre("EnableWindow 10 0", "CheckDlgButton 10 1", "EnableWindow 11 1",
                                           "CheckDlgButton 11 0"));
    EXPECT_THAT(Pass(updated), IsEmpty());
}

TEST_F(FrameworkUpdateUiTest, UnchangedEntriesAndThoseBehindTheEndMarkAreLeftAlone) {
    std::array<UpdateEntry, 3> table = {
        {{10, false, true, false}, {0xFFFF, {}, {}, {}}, {11, false, true, true}}};
    Updated updated(table);
    updated.UIAddChildWindowContainer(m_container);
    EXPECT_THAT(Pass(updated), IsEmpty());
}

TEST_F(FrameworkUpdateUiTest, AChangeReachesEveryContainer) {
    std::array<UpdateEntry, 2> table = {{{11, false, true, true}, {0xFFFF, {}, {}, {}}}};
    Updated updated(table);
    for (const HWND container : {m_container, m_other}) updated.UIAddChildWindowContainer(container);
    Pass(updated);
    for (const HWND container : {m_container, m_other}) {
        EXPECT_FALSE(::IsWindowEnabled(::GetDlgItem(container, 11)));
        EXPECT_TRUE(::IsDlgButtonChecked(container, 11));
    }
}

}  // namespace
