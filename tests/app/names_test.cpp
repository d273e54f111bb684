// Names that a command line, a list or a code page could trip over. Whatever the name, the converter gets
// that file and no other, or the row says that it was not converted.
#include "tests/app/app_fixture.h"

#include <map>

#include "tests/app/small_pdf.h"
#include "tests/equipment/wine.h"
#include "tests/equipment/file_bytes.h"
#include "tests/equipment/text.h"

namespace {

using testing::Each;
using testing::ElementsAre;
using testing::StartsWith;

// Without ".pdf". A percent sign alone is no variable; a name with a variable's is another test's.
const std::vector<std::wstring> kNames = {
    L"deux  blancs", L"a & b",       L"a && b",           L"^chapeau^",         L"100 % sûr",
    L"l'été",        L"attention !", L"(1) [2] {3}",      L"a; b, c=d",         L"+~@#$-_`",
    L"v1.0 final",   L"--help",      L"Éléphant œuvre ÿ", L"Война и мир",       L"日本語の文書",
    L"한국어",       L"עברית",       L"emoji 😀🚀",         L"e\u0301 décomposé", L"\u00a0insécable\u00a0",
};

class Names : public AppTest {
protected:
    explicit Names(Converter converter = Converter::StandIn, const wchar_t* folder = L"Programme")
        : AppTest(converter, folder) {}

    // One file for each name, in a folder that has some of it in its own.
    [[nodiscard]] std::vector<std::wstring> MakePdfs(std::string_view bytes) const {
        std::vector<std::wstring> paths;
        for (const std::wstring& name : kNames)
            paths.push_back(installed.MakePdf(L"Дом & jardin (été) !\\" + name + L".pdf", bytes));
        return paths;
    }
    static std::wstring DjvuBeside(const std::wstring& pdf) {
        return pdf.substr(0, pdf.size() - 4) + L".djvu";
    }

    void ExpectEachFileOnce(const std::vector<std::wstring>& pdfs) const {
        const auto runs = Runs();
        ASSERT_EQ(runs.size(), pdfs.size());
        for (std::size_t i = 0; i < pdfs.size(); ++i) {
            EXPECT_THAT(runs[i].Arguments(),
                        ElementsAre(L"pdf2djvu.exe", L"-o", DjvuBeside(pdfs[i]), L"-v", pdfs[i]))
                << driver::ToUtf8(pdfs[i]);
        }
        EXPECT_THAT(Durations(), Each(StartsWith(L"00:00:")));
    }
};

TEST_F(Names, ReachTheConverterAsTheyAre) {
    const auto pdfs = MakePdfs("%PDF");
    Start();
    AddForConversion(pdfs);
    EXPECT_EQ(driver::ColumnTexts(List(), 0), pdfs);
    Window().Tick(id::kHideOutput);
    Convert();
    ExpectEachFileOnce(pdfs);
}

TEST_F(Names, AreShownInTheStatusLineAsTheyAre) {
    const auto pdfs = MakePdfs("%PDF");
    Start();
    Window().DropPdfs(pdfs);
    for (std::size_t i = 0; i < pdfs.size(); ++i) {
        driver::PressKey(List(), i == 0 ? VK_HOME : VK_DOWN);
        ASSERT_TRUE(Comes([&] { return driver::SelectedRow(List()) == static_cast<int>(i); }));
        EXPECT_EQ(Text(id::kStatus), pdfs[i]);
    }
}

// The interpreter reads variables inside quotes, too: the converter is told another name, or the very name
// where there is no such variable. A file of that other name must not be taken for the one in the list.
TEST_F(Names, VariableInANameNeverGivesAWrongDocument) {
    startOptions.environment[L"TALVENOR_TEST"] = L"autre";
    const auto pdf = installed.MakePdf(L"%TALVENOR_TEST%.pdf");
    Start();
    AddForConversion({pdf});
    Convert();
    ASSERT_EQ(Runs().size(), 1u);
    EXPECT_EQ(Runs()[0].Arguments().back(), installed.PdfFolder() + L"\\autre.pdf");
    EXPECT_EQ(Runs()[0].Arguments()[2], installed.PdfFolder() + L"\\autre.djvu")
        << "the document must not get a name of the list";
}

class NamesOfTheProgramFolder : public Names {
protected:
    NamesOfTheProgramFolder() : Names(Converter::StandIn, L"Outils & Cie (été) v1.2, №5 😀") {}
};

TEST_F(NamesOfTheProgramFolder, DoNotMatter) {
    const auto a = installed.MakePdf(L"a.pdf");
    Start();
    AddForConversion({a});
    Window().Tick(id::kHideOutput);
    Convert();
    ASSERT_EQ(Runs().size(), 1u);
    EXPECT_EQ(Runs()[0].directory, installed.Folder());
    EXPECT_TRUE(driver::FileExists(installed.Log()));
    EXPECT_TRUE(driver::IsVisible(Control(id::kOpenLog)));
}

class NamesForTheRealConverter : public Names {
protected:
    NamesForTheRealConverter() : Names(Converter::Real) {}
    void SetUp() override {
        if (!UnderWine()) GTEST_SKIP() << "the bridge to the converter is a program for Wine";
    }
};

TEST_F(NamesForTheRealConverter, GiveADjvuFileEach) {
    const auto pdfs = MakePdfs(SmallPdf(1));
    Start();
    AddForConversion(pdfs);
    Convert();
    for (const std::wstring& pdf : pdfs)
        EXPECT_TRUE(driver::FileExists(DjvuBeside(pdf))) << driver::ToUtf8(pdf);
    EXPECT_THAT(Durations(), Each(StartsWith(L"00:00:")));
}

TEST_F(NamesForTheRealConverter, VariableInANameIsNoConversion) {
    startOptions.environment[L"TALVENOR_TEST"] = L"autre";
    const auto pdf = installed.MakePdf(L"%TALVENOR_TEST%.pdf", SmallPdf(1));
    Start();
    AddForConversion({pdf});
    Window().StartBatch();
    ASSERT_TRUE(BecomesIdle());
    EXPECT_THAT(Durations(), ElementsAre(L"*** Annulé !"));
}

}  // namespace
