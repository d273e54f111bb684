// A batch with the converter that people use: under Wine the system's own, behind a bridge.
#include "tests/app/app_fixture.h"

#include "tests/app/small_pdf.h"
#include "tests/equipment/wine.h"
#include "tests/equipment/file_bytes.h"
#include "tests/equipment/text.h"

namespace {

using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

class RealConverter : public AppTest {
protected:
    RealConverter() : AppTest(Converter::Real) {}
    void SetUp() override {
        if (!UnderWine()) GTEST_SKIP() << "the bridge to the converter is a program for Wine";
    }
    [[nodiscard]] std::wstring RealPdf(const wchar_t* name) const {
        return installed.MakePdf(name, SmallPdf(2));
    }
    // A DjVu document of several pages begins like this.
    static void ExpectDjvu(const std::wstring& path) {
        ASSERT_TRUE(driver::FileExists(path));
        EXPECT_THAT(driver::ReadFileBytes(path), StartsWith("AT&TFORM")) << driver::ToUtf8(path);
    }
};

TEST_F(RealConverter, MakesDjvuFilesInBothModes) {
    const auto a = RealPdf(L"Rapport annuel.pdf");
    const auto b = RealPdf(L"b.pdf");
    Start();
    AddForConversion({a, b});
    Convert();
    EXPECT_THAT(Durations(), Each(StartsWith(L"00:00:")));
    for (const wchar_t* const name : {L"\\Rapport annuel.djvu", L"\\b.djvu"})
        ExpectDjvu(installed.PdfFolder() + name);
    EXPECT_FALSE(driver::FileExists(installed.Log()));

    const auto folder = installed.MakeFolder(L"Sortie");
    Window().Tick(id::kHideOutput);
    Window().Tick(id::kOutputFolderBox);
    Window().Type(id::kOutputFolder, folder);
    Convert();
    for (const wchar_t* const name : {L"\\Rapport annuel.djvu", L"\\b.djvu"}) ExpectDjvu(folder + name);
    // The converter's own messages are in the log, before each record.
    EXPECT_THAT(driver::ReadFileBytes(installed.Log()), HasSubstr("bytes out"));
}

TEST_F(RealConverter, FileThatIsNoPdfEndsTheBatch) {
    const auto a = installed.MakePdf(L"a.pdf", "this is no PDF");
    const auto b = RealPdf(L"b.pdf");
    Start();
    AddForConversion({a, b});
    Window().StartBatch();
    ASSERT_TRUE(BecomesIdle());
    EXPECT_THAT(Durations(), ElementsAre(L"*** Annulé !", L""));
    EXPECT_FALSE(driver::FileExists(installed.PdfFolder() + L"\\a.djvu"));
    EXPECT_FALSE(driver::FileExists(installed.PdfFolder() + L"\\b.djvu"));
}

TEST_F(RealConverter, ConvertsOnlyThePagesAskedFor) {
    const auto a = RealPdf(L"a.pdf");
    Start();
    AddForConversion({a});
    Window().Tick(id::kHideOutput);
    Window().Tick(id::kPagesBox);
    Window().Type(id::kPages, L"2");
    Convert();
    const std::string log = driver::ReadFileBytes(installed.Log());
    EXPECT_THAT(log, HasSubstr("page #2"));
    EXPECT_THAT(log, testing::Not(HasSubstr("page #1")));
}

TEST_F(RealConverter, PageListThatItRefusesEndsTheBatch) {
    const auto a = RealPdf(L"a.pdf");
    Start();
    AddForConversion({a});
    Window().Tick(id::kPagesBox);
    Window().Type(id::kPages, L"5-,-3");
    Window().StartBatch();
    ASSERT_TRUE(BecomesIdle());
    EXPECT_THAT(Durations(), ElementsAre(L"*** Annulé !"));
}

}  // namespace
