// The text that the converter and the command interpreter are started with.
#include "engine/command_line.h"

#include "tests/rules/options_builder.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace {

std::wstring LineFor(const ConversionOptions& options) {
    return BuildConverterCommandLine(options, L"a.djvu", L"a.pdf");
}

struct LineCase {
    const char* name;
    OptionsBuilder options;
    const wchar_t* line;
};

std::string NameOfLineCase(const testing::TestParamInfo<LineCase>& info) {
    return info.param.name;
}

TEST(BuildConverterCommandLine, NamesBothPathsAndTheVerboseSwitchWhenNothingIsChosen) {
    EXPECT_EQ(
        BuildConverterCommandLine({}, L"C:\\Docs\\Rapport annuel.djvu", L"C:\\Docs\\Rapport annuel.pdf"),
        LR"(pdf2djvu.exe -o "C:\Docs\Rapport annuel.djvu" -v  "C:\Docs\Rapport annuel.pdf")");
}

TEST(BuildConverterCommandLine, WritesManyOptionsAtOnce) {
    const ConversionOptions options = OptionsBuilder()
                                          .Resolution(L"300")
                                          .NoMetadata()
                                          .NoText()
                                          .Lines()
                                          .Monochrome()
                                          .Extra(L"--exemple=1")
                                          .Pages(L" 1, 3-5")
                                          .OutputFolder(L"D:\\Sortie\\");
    EXPECT_EQ(BuildConverterCommandLine(options, L"D:\\Sortie\\Rapport annuel.djvu",
                                        L"C:\\Docs\\Rapport annuel.pdf"),
              LR"(pdf2djvu.exe -o "D:\Sortie\Rapport annuel.djvu" -v -d 300 --no-metadata --no-text)"
              LR"( --monochrome --exemple=1 -p "1,3-5" "C:\Docs\Rapport annuel.pdf")");
}

TEST(BuildConverterCommandLine, DropsAnEmptyResolutionButNotPagesOfBlanks) {
    const ConversionOptions options = OptionsBuilder().Resolution(L"").Pages(L"   ");
    EXPECT_EQ(
        BuildConverterCommandLine(options, L"C:\\Docs\\Rapport annuel.djvu", L"C:\\Docs\\Rapport annuel.pdf"),
        LR"(pdf2djvu.exe -o "C:\Docs\Rapport annuel.djvu" -v  -p "" "C:\Docs\Rapport annuel.pdf")");
}

TEST(ConversionOptionsTest, AreAllOffUntilTheyAreRead) {
    ConversionOptions options;
    options.pages = L"1";
    options.resolution = L"300";
    options.outputFolder = L"D:\\Sortie";
    EXPECT_EQ(LineFor(options), LR"(pdf2djvu.exe -o "a.djvu" -v  "a.pdf")");
    EXPECT_FALSE(options.outputFolderEnabled);
}

TEST(BuildConverterCommandLine, WritesEveryCombinationOfOptionsInTheFixedOrder) {
    struct Option {
        std::wstring_view text;
        void (*choose)(OptionsBuilder&);
    };
    // Behind the resolution, which leaves its blank when there is none.
    const Option options[] = {
        {L" --no-metadata", [](OptionsBuilder& builder) { builder.NoMetadata(); }},
        {L" --no-outline", [](OptionsBuilder& builder) { builder.NoOutline(); }},
        {L" --no-hyperlinks", [](OptionsBuilder& builder) { builder.NoHyperlinks(); }},
        {L" --no-text", [](OptionsBuilder& builder) { builder.NoText(); }},
        {L" --lines", [](OptionsBuilder& builder) { builder.Lines(); }},
        {L" --monochrome", [](OptionsBuilder& builder) { builder.Monochrome(); }},
        {L" --x=1", [](OptionsBuilder& builder) { builder.Extra(L"--x=1"); }},
        {L" -p \"2,5\"", [](OptionsBuilder& builder) { builder.Pages(L"2,5"); }},
    };
    constexpr std::size_t kCount = std::size(options);
    for (unsigned combination = 0; combination < 1u << kCount; ++combination) {
        OptionsBuilder builder;
        std::wstring chosen;
        for (std::size_t i = 0; i < kCount; ++i) {
            if ((combination >> i & 1) == 0) continue;
            options[i].choose(builder);
            const bool isOverruled = chosen.ends_with(L" --no-text") && options[i].text == L" --lines";
            if (!isOverruled) chosen += options[i].text;
        }
        EXPECT_EQ(LineFor(builder), LR"(pdf2djvu.exe -o "a.djvu" -v )" + chosen + LR"( "a.pdf")");
        builder.Resolution(L"300");
        EXPECT_EQ(LineFor(builder), LR"(pdf2djvu.exe -o "a.djvu" -v -d 300)" + chosen + LR"( "a.pdf")");
    }
}

