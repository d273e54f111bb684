// A stop ends the conversion that it stops: with the real interpreter and the real converter, which has no
// window that could be asked; and nothing else is ended.
#include "tests/app/app_fixture.h"

#include <chrono>
#include <cwchar>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace {

using testing::ElementsAre;
using testing::StartsWith;

// How long what is ended may still be there.
constexpr driver::Milliseconds kGoneLimit{2'000};

class StoppedConverter : public RealConverterFixture, public testing::WithParamInterface<bool> {
protected:
    StoppedConverter() {
        // Where the converter works; what one that is ended leaves behind goes with the rest.
        startOptions.environment[L"TMP"] = m_temporaryFolder;
    }
    // Begins a batch, hidden or not, and waits until the converter is at work on its first file.
    void StartBatchOf(const std::vector<std::wstring>& paths) {
        StartWith(paths);
        if (GetParam()) Window().Check(IDC_HIDE_OUTPUT);
        Window().StartBatch();
        ASSERT_TRUE(Comes([&] { return ConverterRuns() && !std::filesystem::is_empty(m_temporaryFolder); }))
            << "the converter does not begin";
    }
    // Whether one of the system below Wine works for this test: its command line names a file of ours. Wine
    // shows that system's files on this drive; each of its processes is a folder whose name is a number.
    [[nodiscard]] bool ConverterRuns() const {
        const auto ours = std::filesystem::path(installed.PdfFolder()).parent_path().filename().string();
        bool anyProcess = false;
        for (const auto& entry : std::filesystem::directory_iterator(L"Z:\\proc")) {
            if (std::wcstoul(entry.path().filename().c_str(), nullptr, 10) == 0) continue;
            anyProcess = true;
            std::ifstream file(entry.path() / L"cmdline", std::ios::binary);
            const std::string line{std::istreambuf_iterator<char>(file), {}};
            if (line.starts_with("/usr/bin/pdf2djvu") && line.find(ours) != std::string::npos) return true;
        }
        if (!anyProcess) throw driver::Failure("the processes of the system below Wine cannot be read");
        return false;
    }

private:
    const std::wstring m_temporaryFolder = installed.MakeFolder(L"temp");
};

TEST_P(StoppedConverter, IsGoneAtOnceAndTheNextBatchConverts) {
    StartBatchOf({RealPdf(L"a.pdf", 300), RealPdf(L"b.pdf")});
    driver::Click(Control(IDCANCEL));
    AnswerDialog(IDYES);
    EXPECT_TRUE(Comes([&] { return !ConverterRuns(); }, kGoneLimit)) << "it works on";
    EXPECT_TRUE(Comes([&] { return Process().Running() == 1; }, kGoneLimit)) << "the interpreter works on";
    ASSERT_TRUE(BecomesIdle());
    EXPECT_TRUE(Comes([&] { return Durations()[0] == L"*** Annulé !"; }));
    EXPECT_EQ(Durations()[1], L"");
    EXPECT_FALSE(driver::FileExists(installed.PdfFolder() + L"\\b.djvu"));

    driver::Click(Control(IDC_CLEAR));
    ASSERT_TRUE(Comes([&] { return driver::RowCount(List()) == 0; }));
    const auto c = RealPdf(L"c.pdf");
    Window().DropPdfs({c});
    Window().OpenAndCancelAddDialog();
    Convert();
    EXPECT_THAT(Durations(), ElementsAre(StartsWith(L"00:00:")));
    ExpectDjvu(DjvuBeside(c));
    EXPECT_EQ(Window().Quit(), 2u);
}

INSTANTIATE_TEST_SUITE_P(Output, StoppedConverter, testing::Bool(),
                         [](const auto& hidden) { return hidden.param ? "Hidden" : "Visible"; });

// With an interpreter whose window is asked to close, and which does as the name of the PDF says.
class StoppedInterpreter : public AppTest {
protected:
    void SetUp() override {
        if (!UnderWine()) GTEST_SKIP() << "a real Windows keeps its interpreter";
        ReplaceInterpreter();
    }
    void StartBatchOf(const wchar_t* pdfName) {
        StartWith({installed.MakePdf(pdfName), installed.MakePdf(L"b.pdf"), installed.MakePdf(L"c.pdf")});
        Window().StartBatch();
        ASSERT_TRUE(Comes([&] { return Runs().size() == 1; }));
    }
};

TEST_F(StoppedInterpreter, ClosesWhenItsWindowIsAskedAndNothingMoreIsConverted) {
    StartBatchOf(L"a wait60000.pdf");
    Stop();
    EXPECT_TRUE(Comes([&] { return Durations()[0] == L"*** Annulé !"; }));
    ASSERT_EQ(Runs().size(), 1u);
    EXPECT_EQ(Runs()[0].at(L"closed"), L"1");
    EXPECT_EQ(Runs()[0].at(L"ended"), L"3");
    EXPECT_THAT(Durations(), ElementsAre(L"*** Annulé !", L"", L""));
    EXPECT_EQ(Window().OpenDialog(), nullptr) << "a stopped batch ends without a message";
}

TEST_F(StoppedInterpreter, OutlivesTheProgramWhichEndsAtOnce) {
    StartBatchOf(L"a wait60000 ignore.pdf");
    DWORD processId = 0;
    ::GetWindowThreadProcessId(::FindWindowW(L"StandInInterpreter", nullptr), &processId);
    const UniqueHandle interpreter(::OpenProcess(SYNCHRONIZE, FALSE, processId));
    ASSERT_TRUE(interpreter);
    Stop();
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(Window().Quit(), 2u);
    // What anybody would call at once, on a busy machine.
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(3));
    // Long enough for anything that came with the program's end.
    EXPECT_EQ(::WaitForSingleObject(interpreter.Get(), 500), static_cast<DWORD>(WAIT_TIMEOUT));
}

}  // namespace
