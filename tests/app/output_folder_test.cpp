// The output folder: what is refused as one, and the system's browser.
#include "tests/app/app_fixture.h"

namespace {

using OutputFolder = AppTest;

TEST_F(OutputFolder, IsRefusedWhenItIsNoneAndNothingIsLeftOfTheRefusal) {
    driver::WriteFileBytes(installed.Log(), "left by an earlier batch");
    const auto pdf = installed.MakePdf(L"a.pdf");
    StartWith({pdf});
    Window().Check(IDC_OUTPUT_FOLDER_CHECK);
    for (const std::wstring& folder :
         {std::wstring(L"C:\\n'existe pas"), pdf, std::wstring(L"   "), std::wstring(L"<>|?*"),
          std::wstring(L"\\\\"), std::wstring(L"\"C:\\windows\""), std::wstring(20'000, L'x')}) {
        SCOPED_TRACE(driver::ToUtf8(folder.substr(0, 40)));
        driver::SetText(Control(IDC_OUTPUT_FOLDER), folder);
        EXPECT_FALSE(IsEnabled(IDC_OPEN_DESTINATION));
        driver::Click(Control(IDOK));
        const HWND refusal = WaitForDialog();
        EXPECT_EQ(driver::Text(refusal), L"Talvenor");
        EXPECT_THAT(driver::AllText(refusal),
                    testing::HasSubstr(L"\nLe dossier de destination est incorrect !"));
        EXPECT_EQ(::GetWindow(refusal, GW_OWNER), Window().Window());
        AnswerDialog(IDOK);
        EXPECT_FALSE(Window().IsRunning());
    }
    EXPECT_TRUE(driver::FileExists(installed.Log()));
    EXPECT_EQ(Runs().size(), 0u);

    Window().Type(IDC_OUTPUT_FOLDER, installed.PdfFolder());
    EXPECT_TRUE(IsEnabled(IDC_OPEN_DESTINATION));
    Convert();
    EXPECT_EQ(Runs().size(), 1u);
}

TEST_F(OutputFolder, StaysWhenTheSystemsBrowserIsCancelled) {
    Start();
    Window().Check(IDC_OUTPUT_FOLDER_CHECK);
    Window().Type(IDC_OUTPUT_FOLDER, installed.PdfFolder());
    driver::Click(Control(IDC_BROWSE));
    AnswerDialog(IDCANCEL);
    EXPECT_EQ(Text(IDC_OUTPUT_FOLDER), installed.PdfFolder());
    EXPECT_TRUE(IsChecked(IDC_OUTPUT_FOLDER_CHECK));
}

}  // namespace
