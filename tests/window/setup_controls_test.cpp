// The controls of the main window as they are after set-up: which, where, of what kind and in which state.
#include "tests/window/main_window_fixture.h"

#include <ostream>

namespace {

using testing::ElementsAre;

constexpr int kNoId = -1;
constexpr bool kEnabled = true;
constexpr bool kDisabled = false;

// Low words of the styles.
constexpr DWORD kPush = BS_PUSHBUTTON;
constexpr DWORD kDefaultPush = BS_DEFPUSHBUTTON;
constexpr DWORD kIconPush = BS_PUSHBUTTON | BS_ICON;
constexpr DWORD kBox = BS_AUTOCHECKBOX;
constexpr DWORD kNotifyingBox = BS_AUTOCHECKBOX | BS_NOTIFY;
constexpr DWORD kGroup = BS_GROUPBOX;
constexpr DWORD kEdit = ES_AUTOHSCROLL;
constexpr DWORD kDigits = ES_AUTOHSCROLL | ES_NUMBER | ES_RIGHT;
constexpr DWORD kLabel = SS_LEFT;
constexpr DWORD kStatus = SS_LEFT | SS_ENDELLIPSIS | SS_NOPREFIX;  // no prefix: "&" is part of a path
constexpr DWORD kList = LVS_REPORT | LVS_SINGLESEL | LVS_SHOWSELALWAYS | LVS_ALIGNLEFT | LVS_NOSORTHEADER;

struct ControlRow {
    const char* name;
    int id;
    const wchar_t* windowClass;
    const wchar_t* text;
    RECT place;  // left, top, width and height in dialog units
    bool enabled;
    DWORD style;
};

constexpr ControlRow kRows[] = {
    {"Convert", 1, L"Button", L"   Convertir ", {361, 149, 75, 28}, kDisabled, kDefaultPush},
    {"Quit", 2, L"Button", L"Quitter", {456, 163, 50, 14}, kEnabled, kPush},
    {"About", 57664, L"Button", L"À propos...", {456, 4, 50, 14}, kEnabled, kPush},
    {"Add", 1003, L"Button", L"  Ajouter des PDF...", {69, 4, 92, 15}, kEnabled, kPush},
    {"Status", 1004, L"Static", L"", {7, 180, 499, 9}, kEnabled, kStatus},
    {"Clear", 1005, L"Button", L"  Vider la liste", {217, 4, 75, 15}, kEnabled, kPush},
    {"PagesBox", 1034, L"Button", L"Pages :", {357, 22, 39, 10}, kEnabled, kNotifyingBox},
    {"Pages", 1014, L"Edit", L"", {407, 21, 74, 12}, kDisabled, kEdit},
    {"ResolutionBox", 1033, L"Button", L"DPI (-d) : ", {357, 36, 46, 10}, kEnabled, kNotifyingBox},
    {"Resolution", 1032, L"Edit", L"", {407, 35, 32, 12}, kDisabled, kDigits},
    {"ResolutionHint", kNoId, L"Static", L"(72 - 6000)", {448, 36, 37, 8}, kEnabled, kLabel},
    {"NoMetadata",
     1017,
     L"Button",
     L"Pas de métadonnées (--no-metadata)",
     {357, 48, 141, 10},
     kEnabled,
     kBox},
    {"NoOutline", 1036, L"Button", L"Pas de TdM (--no-outline)", {357, 59, 101, 10}, kEnabled, kBox},
    {"NoHyperlinks",
     1037,
     L"Button",
     L"Pas de liens hypertexte (--no-hyperlinks)",
     {357, 70, 149, 10},
     kEnabled,
     kBox},
    {"NoText", 1015, L"Button", L"Ignorer la couche texte (--no-text)", {357, 81, 129, 10}, kEnabled, kBox},
    {"Lines", 1016, L"Button", L"Texte par lignes (--lines)", {357, 92, 96, 10}, kEnabled, kBox},
    {"Monochrome", 1030, L"Button", L"Monochrome", {357, 103, 61, 10}, kEnabled, kBox},
    {"ExtraOptionsFrame",
     kNoId,
     L"Button",
     L"Options supplémentaires",
     {356, 115, 150, 28},
     kEnabled,
     kGroup},
    {"ExtraOptions", 1018, L"Edit", L"", {360, 126, 139, 12}, kEnabled, kEdit},
    {"HideOutput", 1019, L"Button", L"Masquer la sortie", {7, 152, 73, 10}, kEnabled, kBox},
    {"OpenDestination",
     1022,
     L"Button",
     L"Ouvrir le dossier de destination",
     {229, 153, 120, 14},
     kDisabled,
     kPush},
    {"OpenLog", 1024, L"Button", L"Ouvrir le journal...", {147, 153, 73, 14}, kDisabled, kPush},
    {"OutputFolder", 1027, L"Edit", L"", {144, 139, 179, 12}, kDisabled, kEdit},
    {"Browse", 1028, L"Button", L"...", {328, 139, 21, 13}, kDisabled, kIconPush},
    {"OutputFolderBox",
     1026,
     L"Button",
     L"Convertir les DjVu dans ce dossier :",
     {7, 140, 132, 10},
     kEnabled,
     kBox},
    {"ShutDown", 1038, L"Button", L"Éteindre l'ordinateur", {7, 165, 84, 10}, kEnabled, kBox},
    {"FileList", 1040, L"SysListView32", L"", {7, 22, 341, 116}, kEnabled, kList},
};

class SetUpControlsTest : public MainWindowFixture {
protected:
    SetUpControlsTest() { Create(); }

