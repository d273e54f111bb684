// What the page edit makes of the characters and keys that its rule lets through or refuses. What becomes of
// keys that are pressed on a real keyboard is shown by the tests of the program.
#include "tests/window/main_window_fixture.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class DispatchPageEditTest : public MainWindowFixture {
protected:
    DispatchPageEditTest() {
        Create();
        Click(IDC_PAGES_CHECK);
        ::SetFocus(Edit());
    }

    [[nodiscard]] HWND Edit() const { return Control(IDC_PAGES); }
    LRESULT Type(WPARAM character) { return ::SendMessageW(Edit(), WM_CHAR, character, 1); }
    LRESULT Press(WPARAM key) { return ::SendMessageW(Edit(), WM_KEYDOWN, key, 1); }
    void MoveCaret(int place) { ::SendMessageW(Edit(), EM_SETSEL, static_cast<WPARAM>(place), place); }
    [[nodiscard]] int Caret() const { return HIWORD(::SendMessageW(Edit(), EM_GETSEL, 0, 0)); }
};

TEST_F(DispatchPageEditTest, CharactersOfPageListsAreTypedInSilence) {
    for (const wchar_t character : std::wstring(L"2,5,8-567\b")) Type(character);
    EXPECT_EQ(Text(IDC_PAGES), L"2,5,8-56");
    EXPECT_THAT(calls.Calls(), IsEmpty());
}

TEST_F(DispatchPageEditTest, OtherCharactersAreRefusedWithABeep) {
    constexpr wchar_t kCtrlV = 22;
    for (const wchar_t character : {L'a', L' ', L'\0', kCtrlV, L'\uFF11', L'\u0138'}) {
        calls.Clear();
        EXPECT_EQ(Type(character), 0);
        EXPECT_THAT(calls.Calls(), ElementsAre("Beep 400 100")) << static_cast<int>(character);
    }
    EXPECT_EQ(Text(IDC_PAGES), L"");
}

TEST_F(DispatchPageEditTest, ArrowsAndDeleteEdit) {
    SetText(IDC_PAGES, L"123");
    MoveCaret(1);
    Press(VK_RIGHT);
    EXPECT_EQ(Caret(), 2);
    Press(VK_LEFT);
    EXPECT_EQ(Caret(), 1);
    Press(VK_DELETE);
    EXPECT_EQ(Text(IDC_PAGES), L"13");
}

TEST_F(DispatchPageEditTest, OtherKeysAreSwallowedInSilence) {
    SetText(IDC_PAGES, L"123");
    MoveCaret(2);
    for (const int key : {VK_HOME, VK_END, VK_UP, VK_DOWN, VK_PRIOR, VK_NEXT}) {
        EXPECT_EQ(Press(static_cast<WPARAM>(key)), 0) << key;
        EXPECT_EQ(Caret(), 2) << key;
    }
    EXPECT_THAT(calls.Calls(), IsEmpty());
}

void CopyToClipboard(std::wstring_view text) {
    ASSERT_TRUE(PumpUntil([] { return ::OpenClipboard(nullptr) != FALSE; }, std::chrono::seconds(5)));
    ::EmptyClipboard();
    const HGLOBAL block = ::GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, (text.size() + 1) * sizeof(wchar_t));
    text.copy(static_cast<wchar_t*>(::GlobalLock(block)), text.size());
    ::GlobalUnlock(block);
    ::SetClipboardData(CF_UNICODETEXT, block);  // which owns it from now on
    ::CloseClipboard();
}

TEST_F(DispatchPageEditTest, PastedTextIsNotFiltered) {
    CopyToClipboard(L"1 - x");
    ::SendMessageW(Edit(), WM_PASTE, 0, 0);
    EXPECT_EQ(Text(IDC_PAGES), L"1 - x");
    SetText(IDC_PAGES, L"");
    BYTE before[256] = {};
    ::GetKeyboardState(before);
    BYTE held[256] = {};
    held[VK_SHIFT] = 0x80;
    ::SetKeyboardState(held);
    Press(VK_INSERT);
    ::SetKeyboardState(before);
    EXPECT_EQ(Text(IDC_PAGES), L"1 - x");
    EXPECT_THAT(calls.Calls(), IsEmpty());
}

}  // namespace
