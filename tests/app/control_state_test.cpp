// Real clicks on disabled edits: the system hands them on to the dialog.
#include "tests/app/input_fixture.h"

namespace {

using ControlState = InputTest;

TEST_F(ControlState, ClickOnADisabledEditEnablesItAndChecksItsBoxAndOnlyTheEmptyOutputFolderIsGivenUp) {
    StartInFront();
    for (const auto& [edit, checkBox] :
         {std::pair{IDC_PAGES, IDC_PAGES_CHECK}, std::pair{IDC_RESOLUTION, IDC_RESOLUTION_CHECK},
          std::pair{IDC_OUTPUT_FOLDER, IDC_OUTPUT_FOLDER_CHECK}}) {
        SCOPED_TRACE(edit);
        EXPECT_FALSE(IsEnabled(IDC_BROWSE));
        ClickInto(edit);
        EXPECT_TRUE(IsEnabled(edit));
        EXPECT_TRUE(IsChecked(checkBox));
        EXPECT_EQ(Text(edit), L"");
    }
    EXPECT_TRUE(IsEnabled(IDC_BROWSE));
    ClickInto(IDC_LINES);
    EXPECT_FALSE(IsChecked(IDC_OUTPUT_FOLDER_CHECK));
    EXPECT_FALSE(IsEnabled(IDC_OUTPUT_FOLDER));
    for (const int checkBox : {IDC_PAGES_CHECK, IDC_RESOLUTION_CHECK}) EXPECT_TRUE(IsChecked(checkBox));
    for (const int edit : {IDC_PAGES, IDC_RESOLUTION}) EXPECT_TRUE(IsEnabled(edit));
}

}  // namespace
