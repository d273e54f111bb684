// Batches with the converter that people use.
#include "tests/app/app_fixture.h"

#include <ostream>

#include "tests/app/small_pdf.h"

namespace {

using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

using RealConverter = RealConverterFixture;

TEST_F(RealConverter, MakesDjvuFilesInBothModes) {
    StartWith({RealPdf(L"Rapport annuel.pdf"), RealPdf(L"b.pdf")});
    Convert();
    EXPECT_THAT(Durations(), Each(StartsWith(L"00:00:")));
    for (const wchar_t* const name : {L"\\Rapport annuel.djvu", L"\\b.djvu"})
        ExpectDjvu(installed.PdfFolder() + name);
    EXPECT_FALSE(driver::FileExists(installed.Log()));

    const auto folder = installed.MakeFolder(L"Sortie");
    Window().Check(IDC_HIDE_OUTPUT);
    Window().Check(IDC_OUTPUT_FOLDER_CHECK);
    Window().Type(IDC_OUTPUT_FOLDER, folder);
    Convert();
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

struct Refusal {
    const char* name;
    std::wstring pdfName;
    std::string bytes;
    // Further preparation, when the list holds the PDF.
    void (*prepare)(const InstalledProgram& installed, const driver::MainWindow& window) = nullptr;

    friend void PrintTo(const Refusal& refusal, std::ostream* out) { *out << refusal.name; }
};

class ConversionRefused : public RealConverterFixture, public testing::WithParamInterface<Refusal> {};

TEST_P(ConversionRefused, EndsTheBatchAndLeavesThePdf) {
    startOptions.environment[L"TALVENOR_TEST"] = L"autre";
    // Without a name its path has one character more than leaves room for the longer extension.
    const auto pdf = GetParam().pdfName.empty() ? installed.MakePdfOfLength(259, GetParam().bytes)
                                                : installed.MakePdf(GetParam().pdfName, GetParam().bytes);
    StartWith({pdf, RealPdf(L"next.pdf")});
    if (GetParam().prepare) GetParam().prepare(installed, Window());
    Window().StartBatch();
    ASSERT_TRUE(BecomesIdle());
    EXPECT_THAT(Durations(), ElementsAre(L"*** Annulé !", L""));
    EXPECT_FALSE(driver::FileExists(DjvuBeside(pdf)));
    EXPECT_FALSE(driver::FileExists(installed.PdfFolder() + L"\\next.djvu"));
    EXPECT_EQ(driver::ReadFileBytes(pdf), GetParam().bytes);
}

INSTANTIATE_TEST_SUITE_P(
    Because, ConversionRefused,
    testing::Values(Refusal{"TheFileIsNoPdf", L"a.pdf", "this is no PDF"},
                    // The interpreter reads it, and the converter is given another name.
                    Refusal{"AVariableIsInTheName", L"%TALVENOR_TEST%.pdf", SmallPdf(1)},
                    // Renaming the extension would need a 260th character and is refused, so the converter is
                    // told to write the PDF itself. It must say no.
                    Refusal{"ThereIsNoRoomForTheExtension", L"", SmallPdf(1)},
                    Refusal{"ThereIsNoRoomInTheOutputFolder", std::wstring(80, L'n') + L".pdf", SmallPdf(1),
                            [](const InstalledProgram& installed, const driver::MainWindow& window) {
                                const auto root = installed.MakeFolder(L"S");
                                window.Check(IDC_OUTPUT_FOLDER_CHECK);
                                window.Type(
                                    IDC_OUTPUT_FOLDER,
                                    installed.MakeFolder(L"S\\" + std::wstring(220 - root.size(), L's')));
                            }}),
    [](const auto& refusal) { return std::string(refusal.param.name); });

}  // namespace
