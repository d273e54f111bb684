// Real clicks on controls that are disabled, and on nothing.
#include "tests/app/input_fixture.h"

namespace {

struct DisabledEdit {
    const char* name;
    int edit;
    int checkBox;
};

class ClickOnADisabledEdit : public InputTest, public testing::WithParamInterface<DisabledEdit> {};

TEST_P(ClickOnADisabledEdit, EnablesItChecksItsBoxAndLeavesItEmpty) {
    StartInFront();
    ClickInto(GetParam().edit);
    EXPECT_TRUE(IsEnabled(GetParam().edit));
    EXPECT_TRUE(IsChecked(GetParam().checkBox));
    EXPECT_EQ(Text(GetParam().edit), L"");
    EXPECT_EQ(IsEnabled(IDC_BROWSE), GetParam().edit == IDC_OUTPUT_FOLDER);
    // Left empty, the output folder is given up.
    input::ClickOn(Control(IDC_MONOCHROME));
    ASSERT_TRUE(GetsFocus(IDC_MONOCHROME));
    EXPECT_EQ(IsChecked(GetParam().checkBox), GetParam().edit != IDC_OUTPUT_FOLDER);
    EXPECT_EQ(IsEnabled(GetParam().edit), GetParam().edit != IDC_OUTPUT_FOLDER);
}

INSTANTIATE_TEST_SUITE_P(Of, ClickOnADisabledEdit,
                         testing::Values(DisabledEdit{"Pages", IDC_PAGES, IDC_PAGES_CHECK},
                                         DisabledEdit{"Resolution", IDC_RESOLUTION, IDC_RESOLUTION_CHECK},
                                         DisabledEdit{"OutputFolder", IDC_OUTPUT_FOLDER,
                                                      IDC_OUTPUT_FOLDER_CHECK}),
                         [](const auto& edit) { return std::string(edit.param.name); });

class ControlState : public InputTest {
protected:
    // Texts, and which controls are enabled or checked.
    [[nodiscard]] std::wstring State() const {
        std::wstring state = driver::AllText(Window().Window());
        for (const int control :
             {IDOK, IDC_PAGES, IDC_RESOLUTION, IDC_OUTPUT_FOLDER, IDC_BROWSE, IDC_OPEN_DESTINATION})
            state += IsEnabled(control) ? L" enabled" : L" disabled";
        for (const int checkBox : {IDC_PAGES_CHECK, IDC_RESOLUTION_CHECK, IDC_OUTPUT_FOLDER_CHECK})
            state += IsChecked(checkBox) ? L" checked" : L" not checked";
        return state;
    }
};

TEST_F(ControlState, StaysAsItIsAfterClicksOnOtherDisabledControlsAndOnTheBackground) {
    StartInFront();
    const std::wstring before = State();
    for (const int control : {IDOK, IDC_OPEN_DESTINATION, IDC_STATUS}) input::ClickOn(Control(control));
    input::PointAt(Window().Window(), 3, 3);
    input::Click();
    ClickInto(IDC_LINES);  // served after the other clicks
    EXPECT_EQ(State(), before);
}

TEST_F(ControlState, DestinationButtonFollowsTheTypedFolderAtOnce) {
    StartInFront();
    ClickInto(IDC_OUTPUT_FOLDER);
    driver::SetText(Control(IDC_OUTPUT_FOLDER), installed.PdfFolder());
    EXPECT_TRUE(Comes([&] { return IsEnabled(IDC_OPEN_DESTINATION); }, kInputLimit));
    input::Press(VK_END);
    input::Type(L"x");
    EXPECT_TRUE(Comes([&] { return !IsEnabled(IDC_OPEN_DESTINATION); }, kInputLimit));
}

TEST_F(ControlState, ClicksWhileABatchRunsReachDisabledEditsAndNoOtherDisabledControl) {
    StartHiddenBatch({installed.MakePdf(L"a wait1500.pdf"), installed.MakePdf(L"b.pdf")});
    ASSERT_TRUE(Comes([&] { return Runs().size() == 1; }));
    BringToFront();
    for (const int control : {IDC_FILE_LIST, IDC_CLEAR, IDC_ADD}) input::ClickOn(Control(control));
    ClickInto(IDC_PAGES);
    EXPECT_TRUE(IsChecked(IDC_PAGES_CHECK));
    EXPECT_FALSE(IsEnabled(IDC_PAGES_CHECK));
    CompleteBatch();
    EXPECT_EQ(driver::RowCount(List()), 2);
    EXPECT_EQ(Runs().size(), 2u);
}

}  // namespace
