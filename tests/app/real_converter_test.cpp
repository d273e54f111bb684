// Batches with the converter that people use.
#include "tests/app/app_fixture.h"

namespace {

using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

class RealConverter : public RealConverterFixture {
protected:
    void ConvertInto(const std::wstring& folder) {
        Window().Check(IDC_OUTPUT_FOLDER_CHECK);
        Window().Type(IDC_OUTPUT_FOLDER, folder);
        Window().StartBatch();
    }
    // The batch of this PDF and another ends with the first.
    void ExpectRefused(const std::wstring& pdf, const std::wstring& outputFolder = {}) {
        const std::string bytes = driver::ReadFileBytes(pdf);
        StartWith({pdf, RealPdf(L"next.pdf")});
        if (outputFolder.empty()) {
            Window().StartBatch();
        } else {
            ConvertInto(outputFolder);
        }
        ASSERT_TRUE(BecomesIdle());
        EXPECT_THAT(Durations(), ElementsAre(L"*** Annulé !", L""));
        EXPECT_FALSE(driver::FileExists(DjvuBeside(pdf)));
        EXPECT_FALSE(driver::FileExists(installed.PdfFolder() + L"\\next.djvu"));
        EXPECT_EQ(driver::ReadFileBytes(pdf), bytes) << "the PDF is not left as it was";
    }
};

TEST_F(RealConverter, MakesDjvuFilesInBothModes) {
    StartWith({RealPdf(L"Rapport annuel.pdf"), RealPdf(L"b.pdf")});
    Convert();
    EXPECT_THAT(Durations(), Each(StartsWith(L"00:00:")));
    for (const wchar_t* const name : {L"\\Rapport annuel.djvu", L"\\b.djvu"})
        ExpectDjvu(installed.PdfFolder() + name);
    EXPECT_FALSE(driver::FileExists(installed.Log()));

    const auto folder = installed.MakeFolder(L"Sortie");
    Window().Check(IDC_HIDE_OUTPUT);
    ConvertInto(folder);
    CompleteBatch();
    for (const wchar_t* const name : {L"\\Rapport annuel.djvu", L"\\b.djvu"}) ExpectDjvu(folder + name);
    // The converter's own messages are in the log, before each record.
    EXPECT_THAT(driver::ReadFileBytes(installed.Log()), HasSubstr("bytes out"));
}

TEST_F(RealConverter, ConvertsOnlyThePagesAskedFor) {
    StartWith({RealPdf(L"a.pdf")});
    Window().Check(IDC_HIDE_OUTPUT);
    Window().Check(IDC_PAGES_CHECK);
    Window().Type(IDC_PAGES, L"2");
    Convert();
    const std::string log = driver::ReadFileBytes(installed.Log());
    EXPECT_THAT(log, HasSubstr("page #2"));
    EXPECT_THAT(log, testing::Not(HasSubstr("page #1")));
}

TEST_F(RealConverter, EndsTheBatchAtAFileThatIsNoPdf) {
    ExpectRefused(installed.MakePdf(L"a.pdf", "this is no PDF"));
}

// Renaming the extension would need a 260th character and is refused, so the converter is told to write the
// PDF itself. It must say no.
TEST_F(RealConverter, LeavesAPdfWhoseNameHasNoRoomForTheExtension) {
    ExpectRefused(installed.MakePdfOfLength(259, SmallPdf(1)));
}

TEST_F(RealConverter, LeavesAPdfWhoseNameHasNoRoomInTheOutputFolder) {
    const auto root = installed.MakeFolder(L"S");
    ExpectRefused(RealPdf(std::wstring(80, L'n') + L".pdf"),
                  installed.MakeFolder(L"S\\" + std::wstring(220 - root.size(), L's')));
}

}  // namespace
