// Paths at and beyond the 260 characters that the system's path functions take.
#include "tests/app/app_fixture.h"

#include "tests/app/small_pdf.h"
#include "tests/equipment/wine.h"
#include "tests/equipment/file_bytes.h"

namespace {

using testing::ElementsAre;
using testing::StartsWith;

// The longest path that leaves room for a terminator in 260 characters.
constexpr std::size_t kLongest = 259;

class LongPath : public AppTest {
protected:
    explicit LongPath(Converter converter = Converter::StandIn) : AppTest(converter) {}

    // A PDF whose whole path has this length.
    [[nodiscard]] std::wstring MakePdfOfLength(std::size_t length, std::string_view bytes = "%PDF") const {
        // Two parts, for no single name may be that long.
        const std::wstring folder(100, L'd');
        const std::size_t before = installed.PdfFolder().size() + 1 + folder.size() + 1;
        const std::wstring name(length - before - 4, L'n');
        const auto path = installed.MakePdf(folder + L"\\" + name + L".pdf", bytes);
        EXPECT_EQ(path.size(), length);
        return path;
    }
    static std::wstring DjvuBeside(const std::wstring& pdf) {
        return pdf.substr(0, pdf.size() - 4) + L".djvu";
    }
};

TEST_F(LongPath, IsListedAndConvertedWhileItFits) {
    // One less than the longest, for ".djvu" has a letter more than ".pdf".
    const auto pdf = MakePdfOfLength(kLongest - 1);
    Start();
    AddForConversion({pdf});
    EXPECT_THAT(driver::ColumnTexts(List(), 0), ElementsAre(pdf));
    Convert();
    ASSERT_EQ(Runs().size(), 1u);
    EXPECT_THAT(Runs()[0].Arguments(), ElementsAre(L"pdf2djvu.exe", L"-o", DjvuBeside(pdf), L"-v", pdf));
}

TEST_F(LongPath, TooLongIsNotListedAndDoesNotDisturbTheOthers) {
    const auto before = installed.MakePdf(L"avant.pdf");
    const auto after = installed.MakePdf(L"après.pdf");
    Start();
    driver::DropFiles(List(), {before, MakePdfOfLength(kLongest + 1), MakePdfOfLength(kLongest + 60), after});
    EXPECT_TRUE(Comes([&] { return driver::RowCount(List()) == 2; }));
    EXPECT_THAT(driver::ColumnTexts(List(), 0), ElementsAre(before, after));
}

TEST_F(LongPath, FolderTextOfAnyLengthIsRefusedWithoutHarm) {
    Start();
    AddForConversion({installed.MakePdf(L"a.pdf")});
    Window().Tick(id::kOutputFolderBox);
    driver::SetText(Control(id::kOutputFolder), L"C:\\" + std::wstring(20'000, L'x'));
    driver::Click(Control(id::kConvert));
    EXPECT_THAT(driver::AllText(WaitForBox()),
                testing::HasSubstr(L"\nLe dossier de destination est incorrect !"));
    AnswerBox(IDOK);
    EXPECT_EQ(Runs().size(), 0u);
}

TEST_F(LongPath, OptionsOfAnyLengthDoNoHarm) {
    // Longer than any command line may be: the interpreter cannot be started, or dies of it (Wine's).
    Start();
    AddForConversion({installed.MakePdf(L"a.pdf")});
    driver::SetText(Control(id::kExtraOptions), std::wstring(40'000, L'x'));
    Window().StartBatch();
    const auto ended = [&] {
        if (const HWND box = Window().OpenBox()) driver::PressDialogButton(box, IDOK);
        return !Window().IsRunning() && !Window().OpenBox();
    };
    EXPECT_TRUE(Comes(ended));
    EXPECT_EQ(Runs().size(), 0u);
    EXPECT_EQ(Window().Quit(), 2u);
}

// A program whose own path has this length, with a converter beside it.
class LongProgramPath : public LongPath {
protected:
    [[nodiscard]] std::wstring MakeProgramOfLength(std::size_t length) const {
        const std::wstring parent = installed.MakeFolder(std::wstring(100, L'p'));
        const std::wstring file = L"\\Talvenor.exe";
        const std::wstring folder =
            parent + L'\\' + std::wstring(length - parent.size() - 1 - file.size(), L'q');
        EXPECT_TRUE(::CreateDirectoryW((L"\\\\?\\" + folder).c_str(), nullptr));
        for (const auto& [from, to] : {std::pair{installed.Program(), file},
                                       {installed.ConverterPath(), std::wstring(L"\\pdf2djvu.exe")}}) {
            EXPECT_TRUE(::CopyFileW(from.c_str(), (L"\\\\?\\" + folder + to).c_str(), TRUE));
        }
        EXPECT_EQ((folder + file).size(), length);
        return folder + file;
    }
};

TEST_F(LongProgramPath, OpensItsWindowWhileItFits) {
    const driver::Program program(MakeProgramOfLength(kLongest));
    const driver::MainWindow window(program);
    EXPECT_EQ(window.Quit(), 2u);
}

class LongPathForTheRealConverter : public LongPath {
protected:
    LongPathForTheRealConverter() : LongPath(Converter::Real) {}
    void SetUp() override {
        if (!UnderWine()) GTEST_SKIP() << "the bridge to the converter is a program for Wine";
    }
};

// Renaming the extension would need a 260th character and is refused, so the converter is told to write the
// PDF itself. It must say no, and the PDF must stay.
TEST_F(LongPathForTheRealConverter, WithoutRoomForTheExtensionIsNotConverted) {
    const std::string bytes = SmallPdf(1);
    const auto pdf = MakePdfOfLength(kLongest, bytes);
    Start();
    AddForConversion({pdf});
    Window().StartBatch();
    ASSERT_TRUE(BecomesIdle());
    EXPECT_THAT(Durations(), ElementsAre(L"*** Annulé !"));
    EXPECT_EQ(driver::ReadFileBytes(pdf), bytes);
}

TEST_F(LongPathForTheRealConverter, WithoutRoomInTheOutputFolderIsNotConverted) {
    const std::string bytes = SmallPdf(1);
    const auto pdf = installed.MakePdf(std::wstring(80, L'n') + L".pdf", bytes);
    const auto root = installed.MakeFolder(L"S");
    const auto folder = installed.MakeFolder(L"S\\" + std::wstring(220 - root.size(), L's'));
    Start();
    AddForConversion({pdf});
    Window().Tick(id::kOutputFolderBox);
    Window().Type(id::kOutputFolder, folder);
    Window().StartBatch();
    ASSERT_TRUE(BecomesIdle());
    EXPECT_THAT(Durations(), ElementsAre(L"*** Annulé !"));
    EXPECT_EQ(driver::ReadFileBytes(pdf), bytes);
}

}  // namespace
