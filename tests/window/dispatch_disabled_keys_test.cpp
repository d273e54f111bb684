// Keys at a control that is disabled: which the dialog still gets, and that the control gets none.
#include "tests/window/main_window_fixture.h"

#include <thread>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// What the dialog's own filter was asked, as "window message".
struct OwnFilter {
    static inline std::vector<std::string> asked;

    static BOOL WINAPI IsDialogMessage(HWND dialog, LPMSG message) {
        const std::string target =
            message->hwnd == dialog ? "main" : std::to_string(::GetDlgCtrlID(message->hwnd));
        asked.push_back(target + ' ' + std::to_string(message->message) + ' ' +
                        std::to_string(message->wParam));
        return FALSE;
    }
};

class DispatchDisabledKeysTest : public MainWindowFixture {
protected:
    DispatchDisabledKeysTest() {
        Create();
        OwnFilter::asked.clear();
    }

    // As the loop does with a message that it has fetched. True when it was consumed.
    bool Filter(HWND window, UINT message, WPARAM wParam) {
        MSG fetched = {window, message, wParam, 1, 0, {}};
        return loop.FilterMessage(fetched);
    }
    // From another thread, as a batch's worker does it.
    void DisableFromOutside(int id) {
        const HWND control = Control(id);
        std::atomic<bool> done = false;
        std::thread other([&] {
            ::EnableWindow(control, FALSE);
            done = true;
        });
        WaitFor([&] { return done.load(); });
        other.join();
    }

    static constexpr int kControls[] = {
        IDOK,           IDC_ADD,           IDC_CLEAR,       IDC_PAGES_CHECK,     IDC_PAGES,
        IDC_RESOLUTION, IDC_EXTRA_OPTIONS, IDC_HIDE_OUTPUT, IDC_OUTPUT_FOLDER,   IDC_BROWSE,
        IDC_FILE_LIST,  IDC_NO_TEXT,       IDC_SHUT_DOWN,   IDC_OPEN_DESTINATION};

private:
    ReplacedImport m_ownFilter{"IsDialogMessageW", &OwnFilter::IsDialogMessage};
};

TEST_F(DispatchDisabledKeysTest, NoKeyReachesADisabledControl) {
    for (const int id : kControls) {
        DisableFromOutside(id);
        ASSERT_FALSE(IsEnabled(id)) << id;
        for (const WPARAM key :
             {VK_SPACE, VK_RETURN, VK_DOWN, VK_DELETE, VK_F7, VK_BACK, VK_APPS, int{'V'}}) {
            EXPECT_TRUE(Filter(Control(id), WM_KEYDOWN, key)) << id << ' ' << key;
            EXPECT_TRUE(Filter(Control(id), WM_KEYUP, key)) << id << ' ' << key;
        }
        EXPECT_TRUE(Filter(Control(id), WM_CHAR, 'a')) << id;
    }
    EXPECT_THAT(OwnFilter::asked, IsEmpty());
}

TEST_F(DispatchDisabledKeysTest, EveryKeyReachesAnEnabledControl) {
    for (const int id : kControls) {
        ::EnableWindow(Control(id), TRUE);
        OwnFilter::asked.clear();
        EXPECT_FALSE(Filter(Control(id), WM_KEYDOWN, VK_SPACE));
        EXPECT_FALSE(Filter(Control(id), WM_CHAR, ' '));
        EXPECT_FALSE(Filter(Control(id), WM_SYSKEYDOWN, VK_F4));
        const std::string control = std::to_string(id);
        EXPECT_THAT(OwnFilter::asked,
                    ElementsAre(control + " 256 32", control + " 258 32", control + " 260 115"));
    }
}

TEST_F(DispatchDisabledKeysTest, TabAndEscapeAreTheDialogsAsEver) {
    DisableFromOutside(IDC_FILE_LIST);
    EXPECT_FALSE(Filter(Control(IDC_FILE_LIST), WM_KEYDOWN, VK_TAB));
    EXPECT_FALSE(Filter(Control(IDC_FILE_LIST), WM_KEYDOWN, VK_ESCAPE));
    EXPECT_THAT(OwnFilter::asked, ElementsAre("1040 256 9", "1040 256 27"));
}

