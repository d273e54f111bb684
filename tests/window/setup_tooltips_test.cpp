// Tool tips: one control of the dialog's, six tools.
#include "tests/window/main_window_fixture.h"
#include "tests/window/control_calls.h"
#include "tests/window/forwarding_import.h"

namespace {

using testing::ElementsAre;

struct Tool {
    UINT size;
    UINT flags;
    HWND window;
    UINT_PTR id;
    RECT area;
    std::wstring text;
    LPARAM data;
};

// What the window is made with.
struct Made {
    HWND window = nullptr;
    DWORD exStyle = 0;
    DWORD style = 0;
    std::vector<int> place;
    HWND parent = nullptr;
};
Made g_made;

HWND WINAPI CreateToolTips(DWORD exStyle, LPCWSTR className, LPCWSTR title, DWORD style, int x, int y,
                           int width, int height, HWND parent, HMENU menu, HINSTANCE module,
                           LPVOID parameter) {
    const HWND window = original<&CreateToolTips>(exStyle, className, title, style, x, y, width, height,
                                                  parent, menu, module, parameter);
    EXPECT_EQ(std::wstring(className), L"tooltips_class32");
    g_made = {window, exStyle, style, {x, y, width, height}, parent};
    return window;
}

// The version that the system is compared with.
struct Version {
    static inline bool isLater = true;
    static inline OSVERSIONINFOEXW asked = {};
    static inline DWORD types = 0;
    static inline DWORDLONG conditions = 0;
    static BOOL WINAPI Verify(LPOSVERSIONINFOEXW version, DWORD typeMask, DWORDLONG conditionMask) {
        asked = *version;
        types = typeMask;
        conditions = conditionMask;
        return isLater;
    }
};

class SetUpToolTipsTest : public MainWindowFixture {
protected:
    SetUpToolTipsTest() {
        Version::isLater = true;
        g_made = {};
        const auto create = ReplaceAndForward<&CreateToolTips>("CreateWindowExW");
        const ReplacedImport verify("VerifyVersionInfoW", &Version::Verify);
        CreateAndCollect();
    }

    void CreateAndCollect() {
        tools.clear();
        widths.clear();
        const ControlCalls recorded(
            calls, [this](HWND window, UINT message, WPARAM, LPARAM lParam) -> std::optional<LRESULT> {
                if (message == TTM_ADDTOOLW) {
                    const auto& tool = *reinterpret_cast<const TTTOOLINFOW*>(lParam);
                    tools.push_back({tool.cbSize, tool.uFlags, tool.hwnd, tool.uId, tool.rect, tool.lpszText,
                                     tool.lParam});
                }
                if (message == TTM_SETMAXTIPWIDTH) widths.push_back(lParam);
                if (message >= TTM_ACTIVATE && message <= TTM_ADDTOOLW) windows.push_back(window);
                return std::nullopt;
            });
        Create();
    }

