// Which dropped files the list takes.
#include "ui/drop_filter.h"

#include <gtest/gtest.h>

namespace {

TEST(IsPdfExtension, TakesEveryCaseOfAsciiLetters) {
    for (const wchar_t* extension :
         {L".pdf", L".pdF", L".pDf", L".pDF", L".Pdf", L".PdF", L".PDf", L".PDF"}) {
        EXPECT_TRUE(IsPdfExtension(extension)) << extension;
    }
}

TEST(IsPdfExtension, RefusesTextsThatAreShorterLongerOrOther) {
    for (const wchar_t* extension :
         {L"",      L".",     L"pdf",   L"PDF",   L".p",       L".pd",  L".pdfx", L".pdff",
          L".pdf ", L" .pdf", L".pdf.", L"..pdf", L".pdf.bak", L".pfd", L".fdp",  L".djvu",
          L".txt",  L".ps",   L".odf",  L".pef",  L".pdg",     L"/pdf", L"-pdf"}) {
        EXPECT_FALSE(IsPdfExtension(extension)) << extension;
    }
}

TEST(IsPdfExtension, RefusesCharactersThatOnlyResembleTheLetters) {
    struct Lookalike {
        const char* what;
        const wchar_t* extension;
    };
    const Lookalike lookalikes[] = {
        {"full width P", L".\uFF30DF"},
        {"full width dot", L"\uFF0Epdf"},
        {"Cyrillic r", L".\u0440df"},
        {"dotless i", L".p\u0131f"},
        {"combining accent behind", L".PDF\u0301"},
        {"character before A", L".@df"},
        {"character behind Z", L".[df"},
        {"dot without its case bit", L"\u000Epdf"},
        {"letter one bit from the dot", L"Npdf"},
        {"digit one bit from p", L".0df"},
        {"control character two bits from p", L".\u0010df"},
        {"letter with the low byte of p", L".\u0170df"},
        {"letter with the low byte of d", L".p\u0164f"},
        {"letter with the low byte of f", L".pd\u0166"},
        {"letter with the low byte of the dot", L"\u012Epdf"},
        {"letter with the low byte of P", L".\u0150df"},
        {"letter with seven bits of P", L".\u00D0df"},
    };
    for (const Lookalike& row : lookalikes) EXPECT_FALSE(IsPdfExtension(row.extension)) << row.what;
}

TEST(IsPdfExtension, LooksAtTheTextItIsGivenAndNothingBehindIt) {
    EXPECT_TRUE(IsPdfExtension(std::wstring_view(L".pdfx", 4)));
    EXPECT_FALSE(IsPdfExtension(std::wstring_view(L".pdf", 3)));
    EXPECT_FALSE(IsPdfExtension(std::wstring_view(L".pdf\0", 5)));  // with its null
    EXPECT_FALSE(IsPdfExtension(std::wstring_view()));
}

}  // namespace
