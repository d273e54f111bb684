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
        {IDC_PAGES, L"Entrer des n° de pages, "},
        {IDC_EXTRA_OPTIONS, L"Ajouter d'autres options "},
        {IDC_ADD, L"Ajoutez des fichiers PDF "},
        {IDC_HIDE_OUTPUT, L"Les fenêtres de traitement sont masquées."},
        {IDC_OUTPUT_FOLDER_CHECK, L"Par défaut, les DjVu sont enregistrés "},
        {IDC_SHUT_DOWN, L"La machine sera éteinte 30 secondes après "},
    };
    for (const auto& [control, beginning] : tips) {
        input::PointAt(Control(control));
        EXPECT_TRUE(Comes([&, begin = beginning] { return ShownTip().starts_with(begin); }))
            << control << ": " << driver::ToUtf8(ShownTip());
    }
}

}  // namespace
