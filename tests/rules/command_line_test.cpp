// The text that the converter and the command interpreter are started with.
#include "engine/command_line.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>

namespace {

std::wstring LineFor(const ConversionOptions& options) {
    return BuildConverterCommandLine(options, L"a.djvu", L"a.pdf");
}

// Nothing chosen but one text, with its check box checked or not.
ConversionOptions Chosen(std::wstring ConversionOptions::*option, const wchar_t* text,
                         bool ConversionOptions::*checkBox, bool isChecked) {
    ConversionOptions options;
    options.*option = text;
    options.*checkBox = isChecked;
    return options;
}

ConversionOptions Pages(const wchar_t* text, bool isChecked = true) {
    return Chosen(&ConversionOptions::pages, text, &ConversionOptions::pagesEnabled, isChecked);
}

ConversionOptions Resolution(const wchar_t* text, bool isChecked = true) {
    return Chosen(&ConversionOptions::resolution, text, &ConversionOptions::resolutionEnabled, isChecked);
}

ConversionOptions OutputFolder(const wchar_t* text, bool isChecked = true) {
    return Chosen(&ConversionOptions::outputFolder, text, &ConversionOptions::outputFolderEnabled, isChecked);
}

ConversionOptions ExtraOptions(const wchar_t* text, bool noText = false) {
    return Chosen(&ConversionOptions::extraOptions, text, &ConversionOptions::noText, noText);
}

TEST(BuildConverterCommandLine, NamesBothPathsAndTheVerboseSwitchWhenNothingIsChosen) {
    EXPECT_EQ(
        BuildConverterCommandLine({}, L"C:\\Docs\\Rapport annuel.djvu", L"C:\\Docs\\Rapport annuel.pdf"),
        LR"(pdf2djvu.exe -o "C:\Docs\Rapport annuel.djvu" -v  "C:\Docs\Rapport annuel.pdf")");
}

TEST(ConversionOptionsTest, AreAllOffUntilTheyAreRead) {
    ConversionOptions options;
    options.pages = L"1";
    options.resolution = L"300";
    EXPECT_EQ(LineFor(options), LR"(pdf2djvu.exe -o "a.djvu" -v  "a.pdf")");
    EXPECT_FALSE(options.outputFolderEnabled);
}

TEST(BuildConverterCommandLine, WritesEveryCombinationOfOptionsInTheFixedOrder) {
    static constexpr struct {
        bool ConversionOptions::*flag;
        const wchar_t* text;
    } kFlags[] = {
        {&ConversionOptions::noMetadata, L" --no-metadata"},
        {&ConversionOptions::noOutline, L" --no-outline"},
        {&ConversionOptions::noHyperlinks, L" --no-hyperlinks"},
        {&ConversionOptions::noText, L" --no-text"},
        {&ConversionOptions::lines, L" --lines"},
        {&ConversionOptions::monochrome, L" --monochrome"},
    };
    for (unsigned combination = 0; combination < 1u << 9; ++combination) {
        unsigned left = combination;
        const auto isNextChosen = [&left] { return (std::exchange(left, left >> 1) & 1) != 0; };
        ConversionOptions options;
        options.resolution = L"300";
        options.pages = L"2,5";
        std::wstring expected = L"pdf2djvu.exe -o \"a.djvu\" -v ";
        options.resolutionEnabled = isNextChosen();
        if (options.resolutionEnabled) expected += L"-d 300";
        for (const auto& [flag, text] : kFlags) {
            options.*flag = isNextChosen();
            const bool isOverruled = flag == &ConversionOptions::lines && options.noText;
            if (options.*flag && !isOverruled) expected += text;
        }
        if (isNextChosen()) {
            options.extraOptions = L"--x=1";
            expected += L" --x=1";
        }
        options.pagesEnabled = isNextChosen();
        if (options.pagesEnabled) expected += L" -p \"2,5\"";
        EXPECT_EQ(LineFor(options), expected + L" \"a.pdf\"");
    }
}

TEST(BuildConverterCommandLine, LeavesOutWhatIsUncheckedOrEmpty) {
    const ConversionOptions cases[] = {
        Resolution(L""),
        Resolution(L"300", false),
        Pages(L""),
        Pages(L"1-5", false),
        Pages(L"  ", false),
        ExtraOptions(L""),
        // The folder is in the path of the DjVu file already.
        OutputFolder(L"D:\\Out"),
        OutputFolder(L"D:\\Out", false),
    };
    for (const ConversionOptions& options : cases) {
        SCOPED_TRACE(&options - cases);
        EXPECT_EQ(LineFor(options), LR"(pdf2djvu.exe -o "a.djvu" -v  "a.pdf")");
    }
}

struct LineCase {
    const char* name;
    ConversionOptions options;
    const wchar_t* line;
};

const LineCase kOptionTexts[] = {
    // The limits of the resolution are checked when its edit is left, and not here.
    {"ResolutionBelowTheLimits", Resolution(L"5"), LR"(pdf2djvu.exe -o "a.djvu" -v -d 5 "a.pdf")"},
    {"ResolutionOfZeros", Resolution(L"000"), LR"(pdf2djvu.exe -o "a.djvu" -v -d 000 "a.pdf")"},
    {"ResolutionAboveTheLimits", Resolution(L"99999999999"),
     LR"(pdf2djvu.exe -o "a.djvu" -v -d 99999999999 "a.pdf")"},
    {"ResolutionOfABlank", Resolution(L" "), LR"(pdf2djvu.exe -o "a.djvu" -v -d   "a.pdf")"},
    {"PagesWithBlanksAround", Pages(L" 1 , 2-4 "), LR"(pdf2djvu.exe -o "a.djvu" -v  -p "1,2-4" "a.pdf")"},
    {"PagesWithBlanksBetweenDigits", Pages(L"1  2"), LR"(pdf2djvu.exe -o "a.djvu" -v  -p "12" "a.pdf")"},
    {"PagesOfOneBlank", Pages(L" "), LR"(pdf2djvu.exe -o "a.djvu" -v  -p "" "a.pdf")"},
    // Pasted text may hold anything; only U+0020 goes.
    {"PagesWithOtherSpaces", Pages(L"1\t2\u00A03\u20034"),
     L"pdf2djvu.exe -o \"a.djvu\" -v  -p \"1\t2\u00A03\u20034\" \"a.pdf\""},
    {"PagesWithQuotesAndLetters", Pages(L"\"a b\"é"),
     L"pdf2djvu.exe -o \"a.djvu\" -v  -p \"\"ab\"é\" \"a.pdf\""},
    {"ExtraOptionsOfOneBlank", ExtraOptions(L" "), LR"(pdf2djvu.exe -o "a.djvu" -v    "a.pdf")"},
    {"ExtraOptionsAreNotTrimmed", ExtraOptions(L"  -x  -y "),
     LR"(pdf2djvu.exe -o "a.djvu" -v    -x  -y  "a.pdf")"},
    {"ExtraOptionsWithQuotesAndRedirections", ExtraOptions(LR"(--t="a b" >out.txt & echo %PATH% ^ | 'é')"),
     LR"(pdf2djvu.exe -o "a.djvu" -v  --t="a b" >out.txt & echo %PATH% ^ | 'é' "a.pdf")"},
    {"ExtraOptionsAlreadyNamedByABox", ExtraOptions(L"--no-text", true),
     LR"(pdf2djvu.exe -o "a.djvu" -v  --no-text --no-text "a.pdf")"},
};

TEST(BuildConverterCommandLine, WritesTextsAsStated) {
    for (const LineCase& row : kOptionTexts) EXPECT_EQ(LineFor(row.options), row.line) << row.name;
}

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

TEST(BuildConverterCommandLine, QuotesPathsAsGiven) {
    for (const PathCase& row : kPaths) {
        EXPECT_EQ(BuildConverterCommandLine({}, row.djvuPath, row.pdfPath), row.line) << row.name;
    }
}

TEST(BuildConverterCommandLine, HasNoLimitOfLength) {
    const std::wstring folder = L"C:\\" + std::wstring(5000, L'x') + L"\\";
    EXPECT_EQ(BuildConverterCommandLine({}, folder + L"a.djvu", folder + L"a.pdf"),
              L"pdf2djvu.exe -o \"" + folder + L"a.djvu\" -v  \"" + folder + L"a.pdf\"");
}

TEST(BuildInterpreterArguments, QuotesTheWholeLineAndSendsErrorsToTheLogOnlyWhenOutputIsHidden) {
    EXPECT_EQ(BuildInterpreterArguments(LR"(pdf2djvu.exe -o "C:\Docs\a.djvu" -v  "C:\Docs\a.pdf")", true),
              LR"(/C "pdf2djvu.exe -o "C:\Docs\a.djvu" -v  "C:\Docs\a.pdf"" 2>>TalvenorLog.txt)");
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
