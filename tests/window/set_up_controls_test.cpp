// The main window as it is after set-up: still as its template makes it. What that says is looked at in the
// program's own file, by the tests of the package; the order of the Tab key, by the model.
#include "tests/window/main_window_fixture.h"

#include <sstream>

namespace {

class SetUpControlsTest : public MainWindowFixture {
protected:
    SetUpControlsTest() { Create(); }
    ~SetUpControlsTest() override { ::DestroyWindow(bare); }

    // All that can be seen of a window, in one line. Whether it is enabled and visible is a part of its
    // style.
    [[nodiscard]] static std::string Look(HWND window) {
        wchar_t className[64] = {};
        ::GetClassNameW(window, className, ARRAYSIZE(className));
        wchar_t text[128] = {};
        ::GetWindowTextW(window, text, ARRAYSIZE(text));
        RECT place = {};
        ::GetWindowRect(window, &place);
        POINT topLeft = {place.left, place.top};
        ::MapWindowPoints(nullptr, ::GetParent(window), &topLeft, 1);
        std::ostringstream look;
        look << ::GetDlgCtrlID(window) << ' ' << Utf8(className) << " \"" << Utf8(text) << "\" at "
             << topLeft.x << ',' << topLeft.y << ' ' << place.right - place.left << 'x'
             << place.bottom - place.top << std::hex << " style " << ::GetWindowLongPtrW(window, GWL_STYLE)
             << ' ' << ::GetWindowLongPtrW(window, GWL_EXSTYLE);
        return look.str();
    }
    // In the order of the template, which is that of the Tab key.
    [[nodiscard]] static std::vector<HWND> Controls(HWND dialog) {
        std::vector<HWND> controls;
        for (HWND next = ::GetWindow(dialog, GW_CHILD); next; next = ::GetWindow(next, GW_HWNDNEXT)) {
            controls.push_back(next);
        }
        return controls;
    }

    // What the template alone makes.
    const HWND bare = ::CreateDialogParamW(
        nullptr, MAKEINTRESOURCEW(IDD_MAIN), nullptr,
        +[](HWND, UINT, WPARAM, LPARAM) -> INT_PTR { return FALSE; }, 0);
};

TEST_F(SetUpControlsTest, EveryControlIsAsInTheTemplateUncheckedAndWithoutRows) {
    ASSERT_NE(bare, nullptr);
    const std::vector<HWND> expected = Controls(bare), controls = Controls(Dialog());
    ASSERT_EQ(controls.size(), 27u);
    ASSERT_EQ(expected.size(), 27u);
    for (std::size_t i = 0; i < controls.size(); ++i) {
        EXPECT_EQ(Look(controls[i]), Look(expected[i]));
        EXPECT_EQ(::SendMessageW(controls[i], BM_GETCHECK, 0, 0), BST_UNCHECKED) << Look(controls[i]);
    }
    EXPECT_EQ(RowCount(), 0);
}

TEST_F(SetUpControlsTest, TheWindowIsAsInTheTemplateToo) {
    RECT client = {}, bareClient = {};
    ::GetClientRect(Dialog(), &client);
    ::GetClientRect(bare, &bareClient);
    EXPECT_EQ(client.right, bareClient.right);
    EXPECT_EQ(client.bottom, bareClient.bottom);
    for (const int index : {GWL_STYLE, GWL_EXSTYLE}) {
        EXPECT_EQ(::GetWindowLongPtrW(Dialog(), index), ::GetWindowLongPtrW(bare, index)) << index;
    }
    wchar_t title[16] = {};
    ::GetWindowTextW(Dialog(), title, ARRAYSIZE(title));
    EXPECT_EQ(std::wstring(title), L"Talvenor");
    EXPECT_EQ(::GetWindow(Dialog(), GW_OWNER), nullptr);
}

}  // namespace
