// What the command interpreter is started with for each file.
#include "tests/window/batch_fixture.h"

#include <cstring>

namespace {

using testing::ElementsAre;
using testing::SizeIs;

class BatchInterpreterTest : public BatchFixture {
protected:
    // The one start of a batch of this file.
    Start StartOf(const std::wstring& path) {
        AddFiles({path});
        RunBatch();
        const std::vector<Start> starts = converters.Starts();
        EXPECT_THAT(starts, SizeIs(1));
        return starts.empty() ? Start{} : starts[0];
    }
};

TEST_F(BatchInterpreterTest, IsTheOneOfTheSystemFolder) {
    EXPECT_EQ(StartOf(L"C:\\Docs\\a.pdf").interpreter, L"C:\\système\\cmd.exe");
}

TEST_F(BatchInterpreterTest, GetsTheConvertersCommandLineInVisibleMode) {
    EXPECT_EQ(StartOf(L"C:\\Docs\\a.pdf").arguments,
              L"/C \"pdf2djvu.exe -o \"C:\\Docs\\a.djvu\" -v  \"C:\\Docs\\a.pdf\"\"");
}

TEST_F(BatchInterpreterTest, AppendsTheErrorOutputToTheLogInHiddenMode) {
    SetChecked(IDC_HIDE_OUTPUT, true);
    EXPECT_EQ(StartOf(L"C:\\Docs\\a.pdf").arguments,
              L"/C \"pdf2djvu.exe -o \"C:\\Docs\\a.djvu\" -v  \"C:\\Docs\\a.pdf\"\" 2>>TalvenorLog.txt");
}

TEST_F(BatchInterpreterTest, RunsInTheProgramsFolder) {
    EXPECT_EQ(StartOf(L"C:\\Docs\\a.pdf").folder, folder.Path().wstring());
}

TEST_F(BatchInterpreterTest, RunsInTheRootOfTheDriveWhenTheProgramLiesThere) {
    programPath = L"Q:\\Talvenor.exe";
    EXPECT_EQ(StartOf(L"C:\\Docs\\a.pdf").folder, L"Q:\\");
}

TEST_F(BatchInterpreterTest, RunsEachFileInTheFolderThatTheProgramHadAtTheStart) {
    AddFiles({L"C:\\Docs\\a.pdf", L"C:\\Docs\\b.pdf"});
    worker.At("WaitForSingleObject process 1", 1, [] { programPath = L"C:\\Ailleurs\\Talvenor.exe"; });
    RunBatch();
    ASSERT_THAT(converters.Starts(), SizeIs(2));
    EXPECT_EQ(converters.Starts()[1].folder, folder.Path().wstring());
}

TEST_F(BatchInterpreterTest, InheritsHandlesAndTheEnvironmentAndNothingElse) {
    const Start start = StartOf(L"C:\\Docs\\a.pdf");
    EXPECT_TRUE(start.inheritsHandles);
    EXPECT_EQ(start.flags, 0u);
    EXPECT_FALSE(start.ownEnvironment);
    EXPECT_FALSE(start.ownSecurity);
}

// The start-up information of `start` without its title, whose address is the batch's own.
STARTUPINFOW Untitled(const Start& start) {
    STARTUPINFOW startup = start.startup;
    startup.lpTitle = nullptr;
    return startup;
}

TEST_F(BatchInterpreterTest, ShowsItsWindowInVisibleMode) {
    const STARTUPINFOW startup = Untitled(StartOf(L"C:\\Docs\\a.pdf"));
    STARTUPINFOW expected = {};
    expected.cb = 104;
    expected.dwFlags = STARTF_USESHOWWINDOW;
    expected.wShowWindow = SW_SHOW;
    EXPECT_EQ(std::memcmp(&startup, &expected, sizeof expected), 0);
}

TEST_F(BatchInterpreterTest, HidesItsWindowInHiddenMode) {
    SetChecked(IDC_HIDE_OUTPUT, true);
    const STARTUPINFOW startup = Untitled(StartOf(L"C:\\Docs\\a.pdf"));
    STARTUPINFOW expected = {};
    expected.cb = 104;
    expected.dwFlags = STARTF_USESHOWWINDOW;
    expected.wShowWindow = SW_HIDE;
    EXPECT_EQ(std::memcmp(&startup, &expected, sizeof expected), 0);
}

TEST_F(BatchInterpreterTest, CarriesTheNameOfTheFileInItsTitle) {
    AddFiles({L"C:\\Docs\\Rapport annuel.pdf", L"\\\\serveur\\partage\\Été.PDF", L"C:\\a.b\\v1.0 final.pdf",
              L"C:\\Docs\\Отчёт 報告.pdf"});
    RunBatch();
    std::vector<std::wstring> titles;
    for (const Start& start : converters.Starts()) titles.push_back(start.title);
    EXPECT_THAT(titles, ElementsAre(L"Rapport annuel.pdf", L"Été.PDF", L"v1.0 final.pdf", L"Отчёт 報告.pdf"));
}

// The output path as it stands in the arguments of each file.
TEST_F(BatchInterpreterTest, NamesTheOutputBesideThePdf) {
    AddFiles({L"C:\\a\\b.c.pdf", L"C:\\a\\v1.0 final.pdf", L"C:\\a\\B.PDF"});
    RunBatch();
    std::vector<std::wstring> arguments;
    for (const Start& start : converters.Starts()) arguments.push_back(start.arguments);
    EXPECT_THAT(
        arguments,
        ElementsAre(L"/C \"pdf2djvu.exe -o \"C:\\a\\b.c.djvu\" -v  \"C:\\a\\b.c.pdf\"\"",
                    L"/C \"pdf2djvu.exe -o \"C:\\a\\v1.0 final.djvu\" -v  \"C:\\a\\v1.0 final.pdf\"\"",
                    L"/C \"pdf2djvu.exe -o \"C:\\a\\B.djvu\" -v  \"C:\\a\\B.PDF\"\""));
}

TEST_F(BatchInterpreterTest, NamesTheOutputInTheOutputFolderWithAndWithoutTrailingBackslash) {
    const std::wstring sortie = folder.File(L"Sortie");
    std::filesystem::create_directory(sortie);
    AddFiles({L"C:\\Docs\\Rapport annuel.pdf"});
    SetChecked(IDC_OUTPUT_FOLDER_CHECK, true);
    const std::wstring expected = L"/C \"pdf2djvu.exe -o \"" + sortie +
                                  L"\\Rapport annuel.djvu\" -v  \"C:\\Docs\\Rapport annuel.pdf\"\"";
    SetText(IDC_OUTPUT_FOLDER, sortie.c_str());
    RunBatch();
    SetText(IDC_OUTPUT_FOLDER, (sortie + L"\\").c_str());
    RunBatch();
    ASSERT_THAT(converters.Starts(), SizeIs(2));
    EXPECT_EQ(converters.Starts()[0].arguments, expected);
    EXPECT_EQ(converters.Starts()[1].arguments, expected);
}

// Which control makes which option.
struct OptionCase {
    const char* name;
    std::vector<int> checked;
    std::vector<std::pair<int, const wchar_t*>> texts;
    const wchar_t* options;  // between "-v " and the PDF
};
class BatchOptionTest : public BatchFixture, public testing::WithParamInterface<OptionCase> {};

TEST_P(BatchOptionTest, ReachesTheConverter) {
    AddFiles({L"C:\\Docs\\a.pdf"});
    for (const int id : GetParam().checked) SetChecked(id, true);
    for (const auto& [id, text] : GetParam().texts) SetText(id, text);
    RunBatch();
    ASSERT_THAT(converters.Starts(), SizeIs(1));
    EXPECT_EQ(converters.Starts()[0].arguments,
              std::wstring(L"/C \"pdf2djvu.exe -o \"C:\\Docs\\a.djvu\" -v ") + GetParam().options +
                  L" \"C:\\Docs\\a.pdf\"\"");
}

INSTANTIATE_TEST_SUITE_P(
    All, BatchOptionTest,
    testing::Values(
        OptionCase{"None", {}, {}, L""}, OptionCase{"Resolution", {1033}, {{1032, L"300"}}, L"-d 300"},
        OptionCase{"ResolutionAsTypedWhileItHasTheFocus", {1033}, {{1032, L"50"}}, L"-d 50"},
        OptionCase{"ResolutionUnchecked", {}, {{1032, L"300"}}, L""},
        OptionCase{"ResolutionEmpty", {1033}, {}, L""},
        OptionCase{"NoMetadata", {1017}, {}, L" --no-metadata"},
        OptionCase{"NoOutline", {1036}, {}, L" --no-outline"},
        OptionCase{"NoHyperlinks", {1037}, {}, L" --no-hyperlinks"},
        OptionCase{"NoText", {1015}, {}, L" --no-text"}, OptionCase{"Lines", {1016}, {}, L" --lines"},
        OptionCase{"NoTextWinsOverLines", {1015, 1016}, {}, L" --no-text"},
        OptionCase{"Monochrome", {1030}, {}, L" --monochrome"},
        OptionCase{"ExtraOptionsVerbatim", {}, {{1018, L"  --a=\"b c\" >x & y "}}, L"   --a=\"b c\" >x & y "},
        OptionCase{"Pages", {1034}, {{1014, L" 1 , 2-4 "}}, L" -p \"1,2-4\""},
        OptionCase{"PagesOfBlanks", {1034}, {{1014, L"   "}}, L" -p \"\""},
        OptionCase{"PagesEmpty", {1034}, {}, L""}, OptionCase{"PagesUnchecked", {}, {{1014, L"1-3"}}, L""},
        OptionCase{"FolderUnchecked", {}, {{1027, L"D:\\Sortie"}}, L""},
        OptionCase{"AllTogether",
                   {1033, 1017, 1036, 1037, 1015, 1016, 1030, 1034},
                   {{1032, L"300"}, {1018, L"--exemple=1"}, {1014, L" 1, 3-5"}},
                   L"-d 300 --no-metadata --no-outline --no-hyperlinks --no-text --monochrome --exemple=1 "
                   L"-p \"1,3-5\""}),
    [](const auto& row) { return std::string(row.param.name); });

}  // namespace
