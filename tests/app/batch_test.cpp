// Whole batches through the window, with a converter that does as its files' names say.
#include "tests/app/app_fixture.h"

#include "tests/equipment/file_bytes.h"

namespace {

using testing::Each;
using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;
using testing::StartsWith;

class Batch : public AppTest {
protected:
    // The controls that a person can change for a conversion.
    static constexpr int kOptions[] = {
        id::kConvert,       id::kAdd,        id::kClear,        id::kFileList,   id::kPagesBox,
        id::kResolutionBox, id::kNoText,     id::kNoMetadata,   id::kNoOutline,  id::kNoHyperlinks,
        id::kLines,         id::kMonochrome, id::kExtraOptions, id::kHideOutput, id::kOutputFolderBox,
        id::kOutputFolder,  id::kBrowse,     id::kShutdown};

    [[nodiscard]] std::wstring Djvu(const wchar_t* name) const {
        return installed.PdfFolder() + L"\\" + name;
    }
};

TEST_F(Batch, HiddenConvertsTheFilesOneAfterAnotherInTheirOrder) {
    const auto c = installed.MakePdf(L"c wait300.pdf");
    const auto a = installed.MakePdf(L"a wait100.pdf");
    const auto b = installed.MakePdf(L"b.pdf");
    Start();
    AddForConversion({c, a, b});
    Window().Tick(id::kHideOutput);
    Convert();

    const auto runs = Runs();
    ASSERT_EQ(runs.size(), 3u);
    EXPECT_THAT(runs[0].Arguments(), ElementsAre(L"pdf2djvu.exe", L"-o", Djvu(L"c wait300.djvu"), L"-v", c));
    EXPECT_THAT(runs[1].Arguments(), ElementsAre(L"pdf2djvu.exe", L"-o", Djvu(L"a wait100.djvu"), L"-v", a));
    EXPECT_THAT(runs[2].Arguments(), ElementsAre(L"pdf2djvu.exe", L"-o", Djvu(L"b.djvu"), L"-v", b));
    for (const RecordedRun& run : runs) {
        EXPECT_EQ(run.directory, installed.Folder());
        EXPECT_EQ(run.console, L"hidden");
        // A run's end is written before the next begins, or the reader would give it to the later one.
        EXPECT_EQ(run.ended, 0);
    }
    EXPECT_THAT(driver::ColumnTexts(List(), 0), ElementsAre(c, a, b));
    EXPECT_THAT(Durations(), Each(StartsWith(L"00:00:0")));
}

TEST_F(Batch, VisibleShowsConsolesAndLeavesNoLog) {
    driver::WriteFileBytes(installed.Log(), "left by an earlier batch");
    const auto a = installed.MakePdf(L"a.pdf");
    Start();
    ASSERT_TRUE(driver::IsVisible(Control(id::kOpenLog)));
    AddForConversion({a});
    Convert();

    const auto runs = Runs();
    ASSERT_EQ(runs.size(), 1u);
    EXPECT_THAT(runs[0].Arguments(), ElementsAre(L"pdf2djvu.exe", L"-o", Djvu(L"a.djvu"), L"-v", a));
    EXPECT_THAT(runs[0].command, EndsWith(L"\" -v  \"" + a + L"\"")) << "nothing may follow the PDF";
    EXPECT_EQ(runs[0].directory, installed.Folder());
    // Where another program is the default terminal (Windows 11), it has the window that can be seen, and the
    // converter's own is a stand-in that tells nothing.
    EXPECT_THAT(runs[0].console, testing::AnyOf(L"visible", L"in a terminal"));
    EXPECT_FALSE(driver::FileExists(installed.Log()));
    EXPECT_FALSE(driver::IsVisible(Control(id::kOpenLog)));
}

TEST_F(Batch, ShowsTheFileBeingConvertedAndItsTime) {
    const auto a = installed.MakePdf(L"a & co wait2300.pdf");
    const auto b = installed.MakePdf(L"b wait600.pdf");
    Start();
    AddForConversion({a, b});
    Window().Tick(id::kHideOutput);
    Window().StartBatch();

    ASSERT_TRUE(Comes([&] { return Runs().size() == 1; }));
    EXPECT_EQ(driver::SelectedRow(List()), 0);
    EXPECT_EQ(Text(id::kStatus), L"Conversion en cours : " + a);
    EXPECT_EQ(Text(id::kQuit), L"Arrêter ");
    EXPECT_EQ(Text(id::kConvert), L"   Convertir ");
    for (const int option : kOptions) EXPECT_FALSE(IsEnabled(option)) << option;
    for (const int usable : {id::kQuit, id::kAbout}) EXPECT_TRUE(IsEnabled(usable)) << usable;
    EXPECT_TRUE(Comes([&] {
        return Durations() == std::vector<std::wstring>{L"00:00:01", L""};
    })) << "no second was counted";

    ASSERT_TRUE(Comes([&] { return Runs().size() == 2; }));
    EXPECT_EQ(driver::SelectedRow(List()), 1);
    EXPECT_EQ(Text(id::kStatus), L"Conversion en cours : " + b);
    EXPECT_GE(Durations()[0], L"00:00:02");
    EXPECT_EQ(Durations()[1], L"");
    CompleteBatch();
    EXPECT_GE(Durations()[0], L"00:00:02");
    EXPECT_THAT(Durations()[1], StartsWith(L"00:00:0"));
}

TEST_F(Batch, MessageAtTheEndComesBeforeTheWindowIsIdle) {
    const auto a = installed.MakePdf(L"a.pdf");
    Start();
    AddForConversion({a});
    Window().Tick(id::kHideOutput);
    Window().StartBatch();
    const HWND box = Window().WaitForCompletion(kSoon);

    EXPECT_EQ(driver::Text(box), L"Talvenor");
    EXPECT_EQ(::GetWindow(box, GW_OWNER), Window().Window());
    EXPECT_FALSE(driver::IsEnabled(Window().Window()));
    EXPECT_EQ(driver::PushButtons(box).size(), 1u);
    EXPECT_EQ(driver::SelectedRow(List()), -1);
    EXPECT_THAT(Text(id::kStatus), EndsWith(a)) << "emptied only after the message";
    EXPECT_EQ(Text(id::kQuit), L"Arrêter ");
    EXPECT_FALSE(driver::IsVisible(Control(id::kOpenLog)));

    Window().CloseCompletion(box);
    EXPECT_EQ(driver::SelectedRow(List()), -1);
    EXPECT_EQ(Text(id::kStatus), L"");
    EXPECT_EQ(Text(id::kQuit), L"Quitter");
    EXPECT_EQ(Text(id::kConvert), L"   Convertir ");
    EXPECT_TRUE(driver::IsVisible(Control(id::kOpenLog)));
    EXPECT_TRUE(IsEnabled(id::kOpenLog));
    for (const int option : kOptions) EXPECT_TRUE(IsEnabled(option)) << option;
    EXPECT_THAT(driver::ColumnTexts(List(), 0), ElementsAre(a)) << "the rows stay";
}

TEST_F(Batch, SecondOneBeginsWithoutDurationsAndWithoutLog) {
    const auto a = installed.MakePdf(L"a.pdf");
    const auto b = installed.MakePdf(L"b wait700.pdf");
    Start();
    AddForConversion({b, a});
    Window().Tick(id::kHideOutput);
    Convert();
    ASSERT_THAT(Durations(), Each(StartsWith(L"00:00:0")));
    driver::AppendFileBytes(installed.Log(), "mark");

    Window().StartBatch();
    ASSERT_TRUE(Comes([&] { return Runs().size() == 3; }));
    EXPECT_THAT(Durations(), Each(IsEmpty()));
    EXPECT_FALSE(driver::IsVisible(Control(id::kOpenLog)));
    CompleteBatch();
    EXPECT_EQ(Runs().size(), 4u);
    EXPECT_EQ(driver::ReadFileBytes(installed.Log()).find("mark"), std::string::npos);
}

TEST_F(Batch, NeedsTheAddDialogOpenedOnceAfterADrop) {
    Start();
    Window().DropPdfs({installed.MakePdf(L"a.pdf")});
    EXPECT_FALSE(IsEnabled(id::kConvert));
    Window().OpenAndCancelAddDialog();
    EXPECT_TRUE(IsEnabled(id::kConvert));
    Convert();
    EXPECT_EQ(Runs().size(), 1u);
}

TEST_F(Batch, EveryOptionReachesTheConverter) {
    const auto a = installed.MakePdf(L"Rapport annuel.pdf");
    const auto folder = installed.MakeFolder(L"Sortie d'été");
    Start();
    AddForConversion({a});
    for (const int box : {id::kNoMetadata, id::kNoOutline, id::kNoHyperlinks, id::kLines, id::kNoText,
                          id::kMonochrome, id::kPagesBox, id::kResolutionBox, id::kOutputFolderBox})
        Window().Tick(box);
    Window().Type(id::kPages, L"1,3-5");
    Window().Type(id::kResolution, L"150");
    Window().Type(id::kOutputFolder, folder);
    Window().Type(id::kExtraOptions, L"--exemple=1");
    Convert();
    ASSERT_EQ(Runs().size(), 1u);
    EXPECT_THAT(Runs()[0].Arguments(),
                ElementsAre(L"pdf2djvu.exe", L"-o", folder + L"\\Rapport annuel.djvu", L"-v", L"-d", L"150",
                            L"--no-metadata", L"--no-outline", L"--no-hyperlinks", L"--no-text",
                            L"--monochrome", L"--exemple=1", L"-p", L"1,3-5", a));
}

TEST_F(Batch, PutsTheDjvuBesideThePdfOrIntoTheChosenFolder) {
    const auto a = installed.MakePdf(L"a.PDF");
    const auto folder = installed.MakeFolder(L"Sortie");
    startOptions.environment[L"TALVENOR_STANDIN_WRITE"] = L"1";
    Start();
    AddForConversion({a});
    Convert();
    EXPECT_TRUE(driver::FileExists(Djvu(L"a.djvu")));
    EXPECT_FALSE(driver::FileExists(folder + L"\\a.djvu"));

    Window().Tick(id::kOutputFolderBox);
    Window().Type(id::kOutputFolder, folder + L"\\");
    Convert();
    EXPECT_TRUE(driver::FileExists(folder + L"\\a.djvu"));
}

}  // namespace
