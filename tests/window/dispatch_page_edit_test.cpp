// What the page edit lets through: every character and every key.
#include "tests/window/forwarding_import.h"
#include "tests/window/main_window_fixture.h"

#include <set>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// The key-downs that the edit itself gets to see.
std::vector<WPARAM> g_keysOfTheEdit;
LRESULT WINAPI NoteKeys(WNDPROC procedure, HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_KEYDOWN) g_keysOfTheEdit.push_back(wParam);
    return original<&NoteKeys>(procedure, window, message, wParam, lParam);
}

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
    void SetTextWithCaretAt(const wchar_t* text, int caret) {
        SetText(IDC_PAGES, text);
        ::SendMessageW(Edit(), EM_SETSEL, static_cast<WPARAM>(caret), caret);
    }
    [[nodiscard]] int Caret() const {
        DWORD start = 0, end = 0;
        ::SendMessageW(Edit(), EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
        return static_cast<int>(end);
    }
};

TEST_F(DispatchPageEditTest, EveryCharacterIsLetThroughOrRefusedWithABeep) {
    const std::wstring accepted = L",-0123456789";
    for (wchar_t character = 0; character < 256; ++character) {
        calls.Clear();
        SetTextWithCaretAt(L"12", 2);
        const LRESULT result = Type(character);
        const int code = character;
        if (character == 8) {
            EXPECT_EQ(Text(IDC_PAGES), L"1") << "backspace";
            EXPECT_THAT(calls.Calls(), IsEmpty()) << "backspace";
        } else if (character != 0 && accepted.find(character) != std::wstring::npos) {
            EXPECT_EQ(Text(IDC_PAGES), std::wstring(L"12") + character) << code;
            EXPECT_THAT(calls.Calls(), IsEmpty()) << code;
        } else {
            EXPECT_EQ(Text(IDC_PAGES), L"12") << code;
            EXPECT_THAT(calls.Calls(), ElementsAre("Beep 400 100")) << code;
            EXPECT_EQ(result, 0) << code;
        }
    }
}

TEST_F(DispatchPageEditTest, CharactersThatOnlyLookLikeDigitsAreRefused) {
    for (const wchar_t character : {L'\u0661', L'\uFF11', L'\u2013', L'\u201A', L'\u0138', L'\u00B2'}) {
        calls.Clear();
        Type(character);
        EXPECT_EQ(Text(IDC_PAGES), L"");
        EXPECT_THAT(calls.Calls(), ElementsAre("Beep 400 100"));
    }
}

TEST_F(DispatchPageEditTest, AListOfPagesCanBeTyped) {
    for (const wchar_t character : std::wstring(L"2,5,8-56")) Type(character);
    EXPECT_EQ(Text(IDC_PAGES), L"2,5,8-56");
    EXPECT_THAT(calls.Calls(), IsEmpty());
}

TEST_F(DispatchPageEditTest, PastingByItsKeyIsRefusedWithABeep) {
    constexpr wchar_t kCtrlV = 22;
    Type(kCtrlV);
    EXPECT_EQ(Text(IDC_PAGES), L"");
    EXPECT_THAT(calls.Calls(), ElementsAre("Beep 400 100"));
}

TEST_F(DispatchPageEditTest, EveryKeyIsLetThroughOrSwallowedInSilence) {
    const auto note = ReplaceAndForward<&NoteKeys>("CallWindowProcW");
    g_keysOfTheEdit.clear();
    for (WPARAM key = 0; key < 256; ++key) {
        const std::size_t before = g_keysOfTheEdit.size();
        const LRESULT result = Press(key);
        if (g_keysOfTheEdit.size() == before) {
            EXPECT_EQ(result, 0) << key;
        }
    }
    EXPECT_THAT(g_keysOfTheEdit, ElementsAre(8, 37, 39, 44, 45, 46, 48, 49, 50, 51, 52, 53, 54, 55, 56, 57));
    EXPECT_THAT(calls.Calls(), IsEmpty());
    EXPECT_EQ(Text(IDC_PAGES), L"");
}

TEST_F(DispatchPageEditTest, ArrowsAndDeleteEdit) {
    SetTextWithCaretAt(L"123", 1);
    Press(VK_RIGHT);
    EXPECT_EQ(Caret(), 2);
    Press(VK_LEFT);
    EXPECT_EQ(Caret(), 1);
    Press(VK_DELETE);
    EXPECT_EQ(Text(IDC_PAGES), L"13");
}

TEST_F(DispatchPageEditTest, HomeEndAndVerticalArrowsDoNothing) {
    for (const WPARAM key :
         std::initializer_list<WPARAM>{VK_HOME, VK_END, VK_UP, VK_DOWN, VK_PRIOR, VK_NEXT}) {
        SetTextWithCaretAt(L"123", 2);
        Press(key);
        EXPECT_EQ(Caret(), 2) << key;
    }
}

// The keyboard with its number lock on, and with the shift key held when asked to, as long as it lives.
class HeldKeys {
public:
    explicit HeldKeys(bool shift) {
        ::GetKeyboardState(m_before);
        BYTE held[256] = {};
        held[VK_NUMLOCK] = 1;
        if (shift) held[VK_SHIFT] = 0x80;
        ::SetKeyboardState(held);
    }
    HeldKeys(const HeldKeys&) = delete;
    HeldKeys& operator=(const HeldKeys&) = delete;
    ~HeldKeys() { ::SetKeyboardState(m_before); }

private:
    BYTE m_before[256] = {};
};

TEST_F(DispatchPageEditTest, SwallowedKeysStillGiveTheirCharacters) {
    // The keys of the numeric pad and of the minus are refused, but the loop makes their characters before.
    // Where the minus and the 8 lie depends on the keyboard.
    std::size_t typed = 0;
    for (const SHORT key : {static_cast<SHORT>(VK_NUMPAD5), ::VkKeyScanW(L'-'), ::VkKeyScanW(L'8')}) {
        const HeldKeys held((HIBYTE(key) & 1) != 0);
        ::PostMessageW(Edit(), WM_KEYDOWN, LOBYTE(key), 1);
        ++typed;
        EXPECT_TRUE(
            PumpUntil([&] { return Text(IDC_PAGES).size() == typed; }, std::chrono::seconds(5), Dialog()));
    }
    EXPECT_EQ(Text(IDC_PAGES), L"5-8");
    EXPECT_THAT(calls.Calls(), IsEmpty());
}

TEST_F(DispatchPageEditTest, ALetterKeyBeepsAndTypesNothing) {
    ::PostMessageW(Edit(), WM_KEYDOWN, L'A', 1);
    EXPECT_TRUE(PumpUntil([&] { return !calls.Calls().empty(); }, std::chrono::seconds(5), Dialog()));
    EXPECT_THAT(calls.Calls(), ElementsAre("Beep 400 100"));
    EXPECT_EQ(Text(IDC_PAGES), L"");
}

TEST_F(DispatchPageEditTest, OtherEditsTakeEverything) {
    for (const wchar_t character : std::wstring(L"-x a")) {
        ::SendMessageW(Control(IDC_EXTRA_OPTIONS), WM_CHAR, character, 1);
    }
    EXPECT_EQ(Text(IDC_EXTRA_OPTIONS), L"-x a");
    EXPECT_THAT(calls.Calls(), IsEmpty());
}

}  // namespace