    [[nodiscard]] static DWORD Style(HWND window) {
        return static_cast<DWORD>(::GetWindowLongPtrW(window, GWL_STYLE));
    }
    [[nodiscard]] static DWORD ExtendedStyle(HWND window) {
        return static_cast<DWORD>(::GetWindowLongPtrW(window, GWL_EXSTYLE));
    }
    // Borders of controls in the template may become edges.
    [[nodiscard]] static bool HasBorder(HWND window) {
        return (Style(window) & WS_BORDER) != 0 || (ExtendedStyle(window) & WS_EX_CLIENTEDGE) != 0;
    }
    // The children in their order.
    [[nodiscard]] std::vector<HWND> Children() const {
        std::vector<HWND> children;
        for (HWND child = ::GetWindow(Dialog(), GW_CHILD); child; child = ::GetWindow(child, GW_HWNDNEXT)) {
            children.push_back(child);
        }
        return children;
    }
};

TEST_F(SetUpControlsTest, TheControlsStandInTheTemplatesOrder) {
    std::vector<int> ids, expected;
    for (const HWND child : Children()) ids.push_back(::GetDlgCtrlID(child));
    for (const ControlRow& row : kRows) expected.push_back(row.id);
    EXPECT_EQ(ids, expected);
}

TEST_F(SetUpControlsTest, EveryControlIsOfItsKindInItsStateAtItsPlace) {
    const std::vector<HWND> children = Children();
    ASSERT_EQ(children.size(), std::size(kRows));
    for (std::size_t index = 0; index < std::size(kRows); ++index) {
        const ControlRow& row = kRows[index];
        SCOPED_TRACE(row.name);
        const HWND control = children[index];
        wchar_t text[128] = {};
        ::GetClassNameW(control, text, ARRAYSIZE(text));
        EXPECT_EQ(std::wstring(text), row.windowClass);
        ::GetWindowTextW(control, text, ARRAYSIZE(text));
        EXPECT_EQ(Utf8(text), Utf8(row.text));
        EXPECT_EQ(::IsWindowEnabled(control) != FALSE, row.enabled);
        EXPECT_EQ((Style(control) & WS_VISIBLE) != 0, row.id != IDC_OPEN_LOG) << "visible";
        EXPECT_EQ(LOWORD(Style(control)), row.style);

        RECT expected = row.place;
        ::MapDialogRect(Dialog(), &expected);
        RECT place = {};
        ::GetWindowRect(control, &place);
        EXPECT_EQ(place.right - place.left, expected.right) << "width";
        EXPECT_EQ(place.bottom - place.top, expected.bottom) << "height";
        ::MapWindowPoints(nullptr, Dialog(), reinterpret_cast<POINT*>(&place), 2);
        EXPECT_EQ(place.left, expected.left);
        EXPECT_EQ(place.top, expected.top);
    }
}

TEST_F(SetUpControlsTest, EveryBoxIsUncheckedAndEveryEditEmpty) {
    for (const ControlRow& row : kRows) {
        if (row.style == kBox || row.style == kNotifyingBox) {
            EXPECT_FALSE(IsChecked(row.id)) << row.name;
        }
        if (row.windowClass == std::wstring_view(L"Edit")) {
            EXPECT_EQ(Text(row.id), L"") << row.name;
        }
    }
    EXPECT_EQ(RowCount(), 0);
}

TEST_F(SetUpControlsTest, AllButTextsAndTheGroupBoxAreTabStops) {
    const std::vector<HWND> children = Children();
    for (std::size_t index = 0; index < std::size(kRows); ++index) {
        const bool isText = kRows[index].windowClass == std::wstring_view(L"Static");
        EXPECT_EQ((Style(children[index]) & WS_TABSTOP) != 0, !isText && kRows[index].style != kGroup)
            << kRows[index].name;
    }
}

TEST_F(SetUpControlsTest, TheStatusLineAndTheListHaveBorders) {
    EXPECT_TRUE(HasBorder(Control(IDC_STATUS)));
    EXPECT_TRUE(HasBorder(Control(IDC_FILE_LIST)));
}

TEST_F(SetUpControlsTest, TheListAcceptsFilesAndThePageEditKeepsItsTransparency) {
    EXPECT_NE(ExtendedStyle(Control(IDC_FILE_LIST)) & WS_EX_ACCEPTFILES, 0u);
    EXPECT_NE(ExtendedStyle(Control(IDC_PAGES)) & WS_EX_TRANSPARENT, 0u);
}

TEST_F(SetUpControlsTest, TheWindowIsAnOverlappedOneWithCaptionMenuAndMinimiseBoxOnly) {
    EXPECT_EQ(Style(Dialog()) & WS_CAPTION, static_cast<DWORD>(WS_CAPTION));
    EXPECT_NE(Style(Dialog()) & WS_SYSMENU, 0u);
    EXPECT_NE(Style(Dialog()) & WS_MINIMIZEBOX, 0u);
    EXPECT_EQ(Style(Dialog()) & (WS_POPUP | WS_CHILD | WS_MAXIMIZEBOX | WS_THICKFRAME | DS_CENTER), 0u);
    EXPECT_EQ(Style(Dialog()) & WS_VISIBLE, 0u) << "it is shown by whoever created it";
    EXPECT_EQ(::GetWindow(Dialog(), GW_OWNER), nullptr);
}

TEST_F(SetUpControlsTest, TheWindowIsADialogOfTheStandardClassCalledTalvenor) {
    wchar_t text[32] = {};
    ::GetClassNameW(Dialog(), text, ARRAYSIZE(text));
    EXPECT_EQ(std::wstring(text), L"#32770");
    ::GetWindowTextW(Dialog(), text, ARRAYSIZE(text));
    EXPECT_EQ(std::wstring(text), L"Talvenor");
}

TEST_F(SetUpControlsTest, TheWindowHasTheTemplatesSize) {
    RECT units = {0, 0, 513, 189};
    ::MapDialogRect(Dialog(), &units);
    RECT client = {};
    ::GetClientRect(Dialog(), &client);
    EXPECT_EQ(client.right, units.right);
    EXPECT_EQ(client.bottom, units.bottom);
}

TEST_F(SetUpControlsTest, TabGoesThroughTheEnabledControlsInTheirOrder) {
    const auto walk = [this] {
        std::vector<int> ids;
        ::SetFocus(Control(IDC_FILE_LIST));
        do {
            MSG tab = {::GetFocus(), WM_KEYDOWN, VK_TAB, 1, 0, {}};
            loop.FilterMessage(tab);
            ids.push_back(::GetDlgCtrlID(::GetFocus()));
        } while (ids.back() != IDC_FILE_LIST && ids.size() < 40);
        return ids;
    };
    EXPECT_THAT(walk(), ElementsAre(2, 57664, 1003, 1005, 1034, 1033, 1017, 1036, 1037, 1015, 1016, 1030,
                                    1018, 1019, 1026, 1038, 1040));
    Click(IDC_PAGES_CHECK);
    EXPECT_THAT(walk(), ElementsAre(2, 57664, 1003, 1005, 1034, 1014, 1033, 1017, 1036, 1037, 1015, 1016,
                                    1030, 1018, 1019, 1026, 1038, 1040))
        << "the page edit is a stop once it is enabled";
}

}  // namespace