TEST_F(DispatchDisabledKeysTest, KeysWithAltGoToTheDialogInTheControlsPlace) {
    DisableFromOutside(IDC_EXTRA_OPTIONS);
    const HWND edit = Control(IDC_EXTRA_OPTIONS);
    MSG fetched = {edit, WM_SYSKEYDOWN, VK_BACK, 1, 0, {}};  // in an edit: undo
    EXPECT_FALSE(loop.FilterMessage(fetched));
    EXPECT_EQ(fetched.hwnd, Dialog()) << "or the loop would dispatch it to the edit";
    EXPECT_FALSE(Filter(edit, WM_SYSCHAR, ' '));
    EXPECT_FALSE(Filter(edit, WM_SYSKEYUP, VK_MENU));
    EXPECT_THAT(OwnFilter::asked, ElementsAre("main 260 8", "main 262 32", "main 261 18"));
}

TEST_F(DispatchDisabledKeysTest, OtherMessagesPassUnchanged) {
    DisableFromOutside(IDC_FILE_LIST);
    const HWND list = Control(IDC_FILE_LIST);
    EXPECT_FALSE(Filter(list, WM_PAINT, 0));
    EXPECT_FALSE(Filter(list, WM_MOUSEWHEEL, 9));
    EXPECT_FALSE(Filter(list, WM_TIMER, 32));
    EXPECT_THAT(OwnFilter::asked, ElementsAre("1040 15 0", "1040 522 9", "1040 275 32"));
}

TEST_F(DispatchDisabledKeysTest, APartOfADisabledControlIsDisabledToo) {
    DisableFromOutside(IDC_FILE_LIST);
    const auto header = reinterpret_cast<HWND>(::SendMessageW(Control(IDC_FILE_LIST), LVM_GETHEADER, 0, 0));
    ASSERT_TRUE(::IsWindowEnabled(header));
    EXPECT_TRUE(Filter(header, WM_KEYDOWN, VK_SPACE));
}

TEST_F(DispatchDisabledKeysTest, ADisabledPartOfAnEnabledControlIsDisabled) {
    const auto header = reinterpret_cast<HWND>(::SendMessageW(Control(IDC_FILE_LIST), LVM_GETHEADER, 0, 0));
    ::EnableWindow(header, FALSE);
    ASSERT_TRUE(IsEnabled(IDC_FILE_LIST));
    EXPECT_TRUE(Filter(header, WM_KEYDOWN, VK_SPACE));
}

TEST_F(DispatchDisabledKeysTest, WindowsThatAreNotInTheDialogKeepTheirKeys) {
    const HWND other = ::CreateWindowExW(0, L"Edit", L"", WS_POPUP | WS_DISABLED, 0, 0, 9, 9, nullptr,
                                         nullptr, nullptr, nullptr);
    EXPECT_FALSE(Filter(other, WM_KEYDOWN, VK_SPACE));
    EXPECT_FALSE(Filter(nullptr, WM_KEYDOWN, VK_SPACE));
    EXPECT_FALSE(Filter(Dialog(), WM_KEYDOWN, VK_SPACE));
    ::DestroyWindow(other);
}

TEST_F(DispatchDisabledKeysTest, AControlThatIsEnabledAgainGetsItsKeysAgain) {
    DisableFromOutside(IDC_EXTRA_OPTIONS);
    EXPECT_TRUE(Filter(Control(IDC_EXTRA_OPTIONS), WM_KEYDOWN, 'A'));
    ::EnableWindow(Control(IDC_EXTRA_OPTIONS), TRUE);
    EXPECT_FALSE(Filter(Control(IDC_EXTRA_OPTIONS), WM_KEYDOWN, 'A'));
}

TEST_F(DispatchDisabledKeysTest, DisablingMovesNoFocusAndChangesNoText) {
    ::ShowWindow(Dialog(), SW_SHOWNA);
    SetText(IDC_RESOLUTION, L"50");
    ::EnableWindow(Control(IDC_RESOLUTION), TRUE);
    ::SetFocus(Control(IDC_RESOLUTION));
    ASSERT_EQ(::GetFocus(), Control(IDC_RESOLUTION));
    DisableFromOutside(IDC_RESOLUTION);
    EXPECT_TRUE(Filter(Control(IDC_RESOLUTION), WM_KEYDOWN, '3'));
    EXPECT_EQ(::GetFocus(), Control(IDC_RESOLUTION));
    EXPECT_EQ(Text(IDC_RESOLUTION), L"50");
}

TEST_F(DispatchDisabledKeysTest, ADestroyedDialogLeavesNoFilterBehind) {
    const HWND list = Control(IDC_FILE_LIST);
    DisableFromOutside(IDC_FILE_LIST);
    ::DestroyWindow(Dialog());
    EXPECT_FALSE(Filter(list, WM_KEYDOWN, VK_SPACE));
    EXPECT_THAT(OwnFilter::asked, IsEmpty());
}

}  // namespace
