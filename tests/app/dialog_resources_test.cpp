// The three dialog templates in the built program, control by control, in tab order.
#include <gtest/gtest.h>

#include <windows.h>
#include <commctrl.h>

#include <algorithm>
#include <array>
#include <ostream>

#include "tests/app/installed_program.h"
#include "tests/app/program_resources.h"
#include "tests/equipment/failure.h"
#include "tests/equipment/text.h"

namespace {

struct TemplatePlace {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;

    friend bool operator==(const TemplatePlace&, const TemplatePlace&) = default;
};

struct TemplateControl {
    int id = 0;
    std::wstring kind;  // the class's name; predefined classes by their names too
    std::wstring text;  // "#n" for a resource by number
    TemplatePlace place;
    DWORD style = 0;
    DWORD extendedStyle = 0;
    DWORD helpId = 0;
    WORD extraBytes = 0;

    friend bool operator==(const TemplateControl&, const TemplateControl&) = default;
    friend std::ostream& operator<<(std::ostream& out, const TemplateControl& control) {
        const TemplatePlace& place = control.place;
        return out << control.id << ' ' << driver::ToUtf8(control.kind) << " \""
                   << driver::ToUtf8(control.text) << "\" at " << place.left << ',' << place.top << ' '
                   << place.width << 'x' << place.height << std::hex << " style 0x" << control.style
                   << " extended 0x" << control.extendedStyle << std::dec << " help " << control.helpId
                   << " extra " << control.extraBytes;
    }
};

// A dialog template of the extended kind, taken apart.
struct DialogTemplate {
    std::wstring title;
    std::wstring menu;
    std::wstring windowClass;
    TemplatePlace place;
    DWORD style = 0;
    DWORD extendedStyle = 0;
    WORD fontPoints = 0;
    std::wstring font;
    std::vector<TemplateControl> controls;  // in template order, which is the tab order
};

// A text, or 0xFFFF and a number.
std::wstring TakeTextOrNumber(ByteReader& reader) {
    const auto first = reader.Take<wchar_t>();
    if (first == 0) return std::wstring();
    if (first == 0xFFFF) return L'#' + std::to_wstring(reader.Take<WORD>());
    return first + reader.TakeTerminatedText();
}

constexpr std::array kClasses = {L"Button",    L"Edit",     L"Static",       L"ListBox",
                                 L"ScrollBar", L"ComboBox", L"SysListView32"};

// Class names are compared without regard to case, and the first six also go by numbers.
std::wstring TakeClass(ByteReader& reader) {
    constexpr int kFirstNumber = 0x80;
    const std::wstring name = TakeTextOrNumber(reader);
    if (!name.empty() && name[0] == L'#')
        return kClasses.at(static_cast<std::size_t>(std::stoi(name.substr(1)) - kFirstNumber));
    for (const wchar_t* const known : kClasses) {
        if (::CompareStringOrdinal(name.c_str(), -1, known, -1, TRUE) == CSTR_EQUAL) return known;
    }
    return name;
}

TemplatePlace TakePlace(ByteReader& reader) {
    TemplatePlace place;
    place.left = reader.Take<short>();
    place.top = reader.Take<short>();
    place.width = reader.Take<short>();
    place.height = reader.Take<short>();
    return place;
}

TemplateControl TakeControl(ByteReader& reader) {
    TemplateControl control;
    reader.AlignTo4();
    control.helpId = reader.Take<DWORD>();
    control.extendedStyle = reader.Take<DWORD>();
    control.style = reader.Take<DWORD>();
    control.place = TakePlace(reader);
    control.id = reader.Take<int>();
    control.kind = TakeClass(reader);
    control.text = TakeTextOrNumber(reader);
    control.extraBytes = reader.Take<WORD>();
    reader.Skip(control.extraBytes);
    return control;
}

DialogTemplate ReadDialogTemplate(std::string_view bytes) {
    ByteReader reader(bytes);
    const auto version = reader.Take<WORD>();
    const auto signature = reader.Take<WORD>();
    if (version != 1 || signature != 0xFFFF) throw driver::Failure("not an extended dialog template");
    DialogTemplate dialog;
    reader.Take<DWORD>();  // help id
    dialog.extendedStyle = reader.Take<DWORD>();
    dialog.style = reader.Take<DWORD>();
    const auto controls = reader.Take<WORD>();
    dialog.place = TakePlace(reader);
    dialog.menu = TakeTextOrNumber(reader);
    dialog.windowClass = TakeTextOrNumber(reader);
    dialog.title = TakeTextOrNumber(reader);
    if (dialog.style & DS_SETFONT) {
        dialog.fontPoints = reader.Take<WORD>();
        reader.Skip(sizeof(WORD) + 2 * sizeof(BYTE));  // weight, italic, character set
        dialog.font = reader.TakeTerminatedText();
    }
    for (WORD i = 0; i < controls; ++i) dialog.controls.push_back(TakeControl(reader));
    return dialog;
}

constexpr DWORD kChild = WS_CHILD | WS_VISIBLE;
constexpr DWORD kPush = kChild | WS_TABSTOP | BS_PUSHBUTTON;
constexpr DWORD kDefaultPush = kChild | WS_TABSTOP | BS_DEFPUSHBUTTON;
constexpr DWORD kCheckBox = kChild | WS_TABSTOP | BS_AUTOCHECKBOX;
constexpr DWORD kEdit = kChild | WS_TABSTOP | WS_BORDER | ES_AUTOHSCROLL;
constexpr DWORD kGroup = kChild | BS_GROUPBOX;
constexpr DWORD kLabel = kChild | WS_GROUP;
constexpr int kNoNumber = -1;

DialogTemplate Dialog(int id) {
    return ReadDialogTemplate(ProgramResources(BuiltProgram()).Bytes(RT_DIALOG, id));
}

// One control at a time: what differs is easier to see.
void ExpectControls(const std::vector<TemplateControl>& controls,
                    const std::vector<TemplateControl>& expected) {
    for (std::size_t i = 0; i < std::min(controls.size(), expected.size()); ++i)
        EXPECT_EQ(controls[i], expected[i]) << "control " << i << " in tab order";
    EXPECT_EQ(controls.size(), expected.size());
}

constexpr DWORD kSmallDialog = WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME | DS_SETFONT;

void ExpectFrame(const DialogTemplate& dialog, const wchar_t* title, int width, int height, DWORD style) {
    EXPECT_EQ(dialog.title, title);
    EXPECT_EQ(dialog.place.width, width);
    EXPECT_EQ(dialog.place.height, height);
    EXPECT_EQ(dialog.style, style);
    EXPECT_EQ(dialog.extendedStyle, 0u);
    EXPECT_EQ(dialog.menu, L"");
    EXPECT_EQ(dialog.windowClass, L"") << "not the class of dialogs";
    EXPECT_EQ(dialog.font, L"Segoe UI");
    EXPECT_EQ(dialog.fontPoints, 9);
}

TEST(DialogResources, MainWindowIsAnOverlappedWindowWithMinimiseBoxAndItsControlsInTabOrder) {
    const DialogTemplate dialog = Dialog(102);
    // Neither popup nor visible, and nothing that sizes or centres it.
    ExpectFrame(dialog, L"Talvenor", 513, 189,
                WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX | DS_SETFONT);
    ExpectControls(
        dialog.controls,
        {
            {1, L"Button", L"   Convertir ", {361, 149, 75, 28}, kDefaultPush | WS_DISABLED},
            {2, L"Button", L"Quitter", {456, 163, 50, 14}, kPush},
            {57664, L"Button", L"À propos...", {456, 4, 50, 14}, kPush},
            {1003, L"Button", L"  Ajouter des PDF...", {69, 4, 92, 15}, kPush},
            // Names of files are shown as they are: "&" marks no letter in them.
            {1004, L"Static", L"", {7, 180, 499, 9}, kChild | WS_BORDER | SS_ENDELLIPSIS | SS_NOPREFIX},
            {1005, L"Button", L"  Vider la liste", {217, 4, 75, 15}, kPush},
            {1034, L"Button", L"Pages :", {357, 22, 39, 10}, kCheckBox | BS_NOTIFY},
            {1014, L"Edit", L"", {407, 21, 74, 12}, kEdit | WS_DISABLED, WS_EX_TRANSPARENT},
            {1033, L"Button", L"DPI (-d) : ", {357, 36, 46, 10}, kCheckBox | BS_NOTIFY},
            {1032, L"Edit", L"", {407, 35, 32, 12}, kEdit | ES_NUMBER | ES_RIGHT | WS_DISABLED},
            {kNoNumber, L"Static", L"(72 - 6000)", {448, 36, 37, 8}, kLabel},
            {1017, L"Button", L"Pas de métadonnées (--no-metadata)", {357, 48, 141, 10}, kCheckBox},
            {1036, L"Button", L"Pas de TdM (--no-outline)", {357, 59, 101, 10}, kCheckBox},
            {1037, L"Button", L"Pas de liens hypertexte (--no-hyperlinks)", {357, 70, 149, 10}, kCheckBox},
            {1015, L"Button", L"Ignorer la couche texte (--no-text)", {357, 81, 129, 10}, kCheckBox},
            {1016, L"Button", L"Texte par lignes (--lines)", {357, 92, 96, 10}, kCheckBox},
            {1030, L"Button", L"Monochrome", {357, 103, 61, 10}, kCheckBox},
            {kNoNumber, L"Button", L"Options supplémentaires", {356, 115, 150, 28}, kGroup},
            {1018, L"Edit", L"", {360, 126, 139, 12}, kEdit},
            {1019, L"Button", L"Masquer la sortie", {7, 152, 73, 10}, kCheckBox},
            {1022, L"Button", L"Ouvrir le dossier de destination", {229, 153, 120, 14}, kPush | WS_DISABLED},
            {1024,
             L"Button",
             L"Ouvrir le journal...",
             {147, 153, 73, 14},
             (kPush & ~WS_VISIBLE) | WS_DISABLED},
            {1027, L"Edit", L"", {144, 139, 179, 12}, kEdit | WS_DISABLED},
            {1028, L"Button", L"...", {328, 139, 21, 13}, kPush | BS_ICON | WS_DISABLED},
            {1026, L"Button", L"Convertir les DjVu dans ce dossier :", {7, 140, 132, 10}, kCheckBox},
            {1038, L"Button", L"Éteindre l'ordinateur", {7, 165, 84, 10}, kCheckBox},
            {1040,
             L"SysListView32",
             L"",
             {7, 22, 341, 116},
             kChild | WS_TABSTOP | WS_BORDER | LVS_REPORT | LVS_SINGLESEL | LVS_SHOWSELALWAYS |
                 LVS_ALIGNLEFT | LVS_NOSORTHEADER,
             WS_EX_ACCEPTFILES},
        });
}

TEST(DialogResources, CountdownIsASmallDialogWithItsControls) {
    const DialogTemplate dialog = Dialog(101);
    ExpectFrame(dialog, L"Extinction de l'ordinateur", 193, 80, kSmallDialog);
    ExpectControls(
        dialog.controls,
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

TEST(DialogResources, AboutIsASmallDialogWithItsControls) {
    const DialogTemplate dialog = Dialog(100);
    ExpectFrame(dialog, L"À propos...", 187, 102, kSmallDialog);
    ExpectControls(dialog.controls,
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