TEST(BuildConverterCommandLine, LeavesOutWhatIsUncheckedOrEmpty) {
    const ConversionOptions cases[] = {
        OptionsBuilder().Resolution(L""),
        OptionsBuilder().UncheckedResolution(L"300"),
        OptionsBuilder().Pages(L""),
        OptionsBuilder().UncheckedPages(L"1-5"),
        OptionsBuilder().UncheckedPages(L"  "),
        OptionsBuilder().Extra(L""),
        // The folder is in the path of the DjVu file already.
        OptionsBuilder().OutputFolder(L"D:\\Out"),
        OptionsBuilder().UncheckedOutputFolder(L"D:\\Out"),
    };
    for (const ConversionOptions& options : cases) {
        SCOPED_TRACE(&options - cases);
        EXPECT_EQ(LineFor(options), LR"(pdf2djvu.exe -o "a.djvu" -v  "a.pdf")");
    }
}

const LineCase kOptionTexts[] = {
    // The limits of the resolution are checked when its edit is left, and not here.
    {"ResolutionBelowTheLimits", OptionsBuilder().Resolution(L"5"),
     LR"(pdf2djvu.exe -o "a.djvu" -v -d 5 "a.pdf")"},
    {"ResolutionOfZeros", OptionsBuilder().Resolution(L"000"),
     LR"(pdf2djvu.exe -o "a.djvu" -v -d 000 "a.pdf")"},
    {"ResolutionAboveTheLimits", OptionsBuilder().Resolution(L"99999999999"),
     LR"(pdf2djvu.exe -o "a.djvu" -v -d 99999999999 "a.pdf")"},
    {"ResolutionOfABlank", OptionsBuilder().Resolution(L" "), LR"(pdf2djvu.exe -o "a.djvu" -v -d   "a.pdf")"},
    {"PagesWithBlanksAround", OptionsBuilder().Pages(L" 1 , 2-4 "),
     LR"(pdf2djvu.exe -o "a.djvu" -v  -p "1,2-4" "a.pdf")"},
    {"PagesWithBlanksBetweenDigits", OptionsBuilder().Pages(L"1  2"),
     LR"(pdf2djvu.exe -o "a.djvu" -v  -p "12" "a.pdf")"},
    {"PagesOfOneBlank", OptionsBuilder().Pages(L" "), LR"(pdf2djvu.exe -o "a.djvu" -v  -p "" "a.pdf")"},
    // Pasted text may hold anything; only U+0020 goes.
    {"PagesWithOtherSpaces", OptionsBuilder().Pages(L"1\t2\u00A03\u20034"),
     L"pdf2djvu.exe -o \"a.djvu\" -v  -p \"1\t2\u00A03\u20034\" \"a.pdf\""},
    {"PagesWithQuotesAndLetters", OptionsBuilder().Pages(L"\"a b\"é"),
     L"pdf2djvu.exe -o \"a.djvu\" -v  -p \"\"ab\"é\" \"a.pdf\""},
    {"ExtraOptionsOfOneBlank", OptionsBuilder().Extra(L" "), LR"(pdf2djvu.exe -o "a.djvu" -v    "a.pdf")"},
    {"ExtraOptionsAreNotTrimmed", OptionsBuilder().Extra(L"  -x  -y "),
     LR"(pdf2djvu.exe -o "a.djvu" -v    -x  -y  "a.pdf")"},
    {"ExtraOptionsWithQuotesAndRedirections",
     OptionsBuilder().Extra(LR"(--t="a b" >out.txt & echo %PATH% ^ | 'é')"),
     LR"(pdf2djvu.exe -o "a.djvu" -v  --t="a b" >out.txt & echo %PATH% ^ | 'é' "a.pdf")"},
    {"ExtraOptionsAlreadyNamedByABox", OptionsBuilder().NoText().Extra(L"--no-text"),
     LR"(pdf2djvu.exe -o "a.djvu" -v  --no-text --no-text "a.pdf")"},
};

