// Pictures: the window's two icons and those on the buttons.
#include "tests/window/forwarding_import.h"
#include "tests/window/main_window_fixture.h"
#include "tests/window/setup_calls.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

int WINAPI OddMetrics(int index) {
    switch (index) {
    case SM_CXICON: return 48;
    case SM_CYICON: return 44;
    case SM_CXSMICON: return 20;
    case SM_CYSMICON: return 18;
    default: return original<&OddMetrics>(index);
    }
}

class SetUpIconsTest : public MainWindowFixture {
protected:
    std::vector<std::string> CreateRecorded() {
        const SetUpCalls recorded(calls, folder.Path().wstring());
        Create();
        return calls.Calls();
    }
    [[nodiscard]] HICON WindowIcon(WPARAM size) const {
        return reinterpret_cast<HICON>(::SendMessageW(Dialog(), WM_GETICON, size, 0));
    }
    [[nodiscard]] HANDLE ButtonImage(int id) const {
        return reinterpret_cast<HANDLE>(::SendMessageW(Control(id), BM_GETIMAGE, IMAGE_ICON, 0));
    }
};

TEST_F(SetUpIconsTest, TheWindowsIconsHaveTheSystemsSizes) {
    const auto metrics = ReplaceAndForward<&OddMetrics>("GetSystemMetrics");
    EXPECT_THAT(Only({"LoadImageW 128", "WM_SETICON"}, CreateRecorded()),
                ElementsAre("LoadImageW 128 48x44", "WM_SETICON main 1", "LoadImageW 128 20x18",
                            "WM_SETICON main 0"));
}

TEST_F(SetUpIconsTest, TheWindowHasABigAndASmallIcon) {
    Create();
    EXPECT_NE(WindowIcon(ICON_BIG), nullptr);
    EXPECT_NE(WindowIcon(ICON_SMALL), nullptr);
    EXPECT_NE(WindowIcon(ICON_BIG), WindowIcon(ICON_SMALL));
}

// The pictures of the buttons from their loading to their release.
struct Pictures {
    static inline std::vector<std::string> steps;
    static inline std::vector<HANDLE> loaded, set, released;

    static HICON WINAPI Load(HINSTANCE module, LPCWSTR name) {
        EXPECT_EQ(module, ::GetModuleHandleW(nullptr));
        steps.push_back("load " + std::to_string(reinterpret_cast<ULONG_PTR>(name)));
        const HICON icon = original<&Load>(module, name);
        loaded.push_back(icon);
        return icon;
    }
    static std::optional<LRESULT> Set(HWND button, UINT message, WPARAM type, LPARAM image) {
        if (message == BM_SETIMAGE) {
            EXPECT_EQ(type, static_cast<WPARAM>(IMAGE_ICON));
            steps.push_back("set " + WindowName(button));
            set.push_back(reinterpret_cast<HANDLE>(image));
        }
        return std::nullopt;
    }
    static BOOL WINAPI Release(HICON icon) {
        if (!loaded.empty()) {  // icons of the steps before are others' business
            steps.push_back("release");
            released.push_back(icon);
        }
        return original<&Release>(icon);
    }
};

TEST_F(SetUpIconsTest, EachButtonGetsItsOwnPictureWhichIsThenReleased) {
    Pictures::steps.clear();
    for (auto* const handles : {&Pictures::loaded, &Pictures::set, &Pictures::released}) handles->clear();
    {
        const auto load = ReplaceAndForward<&Pictures::Load>("LoadIconW");
        const auto release = ReplaceAndForward<&Pictures::Release>("DestroyIcon");
        const ControlCalls recorded(calls, &Pictures::Set);
        Create();
    }
    EXPECT_THAT(Pictures::steps,
                ElementsAre("load 128", "set 1", "release", "load 207", "set 1003", "release", "load 208",
                            "set 1005", "release", "load 212", "set 1028", "release"));
    EXPECT_EQ(Pictures::set, Pictures::loaded);
    EXPECT_EQ(Pictures::released, Pictures::loaded);
    // The system keeps what LoadIconW gave, so that the pictures stay.
    std::size_t index = 0;
    for (const int button : {IDOK, IDC_ADD, IDC_CLEAR, IDC_BROWSE}) {
        EXPECT_EQ(ButtonImage(button), Pictures::loaded[index++]) << button;
        const HICON copy = ::CopyIcon(static_cast<HICON>(ButtonImage(button)));
        EXPECT_NE(copy, nullptr) << button;
        ::DestroyIcon(copy);
    }
}

std::vector<HANDLE> g_windowIcons;
HANDLE WINAPI NoteWindowIcons(HINSTANCE module, LPCWSTR name, UINT type, int width, int height, UINT flags) {
    const HANDLE loaded = original<&NoteWindowIcons>(module, name, type, width, height, flags);
    if (name == MAKEINTRESOURCEW(128)) g_windowIcons.push_back(loaded);
    return loaded;
}
BOOL WINAPI ForgetIcon(HICON icon) {
    std::erase(g_windowIcons, icon);
    return original<&ForgetIcon>(icon);
}

TEST_F(SetUpIconsTest, TheWindowsIconsLastAsLongAsTheDialogAndNoLonger) {
    g_windowIcons.clear();
    const auto load = ReplaceAndForward<&NoteWindowIcons>("LoadImageW");
    const auto destroy = ReplaceAndForward<&ForgetIcon>("DestroyIcon");
    Create();
    EXPECT_EQ(g_windowIcons.size(), 2u);
    Destroy();
    EXPECT_THAT(g_windowIcons, IsEmpty());
}

TEST_F(SetUpIconsTest, IconsThatCannotBeLoadedAreMissedInSilence) {
    SetUpCalls::iconsFail = true;
    const auto failing = CreateRecorded();
    EXPECT_THAT(Only({"MessageBoxW", "Beep"}, failing), IsEmpty());
    EXPECT_EQ(failing.back(), "BM_SETIMAGE 1028 1") << "the set-up did not go on to its last step";
    EXPECT_EQ(WindowIcon(ICON_BIG), nullptr);
    EXPECT_EQ(WindowIcon(ICON_SMALL), nullptr);
    EXPECT_EQ(ButtonImage(IDOK), nullptr);
}

}  // namespace
