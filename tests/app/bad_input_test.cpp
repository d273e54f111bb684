// Things that are not as they should be: files that are gone, folders that are none, a log that cannot be
// written. Nothing crashes, nothing hangs, and no row says that it was converted when it was not.
#include "tests/app/app_fixture.h"

#include "tests/equipment/wine.h"
#include "tests/equipment/file_bytes.h"
#include "tests/equipment/handle.h"

namespace {

using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

class BadOutputFolder : public AppTest, public testing::WithParamInterface<const wchar_t*> {};

TEST_P(BadOutputFolder, IsRefusedWithAMessageAndNothingStarts) {
    driver::WriteFileBytes(installed.Log(), "left by an earlier batch");
    const auto pdf = installed.MakePdf(L"a.pdf");
    Start();
    AddForConversion({pdf});
    Window().Tick(id::kOutputFolderBox);
    const std::wstring folder = GetParam() == std::wstring(L"(the PDF)") ? pdf : GetParam();
    Window().Type(id::kOutputFolder, folder);
    EXPECT_FALSE(IsEnabled(id::kOpenDestination));
    driver::Click(Control(id::kConvert));
    const HWND box = WaitForBox();
    EXPECT_EQ(driver::Text(box), L"Talvenor");
    EXPECT_THAT(driver::AllText(box), HasSubstr(L"\nLe dossier de destination est incorrect !"));
    EXPECT_EQ(::GetWindow(box, GW_OWNER), Window().Window());
    AnswerBox(IDOK);
    EXPECT_FALSE(Window().IsRunning());
    EXPECT_TRUE(driver::FileExists(installed.Log()));

    // Nothing is left of the refusal: with a good folder the same press converts.
    Window().Type(id::kOutputFolder, installed.PdfFolder());
    EXPECT_TRUE(IsEnabled(id::kOpenDestination));
    Convert();
    EXPECT_EQ(Runs().size(), 1u);
}

INSTANTIATE_TEST_SUITE_P(Folders, BadOutputFolder,
                         testing::Values(L"C:\\n'existe pas", L"(the PDF)", L"   ", L"<>|?*", L"\\\\",
                                         L"\"C:\\windows\""),
                         [](const auto& folder) { return "Case" + std::to_string(folder.index); });

class BadInput : public AppTest {
protected:
    explicit BadInput(Converter converter = Converter::StandIn) : AppTest(converter) {}

