// Keys at a control that is disabled: which the dialog still gets, and that the control gets none.
#include "tests/window/main_window_fixture.h"

namespace {

class DisabledKeyFilterTest : public MainWindowFixture {
protected:
    DisabledKeyFilterTest() { Create(); }

    // The window that gets a message which the loop has fetched for `window`, and for which the dialog's own
    // filter is asked; "nobody" when the message is consumed before that.
    std::string Receiver(HWND window, UINT message, WPARAM wParam) {
        MSG fetched = {window, message, wParam, 1, 0, {}};
        std::string receiver = "nobody";
        const auto ownFilter = REPLACE_IMPORT(IsDialogMessageW, [&](HWND, LPMSG asked) {
            EXPECT_EQ(asked, &fetched);
            receiver = WindowName(asked->hwnd);
            return FALSE;
        });
        const bool isConsumed = loop.FilterMessage(fetched);
        EXPECT_EQ(isConsumed, receiver == "nobody");
        EXPECT_EQ(fetched.message, message);
        EXPECT_EQ(fetched.wParam, wParam);
        return receiver;
    }
    void Disable(int id) { ::EnableWindow(Control(id), FALSE); }
    [[nodiscard]] HWND ListHeader() const { return reinterpret_cast<HWND>(SendList(LVM_GETHEADER)); }
};

TEST_F(DisabledKeyFilterTest, NoKeyReachesADisabledControlUntilItIsEnabled) {
    for (const int id : {IDOK, IDC_PAGES_CHECK, IDC_EXTRA_OPTIONS, IDC_FILE_LIST, IDC_OPEN_DESTINATION}) {
        SCOPED_TRACE(id);
        const HWND control = Control(id);
        Disable(id);
        EXPECT_EQ(Receiver(control, WM_KEYDOWN, VK_SPACE), "nobody");
        EXPECT_EQ(Receiver(control, WM_KEYUP, VK_SPACE), "nobody");
        EXPECT_EQ(Receiver(control, WM_CHAR, ' '), "nobody");
        ::EnableWindow(control, TRUE);
        EXPECT_EQ(Receiver(control, WM_KEYDOWN, VK_SPACE), std::to_string(id));
        EXPECT_EQ(Receiver(control, WM_CHAR, ' '), std::to_string(id));
        EXPECT_EQ(Receiver(control, WM_SYSKEYDOWN, VK_F4), std::to_string(id));
    }
}

// Which messages go which way is a rule of its own.
TEST_F(DisabledKeyFilterTest, OtherMessagesPassUnchangedAndKeysWithAltGoToTheDialogInTheControlsPlace) {
    Disable(IDC_EXTRA_OPTIONS);
    const HWND edit = Control(IDC_EXTRA_OPTIONS);
    EXPECT_EQ(Receiver(edit, WM_KEYDOWN, VK_TAB), std::to_string(IDC_EXTRA_OPTIONS));
    EXPECT_EQ(Receiver(edit, WM_MOUSEWHEEL, 9), std::to_string(IDC_EXTRA_OPTIONS));
    EXPECT_EQ(Receiver(edit, WM_SYSKEYDOWN, VK_BACK), "main");  // in an edit: undo
}

TEST_F(DisabledKeyFilterTest, APartIsDisabledItselfOrWithItsControl) {
    EXPECT_NE(Receiver(ListHeader(), WM_KEYDOWN, VK_SPACE), "nobody");
    ::EnableWindow(ListHeader(), FALSE);
    EXPECT_EQ(Receiver(ListHeader(), WM_KEYDOWN, VK_SPACE), "nobody");
    ::EnableWindow(ListHeader(), TRUE);
    Disable(IDC_FILE_LIST);
    EXPECT_EQ(Receiver(ListHeader(), WM_KEYDOWN, VK_SPACE), "nobody");
}

TEST_F(DisabledKeyFilterTest, WindowsThatAreNotInTheDialogKeepTheirKeys) {
    const HWND other = ::CreateWindowExW(0, L"Edit", L"", WS_POPUP | WS_DISABLED, 0, 0, 9, 9, nullptr,
                                         nullptr, nullptr, nullptr);
    EXPECT_EQ(Receiver(other, WM_KEYDOWN, VK_SPACE), "Edit");
    EXPECT_EQ(Receiver(nullptr, WM_KEYDOWN, VK_SPACE), "none");
    EXPECT_EQ(Receiver(Dialog(), WM_KEYDOWN, VK_SPACE), "main");
    ::DestroyWindow(other);
}

}  // namespace
