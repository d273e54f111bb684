// The output folder: the system's browser.
#include "tests/app/app_fixture.h"

namespace {

using OutputFolder = AppTest;

TEST_F(OutputFolder, StaysWhenTheSystemsBrowserIsCancelled) {
    Start();
    Window().Check(IDC_OUTPUT_FOLDER_CHECK);
    Window().Type(IDC_OUTPUT_FOLDER, installed.PdfFolder());
    EXPECT_TRUE(IsEnabled(IDC_OPEN_DESTINATION));
    driver::Click(Control(IDC_BROWSE));
    AnswerDialog(IDCANCEL);
    EXPECT_EQ(Text(IDC_OUTPUT_FOLDER), installed.PdfFolder());
    EXPECT_TRUE(IsChecked(IDC_OUTPUT_FOLDER_CHECK));
}

}  // namespace