    void ConvertHidden(const std::vector<std::wstring>& paths) {
        Start();
        AddForConversion(paths);
        Window().Tick(id::kHideOutput);
        Window().StartBatch();
    }
    // An interpreter that cannot write the error output starts no converter and fails; Wine's calls that a
    // success. The window goes by the exit code, which is all that it is told.
    void ExpectTheEndThatTheInterpreterReports() {
        if (UnderWine()) {
            CompleteBatch();
            EXPECT_THAT(Durations(), Each(StartsWith(L"00:00:")));
        } else {
            ASSERT_TRUE(BecomesIdle());
            EXPECT_THAT(Durations(), ElementsAre(L"*** Annulé !", L""));
        }
        EXPECT_TRUE(IsEnabled(id::kConvert));
        EXPECT_EQ(Text(id::kStatus), L"");
        EXPECT_EQ(Window().Quit(), 2u);
    }
};

TEST_F(BadInput, LogLockedByAnotherProgram) {
    {
        const driver::UniqueHandle lock(::CreateFileW(installed.Log().c_str(), GENERIC_READ | GENERIC_WRITE,
                                                      0, nullptr, CREATE_ALWAYS, 0, nullptr));
        ASSERT_NE(lock.Get(), INVALID_HANDLE_VALUE);
        ConvertHidden({installed.MakePdf(L"a.pdf"), installed.MakePdf(L"b.pdf")});
        ExpectTheEndThatTheInterpreterReports();
    }
    EXPECT_EQ(driver::ReadFileBytes(installed.Log()), "") << "written although it was locked";
}

TEST_F(BadInput, ReadOnlyLog) {
    driver::WriteFileBytes(installed.Log(), "keep this");
    ASSERT_TRUE(::SetFileAttributesW(installed.Log().c_str(), FILE_ATTRIBUTE_READONLY));
    ConvertHidden({installed.MakePdf(L"a.pdf"), installed.MakePdf(L"b.pdf")});
    ExpectTheEndThatTheInterpreterReports();
    // Neither deleted nor overwritten. (Wine lets an administrator write behind it.)
    EXPECT_THAT(driver::ReadFileBytes(installed.Log()), StartsWith("keep this"));
}

TEST_F(BadInput, FolderInTheLogsPlace) {
    ASSERT_TRUE(::CreateDirectoryW(installed.Log().c_str(), nullptr));
    ConvertHidden({installed.MakePdf(L"a.pdf"), installed.MakePdf(L"b.pdf")});
    ExpectTheEndThatTheInterpreterReports();
    EXPECT_TRUE(driver::FileExists(installed.Log()));
}

TEST_F(BadInput, LockedLogDoesNotMatterToAVisibleBatch) {
    const driver::UniqueHandle lock(::CreateFileW(installed.Log().c_str(), GENERIC_READ | GENERIC_WRITE, 0,
                                                  nullptr, CREATE_ALWAYS, 0, nullptr));
    ASSERT_NE(lock.Get(), INVALID_HANDLE_VALUE);
    Start();
    AddForConversion({installed.MakePdf(L"a.pdf")});
    Convert();
    EXPECT_THAT(Durations(), Each(StartsWith(L"00:00:")));
}

TEST_F(BadInput, RecordThatCannotBeWrittenIsLostWithoutAWord) {
    Start();
    AddForConversion({installed.MakePdf(L"a wait700.pdf"), installed.MakePdf(L"b.pdf")});
    Window().Tick(id::kHideOutput);
    Window().StartBatch();
    ASSERT_TRUE(Comes([&] { return Runs().size() == 1; }));
    // Whoever reads the log lets others write, too; only our record wants the file for itself.
    const driver::UniqueHandle reader(::CreateFileW(installed.Log().c_str(), GENERIC_READ,
                                                    FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                                    OPEN_EXISTING, 0, nullptr));
    ASSERT_NE(reader.Get(), INVALID_HANDLE_VALUE);
    CompleteBatch();
    EXPECT_EQ(Runs().size(), 2u);
    EXPECT_THAT(Durations(), Each(StartsWith(L"00:00:")));
    EXPECT_EQ(driver::ReadFileBytes(installed.Log()).find("Termin"), std::string::npos);
}

TEST_F(BadInput, ConverterThatVanishesEndsTheBatch) {
    Start();
    AddForConversion({installed.MakePdf(L"a.pdf"), installed.MakePdf(L"b.pdf")});
    ASSERT_TRUE(::DeleteFileW(installed.ConverterPath().c_str()));
    Window().StartBatch();
    ASSERT_TRUE(BecomesIdle());
    EXPECT_THAT(Durations(), ElementsAre(L"*** Annulé !", L""));
}

TEST_F(BadInput, OutputFolderThatVanishesIsRefused) {
    const auto a = installed.MakePdf(L"a.pdf");
    const auto folder = installed.MakeFolder(L"Sortie");
    Start();
    AddForConversion({a});
    Window().Tick(id::kOutputFolderBox);
    Window().Type(id::kOutputFolder, folder);
    ASSERT_TRUE(::RemoveDirectoryW(folder.c_str()));
    driver::Click(Control(id::kConvert));
    EXPECT_THAT(driver::AllText(WaitForBox()), HasSubstr(L"\nLe dossier de destination est incorrect !"));
    AnswerBox(IDOK);
    EXPECT_FALSE(Window().IsRunning());
}

class BadInputForTheRealConverter : public BadInput {
protected:
    BadInputForTheRealConverter() : BadInput(Converter::Real) {}
    void SetUp() override {
        if (!UnderWine()) GTEST_SKIP() << "the bridge to the converter is a program for Wine";
    }
};

TEST_F(BadInputForTheRealConverter, FileThatIsGoneIsNotConverted) {
    const auto a = installed.MakePdf(L"a.pdf");
    const auto b = installed.MakePdf(L"b.pdf");
    ASSERT_TRUE(::DeleteFileW(a.c_str()));
    ConvertHidden({a, b});
    ASSERT_TRUE(BecomesIdle());
    EXPECT_THAT(Durations(), ElementsAre(L"*** Annulé !", L""));
    EXPECT_FALSE(driver::FileExists(installed.PdfFolder() + L"\\a.djvu"));
}

}  // namespace