    std::vector<Tool> tools;
    std::vector<LPARAM> widths;
    std::vector<HWND> windows;
};

TEST_F(SetUpToolTipsTest, OneTopmostWindowOfTheDialogsShowsThem) {
    EXPECT_EQ(g_made.exStyle, static_cast<DWORD>(WS_EX_TOPMOST));
    EXPECT_EQ(g_made.style, static_cast<DWORD>(WS_POPUP | TTS_NOPREFIX | TTS_ALWAYSTIP));
    EXPECT_THAT(g_made.place, ElementsAre(CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT));
    EXPECT_EQ(g_made.parent, Dialog());
    EXPECT_EQ(::SendMessageW(g_made.window, TTM_GETTOOLCOUNT, 0, 0), 6);
    for (const HWND window : windows) EXPECT_EQ(window, g_made.window);
}

TEST_F(SetUpToolTipsTest, SixControlsHaveTipsInTheirOrder) {
    std::vector<int> controls;
    for (const Tool& tool : tools) controls.push_back(::GetDlgCtrlID(tool.window));
    EXPECT_THAT(controls, ElementsAre(1014, 1018, 1003, 1019, 1026, 1038));
}

TEST_F(SetUpToolTipsTest, TheTextsComeFromTheStringTable) {
    std::vector<std::string> texts;
    for (const Tool& tool : tools) texts.push_back(Utf8(tool.text));
    EXPECT_THAT(
        texts,
        ElementsAre(
            "Entrer des n° de pages, séparées par des virgules, un tiret pour un intervalle.\r\n- Ex : "
            "2,5,8-56",
            "Ajouter d'autres options à la ligne de commande de pdf2djvu.exe\r\n(insérées telles quelles).",
            "Ajoutez des fichiers PDF à l'aide de ce bouton ou déposez directement des fichiers dans la "
            "liste "
            "depuis l'Explorateur de fichiers de Windows.",
            "Les fenêtres de traitement sont masquées.\r\nTous les résultats et les durées sont enregistrés "
            "dans un fichier journal.",
            "Par défaut, les DjVu sont enregistrés dans le même dossier que les PDF.\r\nCocher cette case "
            "permet de définir un dossier de sortie unique.",
            "La machine sera éteinte 30 secondes après la fin des conversions.\r\n(Si d'autres applications "
            "ouvertes ont des données non sauvegardées, elles peuvent bloquer l'extinction.)"));
}

TEST_F(SetUpToolTipsTest, EveryToolIsItsControlWithTheRectangleOfTheExtraOptions) {
    RECT area = {};
    ::GetClientRect(Control(IDC_EXTRA_OPTIONS), &area);
    ASSERT_EQ(tools.size(), 6u);
    for (const Tool& tool : tools) {
        EXPECT_EQ(tool.flags, static_cast<UINT>(TTF_SUBCLASS));
        EXPECT_EQ(tool.id, 1u);
        EXPECT_TRUE(::EqualRect(&tool.area, &area));
        EXPECT_EQ(tool.data, 0);
    }
}

TEST_F(SetUpToolTipsTest, TipsAreAsWideAsTheExtraOptionsAtMost) {
    RECT area = {};
    ::GetClientRect(Control(IDC_EXTRA_OPTIONS), &area);
    EXPECT_THAT(widths, ElementsAre(area.right));
    EXPECT_EQ(::SendMessageW(g_made.window, TTM_GETMAXTIPWIDTH, 0, 0), area.right);
}

TEST_F(SetUpToolTipsTest, TheSystemIsComparedWithVersionSix) {
    EXPECT_EQ(Version::asked.dwOSVersionInfoSize, sizeof(OSVERSIONINFOEXW));
    EXPECT_EQ(Version::asked.dwMajorVersion, 6u);
    EXPECT_EQ(Version::asked.dwMinorVersion, 0u);
    EXPECT_EQ(Version::asked.wServicePackMajor, 0);
    EXPECT_EQ(Version::types, static_cast<DWORD>(VER_MAJORVERSION | VER_MINORVERSION | VER_SERVICEPACKMAJOR));
    // "Greater or equal" is 3; three bits a field: minor version at 0, major version at 3, service pack
    // at 15.
    EXPECT_EQ(Version::conditions & 0x00FFFFFF, 0x1801Bu);
}

TEST_F(SetUpToolTipsTest, LaterSystemsGetTheFullDescriptionOfATool) {
    for (const Tool& tool : tools) EXPECT_EQ(tool.size, 72u);
}

TEST_F(SetUpToolTipsTest, EarlierSystemsGetTheShorterOneAndTakeItAll) {
    Destroy();
    Version::isLater = false;
    const auto create = ReplaceAndForward<&CreateToolTips>("CreateWindowExW");
    const ReplacedImport verify("VerifyVersionInfoW", &Version::Verify);
    CreateAndCollect();
    ASSERT_EQ(tools.size(), 6u);
    for (const Tool& tool : tools) EXPECT_EQ(tool.size, 64u);  // without the reserved field behind the data
    EXPECT_EQ(::SendMessageW(g_made.window, TTM_GETTOOLCOUNT, 0, 0), 6);
}

}  // namespace
