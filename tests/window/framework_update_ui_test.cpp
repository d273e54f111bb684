// Refreshing controls when the thread is idle: nothing with an empty table, each change once otherwise.
#include "framework/update_ui.h"

#include "tests/support/call_record.h"
#include "tests/support/replaced_imports.h"
#include "tests/window/control_calls.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using testing::IsEmpty;

class Updated : public CUpdateUI {
public:
    explicit Updated(std::span<UpdateEntry> table) : CUpdateUI(table) {}
    using CUpdateUI::UIAddChildWindowContainer;
    using CUpdateUI::UIUpdateChildWindows;
};

// A window with two check boxes, 10 and 11.
HWND NewContainer() {
    const HWND container =
        ::CreateWindowExW(0, L"Static", L"", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr, nullptr, nullptr);
    for (const INT_PTR id : {10, 11}) {
        ::CreateWindowExW(0, L"Button", L"", WS_CHILD | BS_AUTOCHECKBOX, 0, 0, 0, 0, container,
                          reinterpret_cast<HMENU>(id), nullptr, nullptr);
    }
    return container;
}

std::vector<std::string> Pass(Updated& updated) {
    CallRecord calls;
    const ControlCalls recorded(calls);
    updated.UIUpdateChildWindows();
    return calls.Calls();
}

TEST(FrameworkUpdateUiTest, ChangedEntriesUpToTheEndMarkAreAppliedOnceInEveryContainer) {
    static constexpr UpdateEntry kEnd = {0xFFFF, true, true, true};
    static const struct {
        const char* name;
        std::vector<UpdateEntry> table;
        std::vector<std::string> calls;
    } kCases[] = {
        {"an empty table", {kEnd}, {}},
        {"changed entries",
         {{10, false, true, true}, {11, true, false, true}, kEnd},
         {"EnableWindow 10 0", "CheckDlgButton 10 1", "EnableWindow 10 0", "CheckDlgButton 10 1",
          "EnableWindow 11 1", "CheckDlgButton 11 0", "EnableWindow 11 1", "CheckDlgButton 11 0"}},
        {"an unchanged entry, and one behind the end mark",
         {{10, false, true, false}, {0xFFFF, {}, {}, {}}, {11, false, true, true}},
         {}},
    };
    for (const auto& row : kCases) {
        SCOPED_TRACE(row.name);
        std::vector<UpdateEntry> table = row.table;
        Updated updated(table);
        const HWND containers[] = {NewContainer(), NewContainer()};
        for (const HWND container : containers) updated.UIAddChildWindowContainer(container);
        EXPECT_EQ(Pass(updated), row.calls);
        EXPECT_THAT(Pass(updated), IsEmpty());
        for (const HWND container : containers) {
            EXPECT_EQ(::IsWindowEnabled(::GetDlgItem(container, 10)), row.calls.empty());
            EXPECT_NE(::IsDlgButtonChecked(container, 10) != 0, row.calls.empty());
            ::DestroyWindow(container);
        }
    }
}

}  // namespace
