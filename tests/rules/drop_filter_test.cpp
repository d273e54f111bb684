// Which dropped files the list takes.
#include "ui/drop_filter.h"

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(IsPdfExtension, TakesEveryCaseOfAsciiLetters) {
    for (const wchar_t* extension :
         {L".pdf", L".pdF", L".pDf", L".pDF", L".Pdf", L".PdF", L".PDf", L".PDF"}) {
        EXPECT_TRUE(IsPdfExtension(extension)) << extension;
    }
}

TEST(IsPdfExtension, RefusesTextsThatAreShorterLongerOrOther) {
    for (const wchar_t* extension :
         {L"", L".", L"pdf", L"PDF", L".p", L".pd", L".pdfx", L".pdff", L".pdf ", L" .pdf", L".pdf.",
          L"..pdf", L".pdf.bak", L".pfd", L".fdp", L".djvu", L".txt", L".ps", L".PDF\u0301"}) {
        EXPECT_FALSE(IsPdfExtension(extension)) << extension;
    }
}

TEST(IsPdfExtension, RefusesEveryOtherCharacterInEveryPlace) {
    for (std::size_t place = 0; place < 4; ++place) {
        for (unsigned code = 0; code <= 0xFFFF; ++code) {
            std::wstring extension = L".pdf";
            extension[place] = static_cast<wchar_t>(code);
            const bool isSame = extension[place] == L".pdf"[place] || extension[place] == L".PDF"[place];
            ASSERT_EQ(IsPdfExtension(extension), isSame) << "place " << place << ", code " << code;
        }
    }
}

TEST(IsPdfExtension, LooksAtTheTextItIsGivenAndNothingBehindIt) {
    EXPECT_TRUE(IsPdfExtension(std::wstring_view(L".pdfx", 4)));
    EXPECT_FALSE(IsPdfExtension(std::wstring_view(L".pdf", 3)));
    EXPECT_FALSE(IsPdfExtension(std::wstring_view(L".pdf\0", 5)));  // with its null
    EXPECT_FALSE(IsPdfExtension(std::wstring_view()));
}

}  // namespace
