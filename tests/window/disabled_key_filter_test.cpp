// Keys at a control that is disabled: which the dialog still gets, and that the control gets none.
#include "tests/window/main_window_fixture.h"

#include <thread>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class DisabledKeyFilterTest : public MainWindowFixture {
protected:
    DisabledKeyFilterTest() { Create(); }

    // As the loop does with a message that it has fetched. True when it was consumed.
    bool Filter(HWND window, UINT message, WPARAM wParam) {
        MSG fetched = {window, message, wParam, 1, 0, {}};
        return loop.FilterMessage(fetched);
    }
    void Disable(int id) { ::EnableWindow(Control(id), FALSE); }
    [[nodiscard]] HWND ListHeader() const { return reinterpret_cast<HWND>(SendList(LVM_GETHEADER)); }

    // What the dialog's own filter was asked, as "window message wParam".
    std::vector<std::string> asked;

private:
    Replaced m_ownFilter = REPLACE_IMPORT(IsDialogMessageW, [this](HWND, LPMSG message) {
        asked.push_back(WindowName(message->hwnd) + ' ' + std::to_string(message->message) + ' ' +
                        std::to_string(message->wParam));
        return FALSE;
    });
};

TEST_F(DisabledKeyFilterTest, NoKeyReachesADisabledControlUntilItIsEnabled) {
    for (const int id : {IDOK, IDC_PAGES_CHECK, IDC_EXTRA_OPTIONS, IDC_FILE_LIST, IDC_OPEN_DESTINATION}) {
        SCOPED_TRACE(id);
        asked.clear();
        Disable(id);
        EXPECT_TRUE(Filter(Control(id), WM_KEYDOWN, VK_SPACE));
        EXPECT_TRUE(Filter(Control(id), WM_KEYUP, VK_SPACE));
        EXPECT_TRUE(Filter(Control(id), WM_CHAR, ' '));
        EXPECT_THAT(asked, IsEmpty());
        ::EnableWindow(Control(id), TRUE);
        EXPECT_FALSE(Filter(Control(id), WM_KEYDOWN, VK_SPACE));
        EXPECT_FALSE(Filter(Control(id), WM_CHAR, ' '));
        EXPECT_FALSE(Filter(Control(id), WM_SYSKEYDOWN, VK_F4));
        const std::string control = std::to_string(id);
        EXPECT_THAT(asked, ElementsAre(control + " 256 32", control + " 258 32", control + " 260 115"));
    }
}

TEST_F(DisabledKeyFilterTest, TabEscapeAndOtherMessagesPassUnchanged) {
    Disable(IDC_FILE_LIST);
    const HWND list = Control(IDC_FILE_LIST);
    EXPECT_FALSE(Filter(list, WM_KEYDOWN, VK_TAB));
    EXPECT_FALSE(Filter(list, WM_KEYDOWN, VK_ESCAPE));
    EXPECT_FALSE(Filter(list, WM_PAINT, 0));
    EXPECT_FALSE(Filter(list, WM_MOUSEWHEEL, 9));
    EXPECT_THAT(asked, ElementsAre("1040 256 9", "1040 256 27", "1040 15 0", "1040 522 9"));
}

TEST_F(DisabledKeyFilterTest, KeysWithAltGoToTheDialogInTheControlsPlace) {
    Disable(IDC_EXTRA_OPTIONS);
    const HWND edit = Control(IDC_EXTRA_OPTIONS);
    MSG fetched = {edit, WM_SYSKEYDOWN, VK_BACK, 1, 0, {}};  // in an edit: undo
    EXPECT_FALSE(loop.FilterMessage(fetched));
    EXPECT_EQ(fetched.hwnd, Dialog()) << "or the loop would dispatch it to the edit";
    EXPECT_FALSE(Filter(edit, WM_SYSCHAR, ' '));
    EXPECT_FALSE(Filter(edit, WM_SYSKEYUP, VK_MENU));
    EXPECT_THAT(asked, ElementsAre("main 260 8", "main 262 32", "main 261 18"));
}

TEST_F(DisabledKeyFilterTest, APartIsDisabledItselfOrWithItsControl) {
    EXPECT_FALSE(Filter(ListHeader(), WM_KEYDOWN, VK_SPACE));
    ::EnableWindow(ListHeader(), FALSE);
    EXPECT_TRUE(Filter(ListHeader(), WM_KEYDOWN, VK_SPACE));
    ::EnableWindow(ListHeader(), TRUE);
    Disable(IDC_FILE_LIST);
    EXPECT_TRUE(Filter(ListHeader(), WM_KEYDOWN, VK_SPACE));
}

TEST_F(DisabledKeyFilterTest, WindowsThatAreNotInTheDialogKeepTheirKeys) {
    const HWND other = ::CreateWindowExW(0, L"Edit", L"", WS_POPUP | WS_DISABLED, 0, 0, 9, 9, nullptr,
                                         nullptr, nullptr, nullptr);
    EXPECT_FALSE(Filter(other, WM_KEYDOWN, VK_SPACE));
    EXPECT_FALSE(Filter(nullptr, WM_KEYDOWN, VK_SPACE));
    EXPECT_FALSE(Filter(Dialog(), WM_KEYDOWN, VK_SPACE));
    ::DestroyWindow(other);
}

TEST_F(DisabledKeyFilterTest, AControlDisabledByAnotherThreadKeepsTheFocusAndItsText) {
    ::ShowWindow(Dialog(), SW_SHOWNA);
    SetText(IDC_RESOLUTION, L"50");
    const HWND edit = Control(IDC_RESOLUTION);
    ::EnableWindow(edit, TRUE);
    ::SetFocus(edit);
    ASSERT_EQ(::GetFocus(), edit);
    std::atomic<bool> done = false;
    std::thread worker([&] {
        ::EnableWindow(edit, FALSE);
        done = true;
    });
    EXPECT_TRUE(WaitFor([&] { return done.load(); }));
    worker.join();
    EXPECT_TRUE(Filter(edit, WM_KEYDOWN, '3'));
    EXPECT_EQ(::GetFocus(), edit);
    EXPECT_EQ(Text(IDC_RESOLUTION), L"50");
}

TEST_F(DisabledKeyFilterTest, ADestroyedDialogLeavesNoFilterBehind) {
    const HWND list = Control(IDC_FILE_LIST);
    Disable(IDC_FILE_LIST);
    ::DestroyWindow(Dialog());
    EXPECT_FALSE(Filter(list, WM_KEYDOWN, VK_SPACE));
    EXPECT_THAT(asked, IsEmpty());
}

}  // namespace
