// A tip under the pointer.
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

TEST_F(ToolTips, OneComesUpUnderThePointer) {
    StartInFront();
    input::PointAt(Control(IDC_HIDE_OUTPUT));
    EXPECT_TRUE(Comes([&] { return !ShownTip().empty(); }));
    EXPECT_EQ(ShownTip(),
              L"Les fenêtres de traitement sont masquées.\r\nTous les résultats et les durées sont "
              L"enregistrés dans un fichier journal.");
}

}  // namespace