class OptionTextTest : public testing::TestWithParam<LineCase> {};

TEST_P(OptionTextTest, IsWrittenAsStated) {
    EXPECT_EQ(LineFor(GetParam().options), GetParam().line);
}

INSTANTIATE_TEST_SUITE_P(BuildConverterCommandLine, OptionTextTest, testing::ValuesIn(kOptionTexts),
                         NameOfLineCase);

struct PathCase {
    const char* name;
    std::wstring_view djvuPath;
    std::wstring_view pdfPath;
    const wchar_t* line;
};

constexpr PathCase kPaths[] = {
    {"Empty", L"", L"", LR"(pdf2djvu.exe -o "" -v  "")"},
    {"WithShellCharacters", L"C:\\a & b\\100%^'!.djvu", L"C:\\a & b\\100%^'!.pdf",
     LR"(pdf2djvu.exe -o "C:\a & b\100%^'!.djvu" -v  "C:\a & b\100%^'!.pdf")"},
    {"OutsideLatin", L"C:\\отчёт 報告\\\xD83D\xDE00.djvu", L"C:\\отчёт 報告\\\xD83D\xDE00.pdf",
     L"pdf2djvu.exe -o \"C:\\отчёт 報告\\\xD83D\xDE00.djvu\" -v  \"C:\\отчёт "
     L"報告\\\xD83D\xDE00.pdf\""},
    {"EndingInABackslash", L"D:\\", L"E:\\", LR"(pdf2djvu.exe -o "D:\" -v  "E:\")"},
    {"WithoutATerminator", std::wstring_view(L"a.djvu.bak", 6), std::wstring_view(L"a.pdf.bak", 5),
     LR"(pdf2djvu.exe -o "a.djvu" -v  "a.pdf")"},
};

class PathTest : public testing::TestWithParam<PathCase> {};

TEST_P(PathTest, IsQuotedAsGiven) {
    EXPECT_EQ(BuildConverterCommandLine({}, GetParam().djvuPath, GetParam().pdfPath), GetParam().line);
}

INSTANTIATE_TEST_SUITE_P(BuildConverterCommandLine, PathTest, testing::ValuesIn(kPaths),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(BuildConverterCommandLine, HasNoLimitOfLength) {
    const std::wstring folder = L"C:\\" + std::wstring(5000, L'x') + L"\\";
    EXPECT_EQ(BuildConverterCommandLine({}, folder + L"a.djvu", folder + L"a.pdf"),
              L"pdf2djvu.exe -o \"" + folder + L"a.djvu\" -v  \"" + folder + L"a.pdf\"");
}

TEST(BuildInterpreterArguments, QuotesTheWholeLineAndSendsErrorsToTheLogWhenOutputIsHidden) {
    EXPECT_EQ(BuildInterpreterArguments(LR"(pdf2djvu.exe -o "C:\Docs\a.djvu" -v  "C:\Docs\a.pdf")", true),
              LR"(/C "pdf2djvu.exe -o "C:\Docs\a.djvu" -v  "C:\Docs\a.pdf"" 2>>TalvenorLog.txt)");
}

TEST(BuildInterpreterArguments, RedirectsNothingWhenOutputIsShown) {
    EXPECT_EQ(BuildInterpreterArguments(LR"(pdf2djvu.exe -o "C:\Docs\a.djvu" -v  "C:\Docs\a.pdf")", false),
              LR"(/C "pdf2djvu.exe -o "C:\Docs\a.djvu" -v  "C:\Docs\a.pdf"")");
}

TEST(BuildInterpreterArguments, HandsOnAnyLineAsItIs) {
    EXPECT_EQ(BuildInterpreterArguments(L"", false), LR"(/C "")");
    EXPECT_EQ(BuildInterpreterArguments(L"", true), LR"(/C "" 2>>TalvenorLog.txt)");
    EXPECT_EQ(BuildInterpreterArguments(L" é & \" %x% ^ ", true),
              L"/C \" é & \" %x% ^ \" 2>>TalvenorLog.txt");
    EXPECT_EQ(BuildInterpreterArguments(std::wstring_view(L"ab", 1), false), LR"(/C "a")");
}

}  // namespace
