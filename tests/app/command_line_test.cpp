// What arrives at the converter behind the system's own interpreter: every option, and names that a command
// line, a list or a code page could trip over.
#include "tests/app/app_fixture.h"

namespace {

using testing::Each;
using testing::ElementsAre;
using testing::StartsWith;

// Names of files that a command line, a list or a code page could trip over. A percent sign alone is no
// variable.
constexpr const wchar_t* kNames[] = {
    L"deux  blancs", L"a & b",       L"a && b",           L"^chapeau^",         L"100 % sûr",
    L"l'été",        L"attention !", L"(1) [2] {3}",      L"a; b, c=d",         L"+~@#$-_`",
    L"v1.0 final",   L"--help",      L"Éléphant œuvre ÿ", L"Война и мир",       L"日本語の文書",
    L"한국어",       L"עברית",       L"emoji 😀🚀",         L"e\u0301 décomposé", L"\u00a0insécable\u00a0",
};

class CommandLine : public AppTest {};

TEST_F(CommandLine, BringsEveryOptionToTheConverter) {
    const auto a = installed.MakePdf(L"Rapport annuel.PDF");
    const auto folder = installed.MakeFolder(L"Sortie d'été");
    StartWith({a});
    for (const int checkBox :
         {IDC_NO_METADATA, IDC_NO_OUTLINE, IDC_NO_HYPERLINKS, IDC_LINES, IDC_NO_TEXT, IDC_MONOCHROME,
          IDC_PAGES_CHECK, IDC_RESOLUTION_CHECK, IDC_OUTPUT_FOLDER_CHECK})
        Window().Check(checkBox);
    Window().Type(IDC_PAGES, L"1,3-5");
    Window().Type(IDC_RESOLUTION, L"150");
    Window().Type(IDC_OUTPUT_FOLDER, folder + L"\\");
    Window().Type(IDC_EXTRA_OPTIONS, L"--exemple=1");
    Convert();
    ASSERT_EQ(Runs().size(), 1u);
    EXPECT_THAT(ArgumentsOf(Runs()[0]),
                ElementsAre(L"pdf2djvu.exe", L"-o", folder + L"\\Rapport annuel.djvu", L"-v", L"-d", L"150",
                            L"--no-metadata", L"--no-outline", L"--no-hyperlinks", L"--no-text",
                            L"--monochrome", L"--exemple=1", L"-p", L"1,3-5", a));
}

TEST_F(CommandLine, BringsNamesAsTheyAre) {
    std::vector<std::wstring> pdfs;
    for (const std::wstring name : kNames)
        pdfs.push_back(installed.MakePdf(L"Дом & jardin (été) !\\" + name + L".pdf"));
    // One less than the longest, for ".djvu" has a letter more than ".pdf".
    pdfs.push_back(installed.MakePdfOfLength(258));
    StartHiddenBatch(pdfs);
    CompleteBatch();
    EXPECT_EQ(Paths(), pdfs);
    const auto runs = Runs();
    ASSERT_EQ(runs.size(), pdfs.size());
    for (std::size_t i = 0; i < pdfs.size(); ++i) {
        EXPECT_EQ(ArgumentsOf(runs[i]), PlainArgumentsFor(pdfs[i])) << driver::ToUtf8(pdfs[i]);
    }
    EXPECT_THAT(Durations(), Each(StartsWith(L"00:00:")));
}

// The interpreter reads variables inside quotes, too: the converter is given another name, or the very name
// where there is no such variable. A file of that other name must not be taken for the one in the list.
TEST_F(CommandLine, NeverGivesADocumentANameOfTheListForAnotherFile) {
    startOptions.environment[L"TALVENOR_TEST"] = L"autre";
    StartWith({installed.MakePdf(L"%TALVENOR_TEST%.pdf")});
    Convert();
    ASSERT_EQ(Runs().size(), 1u);
    EXPECT_EQ(ArgumentsOf(Runs()[0]).back(), installed.PdfFolder() + L"\\autre.pdf");
    EXPECT_EQ(ArgumentsOf(Runs()[0])[2], installed.PdfFolder() + L"\\autre.djvu");
}

TEST_F(CommandLine, MayBeLongerThanAnyWithoutHarm) {
    // The interpreter cannot be started, or dies of it (Wine's).
    StartWith({installed.MakePdf(L"a.pdf")});
    driver::SetText(Control(IDC_EXTRA_OPTIONS), std::wstring(40'000, L'x'));
    Window().StartBatch();
    const auto ended = [&] {
        if (const HWND message = Window().OpenDialog()) driver::PressDialogButton(message, IDOK);
        return !Window().IsRunning() && !Window().OpenDialog();
    };
    EXPECT_TRUE(Comes(ended));
    EXPECT_EQ(Runs().size(), 0u);
    EXPECT_EQ(Window().Quit(), 2u);
}

}  // namespace
