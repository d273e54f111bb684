// The tips under the pointer.
#include "tests/app/input_fixture.h"

namespace {

class ToolTips : public InputTest {
protected:
    // The text of the program's tip that is shown now; empty without one.
    [[nodiscard]] std::wstring ShownTip() const {
        for (HWND tip = nullptr;
             (tip = ::FindWindowExW(nullptr, tip, L"tooltips_class32", nullptr)) != nullptr;) {
            DWORD process = 0;
            ::GetWindowThreadProcessId(tip, &process);
            if (process == Process().Id() && ::IsWindowVisible(tip)) return driver::Text(tip);
        }
        return std::wstring();
    }
};

TEST_F(ToolTips, EachComesUpUnderThePointer) {
    StartInFront();
    Window().Check(IDC_PAGES_CHECK);  // a disabled control shows none
    const std::pair<int, const wchar_t*> tips[] = {
        {IDC_PAGES,
         L"Entrer des n° de pages, séparées par des virgules, un tiret pour un intervalle.\r\n- Ex : "
         L"2,5,8-56"},
        {IDC_EXTRA_OPTIONS,
         L"Ajouter d'autres options à la ligne de commande de pdf2djvu.exe\r\n(insérées telles quelles)."},
        {IDC_ADD,
         L"Ajoutez des fichiers PDF à l'aide de ce bouton ou déposez directement des fichiers dans la liste "
         L"depuis l'Explorateur de fichiers de Windows."},
        {IDC_HIDE_OUTPUT,
         L"Les fenêtres de traitement sont masquées.\r\nTous les résultats et les durées sont enregistrés "
         L"dans "
         L"un fichier journal."},
        {IDC_OUTPUT_FOLDER_CHECK,
         L"Par défaut, les DjVu sont enregistrés dans le même dossier que les PDF.\r\nCocher cette case "
         L"permet "
         L"de définir un dossier de sortie unique."},
        {IDC_SHUT_DOWN,
         L"La machine sera éteinte 30 secondes après la fin des conversions.\r\n(Si d'autres applications "
         L"ouvertes ont des données non sauvegardées, elles peuvent bloquer l'extinction.)"},
    };
    for (const auto& [control, text] : tips) {
        input::PointAt(Control(control));
        EXPECT_TRUE(Comes([&, text = text] { return ShownTip() == text; }))
            << control << ": " << driver::ToUtf8(ShownTip());
    }
}

}  // namespace
