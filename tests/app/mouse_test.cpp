// The window by mouse: clicks on what is disabled and on nothing, tips under the pointer.
#include "tests/app/input_fixture.h"

namespace {

class Mouse : public InputTest {
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
    // Which controls differ from how they were: enabled or not, ticked or not, texts.
    [[nodiscard]] std::wstring State() const {
        std::wstring state = driver::AllText(Window().Window());
        for (const int control : {1, 1014, 1032, 1027, 1028, 1022})
            state += IsEnabled(control) ? L" enabled" : L" disabled";
        for (const int box : {1034, 1033, 1026}) state += IsChecked(box) ? L" ticked" : L" not ticked";
        return state;
    }
};

TEST_F(Mouse, ClickOnTheDisabledPagesEditEnablesItAndTicksItsBox) {
    StartInFront();
    input::ClickOn(Control(id::kPages));
    EXPECT_TRUE(GetsFocus(id::kPages));
    EXPECT_TRUE(IsEnabled(id::kPages));
    EXPECT_TRUE(IsChecked(id::kPagesBox));
}

TEST_F(Mouse, ClickOnTheDisabledResolutionEditLeavesItEmpty) {
    StartInFront();
    input::ClickOn(Control(id::kResolution));
    EXPECT_TRUE(GetsFocus(id::kResolution));
    EXPECT_TRUE(IsEnabled(id::kResolution));
    EXPECT_TRUE(IsChecked(id::kResolutionBox));
    EXPECT_EQ(Text(id::kResolution), L"");
}

TEST_F(Mouse, ClickOnTheResolutionBoxFillsIn300) {
    StartInFront();
    input::ClickOn(Control(id::kResolutionBox));
    EXPECT_TRUE(Reads(id::kResolution, L"300"));
    EXPECT_TRUE(IsEnabled(id::kResolution));
}

TEST_F(Mouse, ClickOnTheDisabledFolderEditEnablesItAndItsButton) {
    StartInFront();
    input::ClickOn(Control(id::kOutputFolder));
    EXPECT_TRUE(GetsFocus(id::kOutputFolder));
    EXPECT_TRUE(IsEnabled(id::kOutputFolder));
    EXPECT_TRUE(IsEnabled(id::kBrowse));
    EXPECT_TRUE(IsChecked(id::kOutputFolderBox));
}

TEST_F(Mouse, FolderLeftEmptyIsGivenUp) {
    StartInFront();
    input::ClickOn(Control(id::kOutputFolderBox));
    ASSERT_TRUE(GetsFocus(id::kOutputFolder)) << "the box leads into its edit";
    input::ClickOn(Control(id::kMonochrome));
    ASSERT_TRUE(GetsFocus(id::kMonochrome));
    EXPECT_FALSE(IsChecked(id::kOutputFolderBox));
    EXPECT_FALSE(IsEnabled(id::kOutputFolder));
    EXPECT_FALSE(IsEnabled(id::kBrowse));
}

TEST_F(Mouse, FolderTypedEnablesItsButtonAtOnce) {
    StartInFront();
    input::ClickOn(Control(id::kOutputFolder));
    ASSERT_TRUE(GetsFocus(id::kOutputFolder));
    driver::SetText(Control(id::kOutputFolder), installed.PdfFolder());
    EXPECT_TRUE(Comes([&] { return IsEnabled(id::kOpenDestination); }, kInputLimit));
    input::Press(VK_END);
    input::Type(L"x");
    EXPECT_TRUE(Comes([&] { return !IsEnabled(id::kOpenDestination); }, kInputLimit));
}

TEST_F(Mouse, ClicksOnOtherDisabledControlsAndOnTheBackgroundDoNothing) {
    StartInFront();
    const std::wstring before = State();
    input::ClickOn(Control(id::kConvert));
    input::ClickOn(Control(id::kOpenDestination));
    input::ClickOn(Control(id::kStatus));
    input::PointAt(Window().Window(), 3, 3);
    input::Click();
    // What follows is served after the clicks.
    input::ClickOn(Control(id::kLines));
    ASSERT_TRUE(GetsFocus(id::kLines));
    EXPECT_EQ(State(), before);
}

TEST_F(Mouse, TipComesUpUnderThePointer) {
    StartInFront();
    input::PointAt(Control(id::kHideOutput));
    EXPECT_TRUE(Comes([&] { return !ShownTip().empty(); }));
    EXPECT_EQ(ShownTip(),
              L"Les fenêtres de traitement sont masquées.\r\nTous les résultats et les durées sont "
              L"enregistrés dans un fichier journal.");
}

}  // namespace
