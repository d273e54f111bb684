// The main window as it is after set-up: its controls, where, of what kind and in which state, and itself.
#include "tests/window/main_window_fixture.h"

namespace {

// A window class with the low word of the style.
struct Kind {
    const wchar_t* windowClass;
    DWORD style;

    bool operator==(const Kind&) const = default;
};
constexpr wchar_t kButton[] = L"Button";
constexpr wchar_t kEditClass[] = L"Edit";
constexpr wchar_t kStatic[] = L"Static";
constexpr Kind kPush = {kButton, BS_PUSHBUTTON};
constexpr Kind kDefaultPush = {kButton, BS_DEFPUSHBUTTON};
constexpr Kind kIconPush = {kButton, BS_PUSHBUTTON | BS_ICON};
constexpr Kind kCheckBox = {kButton, BS_AUTOCHECKBOX};
constexpr Kind kNotifyingCheckBox = {kButton, BS_AUTOCHECKBOX | BS_NOTIFY};
constexpr Kind kGroup = {kButton, BS_GROUPBOX};
constexpr Kind kEdit = {kEditClass, ES_AUTOHSCROLL};
constexpr Kind kDigits = {kEditClass, ES_AUTOHSCROLL | ES_NUMBER | ES_RIGHT};
constexpr Kind kLabel = {kStatic, SS_LEFT};
constexpr Kind kStatus = {kStatic, SS_LEFT | SS_ENDELLIPSIS | SS_NOPREFIX};  // "&" is part of a path
constexpr Kind kList = {L"SysListView32",
                        LVS_REPORT | LVS_SINGLESEL | LVS_SHOWSELALWAYS | LVS_ALIGNLEFT | LVS_NOSORTHEADER};

constexpr bool kEnabled = true;
constexpr bool kDisabled = false;

struct ControlRow {
    int id;
    Kind kind;
    const wchar_t* text;
    RECT place;  // left, top, width and height in dialog units
    bool enabled;
};

constexpr ControlRow kRows[] = {
    {IDOK, kDefaultPush, L"   Convertir ", {361, 149, 75, 28}, kDisabled},
    {IDCANCEL, kPush, L"Quitter", {456, 163, 50, 14}, kEnabled},
    {IDC_ABOUT, kPush, L"À propos...", {456, 4, 50, 14}, kEnabled},
    {IDC_ADD, kPush, L"  Ajouter des PDF...", {69, 4, 92, 15}, kEnabled},
    {IDC_STATUS, kStatus, L"", {7, 180, 499, 9}, kEnabled},
    {IDC_CLEAR, kPush, L"  Vider la liste", {217, 4, 75, 15}, kEnabled},
    {IDC_PAGES_CHECK, kNotifyingCheckBox, L"Pages :", {357, 22, 39, 10}, kEnabled},
    {IDC_PAGES, kEdit, L"", {407, 21, 74, 12}, kDisabled},
    {IDC_RESOLUTION_CHECK, kNotifyingCheckBox, L"DPI (-d) : ", {357, 36, 46, 10}, kEnabled},
    {IDC_RESOLUTION, kDigits, L"", {407, 35, 32, 12}, kDisabled},
    {IDC_STATIC, kLabel, L"(72 - 6000)", {448, 36, 37, 8}, kEnabled},
    {IDC_NO_METADATA, kCheckBox, L"Pas de métadonnées (--no-metadata)", {357, 48, 141, 10}, kEnabled},
    {IDC_NO_OUTLINE, kCheckBox, L"Pas de TdM (--no-outline)", {357, 59, 101, 10}, kEnabled},
    {IDC_NO_HYPERLINKS,
     kCheckBox,
     L"Pas de liens hypertexte (--no-hyperlinks)",
     {357, 70, 149, 10},
     kEnabled},
    {IDC_NO_TEXT, kCheckBox, L"Ignorer la couche texte (--no-text)", {357, 81, 129, 10}, kEnabled},
    {IDC_LINES, kCheckBox, L"Texte par lignes (--lines)", {357, 92, 96, 10}, kEnabled},
    {IDC_MONOCHROME, kCheckBox, L"Monochrome", {357, 103, 61, 10}, kEnabled},
    {IDC_STATIC, kGroup, L"Options supplémentaires", {356, 115, 150, 28}, kEnabled},
    {IDC_EXTRA_OPTIONS, kEdit, L"", {360, 126, 139, 12}, kEnabled},
    {IDC_HIDE_OUTPUT, kCheckBox, L"Masquer la sortie", {7, 152, 73, 10}, kEnabled},
    {IDC_OPEN_DESTINATION, kPush, L"Ouvrir le dossier de destination", {229, 153, 120, 14}, kDisabled},
    {IDC_OPEN_LOG, kPush, L"Ouvrir le journal...", {147, 153, 73, 14}, kDisabled},
    {IDC_OUTPUT_FOLDER, kEdit, L"", {144, 139, 179, 12}, kDisabled},
    {IDC_BROWSE, kIconPush, L"...", {328, 139, 21, 13}, kDisabled},
    {IDC_OUTPUT_FOLDER_CHECK,
     kCheckBox,
     L"Convertir les DjVu dans ce dossier :",
     {7, 140, 132, 10},
     kEnabled},
    {IDC_SHUT_DOWN, kCheckBox, L"Éteindre l'ordinateur", {7, 165, 84, 10}, kEnabled},
    {IDC_FILE_LIST, kList, L"", {7, 22, 341, 116}, kEnabled},
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
    [[nodiscard]] static std::wstring ClassName(HWND window) {
        wchar_t text[32] = {};
        ::GetClassNameW(window, text, ARRAYSIZE(text));
        return text;
    }
    [[nodiscard]] static std::wstring Title(HWND window) {
        wchar_t text[128] = {};
        ::GetWindowTextW(window, text, ARRAYSIZE(text));
        return text;
    }
    [[nodiscard]] RECT Pixels(RECT units) const {
        ::MapDialogRect(Dialog(), &units);
        return units;
    }
};

TEST_F(SetUpControlsTest, EveryControlIsOfItsKindInItsStateAtItsPlaceInTheTemplatesOrder) {
    HWND control = ::GetWindow(Dialog(), GW_CHILD);
    for (const ControlRow& row : kRows) {
        SCOPED_TRACE(Utf8(row.text) + ' ' + std::to_string(row.id));
        ASSERT_NE(control, nullptr);
        EXPECT_EQ(::GetDlgCtrlID(control), row.id);
        EXPECT_EQ(ClassName(control), row.kind.windowClass);
        EXPECT_EQ(LOWORD(Style(control)), row.kind.style);
        EXPECT_EQ(Utf8(Title(control)), Utf8(row.text));
        EXPECT_EQ(::IsWindowEnabled(control) != FALSE, row.enabled);
        EXPECT_EQ((Style(control) & WS_VISIBLE) != 0, row.id != IDC_OPEN_LOG) << "visible";
        const bool isTabStop = row.kind.windowClass != kStatic && row.kind != kGroup;
        EXPECT_EQ((Style(control) & WS_TABSTOP) != 0, isTabStop);
        if (row.kind == kCheckBox || row.kind == kNotifyingCheckBox) {
            EXPECT_FALSE(IsChecked(row.id));
        }
        const RECT expected = Pixels(row.place);
        RECT place = {};
        ::GetWindowRect(control, &place);
        EXPECT_EQ(place.right - place.left, expected.right) << "width";
        EXPECT_EQ(place.bottom - place.top, expected.bottom) << "height";
        ::MapWindowPoints(nullptr, Dialog(), reinterpret_cast<POINT*>(&place), 2);
        EXPECT_EQ(place.left, expected.left);
        EXPECT_EQ(place.top, expected.top);
        control = ::GetWindow(control, GW_HWNDNEXT);
    }
    EXPECT_EQ(control, nullptr) << "there is one more";
    EXPECT_EQ(RowCount(), 0);
}

TEST_F(SetUpControlsTest, StatusLineAndListHaveBordersTheListAcceptsFilesAndThePageEditIsTransparent) {
    EXPECT_TRUE(HasBorder(Control(IDC_STATUS)));
    EXPECT_TRUE(HasBorder(Control(IDC_FILE_LIST)));
    EXPECT_NE(ExtendedStyle(Control(IDC_FILE_LIST)) & WS_EX_ACCEPTFILES, 0u);
    EXPECT_NE(ExtendedStyle(Control(IDC_PAGES)) & WS_EX_TRANSPARENT, 0u);
}

TEST_F(SetUpControlsTest, TheWindowIsAnOverlappedOneWithCaptionMenuAndMinimiseBoxOnly) {
    EXPECT_EQ(ClassName(Dialog()), L"#32770");
    EXPECT_EQ(Title(Dialog()), L"Talvenor");
    EXPECT_EQ(Style(Dialog()) & WS_CAPTION, static_cast<DWORD>(WS_CAPTION));
    EXPECT_NE(Style(Dialog()) & WS_SYSMENU, 0u);
    EXPECT_NE(Style(Dialog()) & WS_MINIMIZEBOX, 0u);
    EXPECT_EQ(Style(Dialog()) & (WS_POPUP | WS_CHILD | WS_MAXIMIZEBOX | WS_THICKFRAME | DS_CENTER), 0u);
    EXPECT_EQ(Style(Dialog()) & WS_VISIBLE, 0u) << "it is shown by whoever created it";
    EXPECT_EQ(::GetWindow(Dialog(), GW_OWNER), nullptr);
    const RECT expected = Pixels({0, 0, 513, 189});
    RECT client = {};
    ::GetClientRect(Dialog(), &client);
    EXPECT_EQ(client.right, expected.right);
    EXPECT_EQ(client.bottom, expected.bottom);
}

TEST_F(SetUpControlsTest, TabGoesThroughTheEnabledControlsInTheirOrder) {
    Click(IDC_PAGES_CHECK);  // its edit is a stop once it is enabled
    std::vector<int> expected, ids;
    for (const ControlRow& row : kRows) {
        if (IsEnabled(row.id) && (Style(Control(row.id)) & WS_TABSTOP) != 0) expected.push_back(row.id);
    }
    ::SetFocus(Control(IDC_FILE_LIST));
    do {
        MSG tab = {::GetFocus(), WM_KEYDOWN, VK_TAB, 1, 0, {}};
        loop.FilterMessage(tab);
        ids.push_back(::GetDlgCtrlID(::GetFocus()));
    } while (ids.back() != IDC_FILE_LIST && ids.size() < std::size(kRows));
    EXPECT_EQ(ids, expected);
}

}  // namespace
