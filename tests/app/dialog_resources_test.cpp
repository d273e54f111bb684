// The three dialog templates in the built program, control by control, in tab order.
#include <gtest/gtest.h>

#include <windows.h>
#include <commctrl.h>

#include <algorithm>

#include "tests/app/dialog_template.h"
#include "tests/app/installed_program.h"
#include "tests/app/program_resources.h"

namespace {

constexpr DWORD kChild = WS_CHILD | WS_VISIBLE;
constexpr DWORD kPush = kChild | WS_TABSTOP | BS_PUSHBUTTON;
constexpr DWORD kDefaultPush = kChild | WS_TABSTOP | BS_DEFPUSHBUTTON;
constexpr DWORD kBox = kChild | WS_TABSTOP | BS_AUTOCHECKBOX;
constexpr DWORD kEdit = kChild | WS_TABSTOP | WS_BORDER | ES_AUTOHSCROLL;
constexpr DWORD kGroup = kChild | BS_GROUPBOX;
constexpr DWORD kLabel = kChild | WS_GROUP;
constexpr int kNoNumber = -1;

DialogTemplate Dialog(int id) {
    return ReadDialogTemplate(ProgramResources(BuiltProgram()).Bytes(RT_DIALOG, id));
}

// One control at a time: what differs is easier to see.
void ExpectControls(int dialog, const std::vector<TemplateControl>& expected) {
    const auto controls = Dialog(dialog).controls;
    for (std::size_t i = 0; i < std::min(controls.size(), expected.size()); ++i)
        EXPECT_EQ(controls[i], expected[i]) << "control " << i << " in tab order";
    EXPECT_EQ(controls.size(), expected.size());
}

void ExpectFont(const DialogTemplate& dialog) {
    EXPECT_EQ(dialog.font, L"Segoe UI");
    EXPECT_EQ(dialog.fontPoints, 9);
}

void ExpectSmallDialog(const DialogTemplate& dialog, const wchar_t* title, int width, int height) {
    EXPECT_EQ(dialog.title, title);
    EXPECT_EQ(dialog.place.width, width);
    EXPECT_EQ(dialog.place.height, height);
    EXPECT_EQ(dialog.style, WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME | DS_SETFONT);
    EXPECT_EQ(dialog.extendedStyle, 0u);
    EXPECT_EQ(dialog.menu, L"");
    EXPECT_EQ(dialog.windowClass, L"");
    ExpectFont(dialog);
}

TEST(DialogResources, MainWindowIsAnOverlappedWindowWithMinimiseBox) {
    const DialogTemplate dialog = Dialog(102);
    EXPECT_EQ(dialog.title, L"Talvenor");
    EXPECT_EQ(dialog.place.width, 513);
    EXPECT_EQ(dialog.place.height, 189);
    // Neither popup nor visible, and nothing that sizes or centres it.
    EXPECT_EQ(dialog.style, WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX | DS_SETFONT);
    EXPECT_EQ(dialog.extendedStyle, 0u);
    EXPECT_EQ(dialog.menu, L"");
    EXPECT_EQ(dialog.windowClass, L"") << "not the class of dialogs";
    ExpectFont(dialog);
}

TEST(DialogResources, MainWindowHasItsControlsInTabOrder) {
    ExpectControls(
        102,
        {
            {1, L"Button", L"   Convertir ", {361, 149, 75, 28}, kDefaultPush | WS_DISABLED},
            {2, L"Button", L"Quitter", {456, 163, 50, 14}, kPush},
            {57664, L"Button", L"À propos...", {456, 4, 50, 14}, kPush},
            {1003, L"Button", L"  Ajouter des PDF...", {69, 4, 92, 15}, kPush},
            // Names of files are shown as they are: "&" marks no letter in them.
            {1004, L"Static", L"", {7, 180, 499, 9}, kChild | WS_BORDER | SS_ENDELLIPSIS | SS_NOPREFIX},
            {1005, L"Button", L"  Vider la liste", {217, 4, 75, 15}, kPush},
            {1034, L"Button", L"Pages :", {357, 22, 39, 10}, kBox | BS_NOTIFY},
            {1014, L"Edit", L"", {407, 21, 74, 12}, kEdit | WS_DISABLED, WS_EX_TRANSPARENT},
            {1033, L"Button", L"DPI (-d) : ", {357, 36, 46, 10}, kBox | BS_NOTIFY},
            {1032, L"Edit", L"", {407, 35, 32, 12}, kEdit | ES_NUMBER | ES_RIGHT | WS_DISABLED},
            {kNoNumber, L"Static", L"(72 - 6000)", {448, 36, 37, 8}, kLabel},
            {1017, L"Button", L"Pas de métadonnées (--no-metadata)", {357, 48, 141, 10}, kBox},
            {1036, L"Button", L"Pas de TdM (--no-outline)", {357, 59, 101, 10}, kBox},
            {1037, L"Button", L"Pas de liens hypertexte (--no-hyperlinks)", {357, 70, 149, 10}, kBox},
            {1015, L"Button", L"Ignorer la couche texte (--no-text)", {357, 81, 129, 10}, kBox},
            {1016, L"Button", L"Texte par lignes (--lines)", {357, 92, 96, 10}, kBox},
            {1030, L"Button", L"Monochrome", {357, 103, 61, 10}, kBox},
            {kNoNumber, L"Button", L"Options supplémentaires", {356, 115, 150, 28}, kGroup},
            {1018, L"Edit", L"", {360, 126, 139, 12}, kEdit},
            {1019, L"Button", L"Masquer la sortie", {7, 152, 73, 10}, kBox},
            {1022, L"Button", L"Ouvrir le dossier de destination", {229, 153, 120, 14}, kPush | WS_DISABLED},
            {1024,
             L"Button",
             L"Ouvrir le journal...",
             {147, 153, 73, 14},
             (kPush & ~WS_VISIBLE) | WS_DISABLED},
            {1027, L"Edit", L"", {144, 139, 179, 12}, kEdit | WS_DISABLED},
            {1028, L"Button", L"...", {328, 139, 21, 13}, kPush | BS_ICON | WS_DISABLED},
            {1026, L"Button", L"Convertir les DjVu dans ce dossier :", {7, 140, 132, 10}, kBox},
            {1038, L"Button", L"Éteindre l'ordinateur", {7, 165, 84, 10}, kBox},
            {1040,
             L"SysListView32",
             L"",
             {7, 22, 341, 116},
             kChild | WS_TABSTOP | WS_BORDER | LVS_REPORT | LVS_SINGLESEL | LVS_SHOWSELALWAYS |
                 LVS_ALIGNLEFT | LVS_NOSORTHEADER,
             WS_EX_ACCEPTFILES},
        });
}

TEST(DialogResources, CountdownIsASmallDialog) {
    ExpectSmallDialog(Dialog(101), L"Extinction de l'ordinateur", 193, 80);
}

TEST(DialogResources, CountdownHasItsControls) {
    ExpectControls(
        101,
        {
            {1, L"Button", L"Éteindre immédiatement", {7, 59, 93, 14}, kDefaultPush},
            {2, L"Button", L"Annuler", {136, 59, 50, 14}, kPush},
            {kNoNumber, L"Static", L"L'ordinateur s'éteindra dans ", {7, 8, 97, 10}, kLabel},
            {1039, L"Static", L"30", {105, 8, 12, 8}, kLabel | SS_RIGHT},
            {kNoNumber, L"Static", L"secondes", {127, 8, 31, 8}, kLabel},
            {kNoNumber,
             L"Static",
             L"(Des applications ouvertes avec des données non  sauvegardées peuvent empêcher l'extinction.)",
             {7, 22, 179, 25},
             kLabel},
        });
}

TEST(DialogResources, AboutIsASmallDialog) {
    ExpectSmallDialog(Dialog(100), L"À propos...", 187, 102);
}

TEST(DialogResources, AboutHasItsControls) {
    ExpectControls(100,
                   {
                       {1, L"Button", L"OK", {130, 81, 50, 14}, kDefaultPush},
                       {kNoNumber, L"Button", L"", {7, 7, 115, 88}, kGroup},
                       {kNoNumber, L"Static", L"#128", {51, 17, 20, 20}, kChild | SS_ICON | SS_CENTERIMAGE},
                       {kNoNumber, L"Static", L"Talvenor ", {7, 44, 114, 10}, kLabel | SS_CENTER},
                       {1021, L"Static", L"Static", {7, 56, 113, 8}, kLabel | SS_CENTER},
                       {kNoNumber,
                        L"Static",
                        L"Une interface graphique pour pdf2djvu Win32\nUtilisation libre",
                        {18, 68, 93, 26},
                        kLabel | SS_CENTER},
                   });
}

}  // namespace
