// Which dropped files the list takes.
#include "ui/drop_filter.h"

#include <gtest/gtest.h>

namespace {

TEST(IsPdfExtension, TakesEveryCaseOfAsciiLetters) {
    EXPECT_TRUE(IsPdfExtension(L".pdf"));
    EXPECT_TRUE(IsPdfExtension(L".PDF"));
    EXPECT_TRUE(IsPdfExtension(L".Pdf"));
    EXPECT_TRUE(IsPdfExtension(L".pDF"));
}

TEST(IsPdfExtension, RefusesAnythingElse) {
    for (const wchar_t* extension : {L"", L".", L"pdf", L".pd", L".pdfx", L".pdf ", L" .pdf", L".pdf.bak",
                                     L".p\u0131f", L"\uFF0Epdf", L".\uFF30DF", L".djvu", L".@df", L".[df"}) {
        EXPECT_FALSE(IsPdfExtension(extension)) << extension;
    }
}

}  // namespace
