// Tool tips: one control of the dialog's, six tools.
#include "tests/window/main_window_fixture.h"
#include "tests/window/marked_strings.h"

#include <tuple>
#include <utility>

namespace {

using testing::ElementsAre;
using testing::Pair;

class ToolTipsTest : public MainWindowFixture {
protected:
    ToolTipsTest() { CreateOn(TRUE); }

    // Creates the dialog on a system that is version 6 or later, or earlier.
    void CreateOn(BOOL isLater) {
        Destroy();
        texts.clear();
        tools.clear();
        const auto verify = REPLACE_IMPORT(VerifyVersionInfoW, [&](LPOSVERSIONINFOEXW version, DWORD types,
                                                                   DWORDLONG conditions) {
            EXPECT_EQ(version->dwOSVersionInfoSize, sizeof(OSVERSIONINFOEXW));
            EXPECT_EQ(
                std::tuple(version->dwMajorVersion, version->dwMinorVersion, version->wServicePackMajor),
                std::tuple(6u, 0u, 0));
            EXPECT_EQ(types, static_cast<DWORD>(VER_MAJORVERSION | VER_MINORVERSION | VER_SERVICEPACKMAJOR));
            // "Greater or equal" is 3; three bits a field: minor version at 0, major version at 3,
            // service pack at 15.
            EXPECT_EQ(conditions & 0x00FFFFFF, 0x1801Bu);
            return isLater;
        });
        const auto create = REPLACE_IMPORT(
            CreateWindowExW, [&](auto original, DWORD exStyle, LPCWSTR className, auto... others) {
                EXPECT_EQ(exStyle, static_cast<DWORD>(WS_EX_TOPMOST));
                EXPECT_STREQ(className, L"tooltips_class32");
                asked = {others...};
                return window = original(exStyle, className, others...);
            });
        MarkedStrings strings;
        Recorded([&] { Create(); }, {},
                 [&](HWND to, UINT message, WPARAM, LPARAM lParam) -> std::optional<LRESULT> {
                     if (message >= TTM_ACTIVATE && message <= TTM_ADDTOOLW) {
                         EXPECT_EQ(to, window);
                     }
                     if (message == TTM_SETMAXTIPWIDTH) maximumWidth = lParam;
                     if (message == TTM_ADDTOOLW) {
                         tools.push_back(*reinterpret_cast<const TTTOOLINFOW*>(lParam));
                         texts.emplace_back(::GetDlgCtrlID(tools.back().hwnd), tools.back().lpszText);
                     }
                     return std::nullopt;
                 });
    }
    [[nodiscard]] LRESULT ToolCount() const { return ::SendMessageW(window, TTM_GETTOOLCOUNT, 0, 0); }

    HWND window = nullptr;
    std::tuple<LPCWSTR, DWORD, int, int, int, int, HWND, HMENU, HINSTANCE, LPVOID> asked;
    LPARAM maximumWidth = 0;
    std::vector<TTTOOLINFOW> tools;
    std::vector<std::pair<int, std::wstring>> texts;  // by control
};

TEST_F(ToolTipsTest, OneWindowOfTheDialogsShowsTheTextsOfSixControls) {
    constexpr DWORD kStyle = WS_POPUP | TTS_NOPREFIX | TTS_ALWAYSTIP;
    constexpr int kAny = CW_USEDEFAULT;
    EXPECT_EQ(asked, std::tuple(nullptr, kStyle, kAny, kAny, kAny, kAny, Dialog(), nullptr,
                                ::GetModuleHandleW(nullptr), nullptr));
    EXPECT_EQ(ToolCount(), 6);
    EXPECT_THAT(texts, ElementsAre(Pair(IDC_PAGES, L"<204>"), Pair(IDC_EXTRA_OPTIONS, L"<205>"),
                                   Pair(IDC_ADD, L"<147>"), Pair(IDC_HIDE_OUTPUT, L"<133>"),
                                   Pair(IDC_OUTPUT_FOLDER_CHECK, L"<136>"), Pair(IDC_SHUT_DOWN, L"<138>")));
}

TEST_F(ToolTipsTest, EveryToolHasTheRectangleAndWidthOfTheExtraOptionsAndTheFullDescription) {
    RECT area = {};
    ::GetClientRect(Control(IDC_EXTRA_OPTIONS), &area);
    EXPECT_EQ(maximumWidth, area.right);
    EXPECT_EQ(::SendMessageW(window, TTM_GETMAXTIPWIDTH, 0, 0), maximumWidth);
    ASSERT_EQ(tools.size(), 6u);
    for (const TTTOOLINFOW& tool : tools) {
        EXPECT_EQ(tool.cbSize, 72u);
        EXPECT_EQ(tool.uFlags, static_cast<UINT>(TTF_SUBCLASS));
        EXPECT_EQ(tool.uId, 1u);
        EXPECT_TRUE(::EqualRect(&tool.rect, &area));
        EXPECT_EQ(tool.lParam, 0);
    }
}

TEST_F(ToolTipsTest, EarlierSystemsGetTheShorterDescriptionAndTakeItAll) {
    CreateOn(FALSE);
    ASSERT_EQ(tools.size(), 6u);
    for (const TTTOOLINFOW& tool : tools) {
        EXPECT_EQ(tool.cbSize, 64u);  // without the reserved field behind the data
    }
    EXPECT_EQ(ToolCount(), 6);
}

}  // namespace
