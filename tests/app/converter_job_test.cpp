// A stop ends the conversion that it stops: with the real interpreter and the real converter, which has no
// window that could be asked; and nothing else is ended.
#include "tests/app/app_fixture.h"

#include <filesystem>

#include "tests/app/small_pdf.h"
#include "tests/app/system_processes.h"
#include "tests/equipment/file_bytes.h"
#include "tests/equipment/text.h"
#include "tests/equipment/wine.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

// How long what is ended may still be there.
constexpr driver::Milliseconds kGoneLimit{2'000};

class StoppedConverter : public AppTest, public testing::WithParamInterface<bool> {
protected:
    StoppedConverter() : AppTest(Converter::Real), m_temporaryFolder(installed.MakeFolder(L"temp")) {
        // Where the converter works; what one that is ended leaves behind goes with the rest.
        startOptions.environment[L"TMP"] = m_temporaryFolder;
    }
    void SetUp() override {
        if (!UnderWine()) GTEST_SKIP() << "the bridge to the converter is a program for Wine";
    }
    // Begins a batch, hidden or not, and waits until the converter is at work on its first file.
    void StartBatchOf(const std::vector<std::wstring>& paths) {
        Start();
        AddForConversion(paths);
        if (GetParam()) Window().Tick(id::kHideOutput);
        Window().StartBatch();
        ASSERT_TRUE(Comes([&] { return ConverterRuns() && !std::filesystem::is_empty(m_temporaryFolder); }))
            << "the converter does not begin";
    }
    void Ask() { driver::Click(Control(id::kQuit)); }
    // One that works for this test: its command line names a file of ours.
    [[nodiscard]] bool ConverterRuns() const {
        const auto ours = std::filesystem::path(installed.PdfFolder()).parent_path().filename();
        return NativeConverterRuns(driver::ToUtf8(ours.wstring()));
    }
    void ExpectDjvu(const wchar_t* name) const {
        const std::wstring path = installed.PdfFolder() + L"\\" + name;
        ASSERT_TRUE(driver::FileExists(path));
        EXPECT_THAT(driver::ReadFileBytes(path), StartsWith("AT&TFORM"));
    }

private:
    std::wstring m_temporaryFolder;
};

TEST_P(StoppedConverter, IsGoneAtOnceAndTheNextBatchConverts) {
    StartBatchOf({installed.MakePdf(L"a.pdf", SmallPdf(300)), installed.MakePdf(L"b.pdf", SmallPdf(1))});
    Ask();
    AnswerBox(IDYES);
    EXPECT_TRUE(Comes([&] { return !ConverterRuns(); }, kGoneLimit)) << "it works on";
    EXPECT_THAT(ChildrenOf(Process().Id(), L"cmd.exe"), IsEmpty());
    ASSERT_TRUE(BecomesIdle());
    EXPECT_TRUE(Comes([&] { return Durations()[0] == L"*** Annulé !"; }));
    EXPECT_EQ(Durations()[1], L"");
    EXPECT_FALSE(driver::FileExists(installed.PdfFolder() + L"\\b.djvu"));

    driver::Click(Control(id::kClear));
    ASSERT_TRUE(Comes([&] { return driver::RowCount(List()) == 0; }));
    AddForConversion({installed.MakePdf(L"c.pdf", SmallPdf(2))});
    Convert();
    EXPECT_THAT(Durations(), ElementsAre(StartsWith(L"00:00:")));
    ExpectDjvu(L"c.djvu");
    EXPECT_EQ(Window().Quit(), 2u);
}

TEST_P(StoppedConverter, GoesOnWhenTheAnswerIsNo) {
    StartBatchOf({installed.MakePdf(L"a.pdf", SmallPdf(60))});
    Ask();
    AnswerBox(IDNO);
    EXPECT_TRUE(ConverterRuns()) << "ended, or done before the answer: nothing is shown then";
    CompleteBatch(driver::Milliseconds(60'000));
    EXPECT_THAT(Durations(), ElementsAre(StartsWith(L"00:0")));
    ExpectDjvu(L"a.djvu");
}

INSTANTIATE_TEST_SUITE_P(Output, StoppedConverter, testing::Bool(),
                         [](const auto& hidden) { return hidden.param ? "Hidden" : "Visible"; });

// With an interpreter that does as it is told.
class StoppedInterpreter : public AppTest {
protected:
    void SetUp() override {
        if (!UnderWine()) GTEST_SKIP() << "a real Windows keeps its interpreter";
        ReplaceInterpreter(Equipment(L"stand_in_interpreter.exe"));
        startOptions.environment[L"TALVENOR_INTERPRETER_IGNORE"] = L"1";
    }
    void StartBatchOf(const std::vector<std::wstring>& paths) {
        Start();
        AddForConversion(paths);
        Window().StartBatch();
        ASSERT_TRUE(Comes([&] { return Runs().size() == 1; }));
    }
    void Stop() {
        driver::Click(Control(id::kQuit));
        AnswerBox(IDYES);
        ASSERT_TRUE(BecomesIdle());
    }
};

TEST_F(StoppedInterpreter, WithAnOrdinaryWindowIsOnlyAskedEvenWhenItIgnoresThat) {
    StartBatchOf({installed.MakePdf(L"a wait3000.pdf")});
    Stop();
    EXPECT_TRUE(Comes([&] { return Runs()[0].closed == L"1"; })) << "it was not asked";
    EXPECT_TRUE(Comes([&] { return Runs()[0].ended.has_value(); })) << "it did not come to its own end";
    EXPECT_EQ(Runs()[0].ended, 0);
    EXPECT_TRUE(Comes([&] { return Durations()[0] == L"*** Annulé !"; }));
}

TEST_F(StoppedInterpreter, InATerminalIsEndedAsAClosedConsoleEndsIt) {
    constexpr wchar_t kClassOfATerminal[] = L"PseudoConsoleWindow";
    startOptions.environment[L"TALVENOR_INTERPRETER_CLASS"] = kClassOfATerminal;
    StartBatchOf({installed.MakePdf(L"a wait60000.pdf"), installed.MakePdf(L"b.pdf")});
    const driver::UniqueHandle interpreter = OwnerOfWindow(kClassOfATerminal);
    Stop();
    ASSERT_EQ(::WaitForSingleObject(interpreter.Get(), static_cast<DWORD>(kGoneLimit.count())),
              WAIT_OBJECT_0);
    DWORD code = 0;
    EXPECT_TRUE(::GetExitCodeProcess(interpreter.Get(), &code));
    EXPECT_EQ(code, static_cast<DWORD>(STATUS_CONTROL_C_EXIT));
    EXPECT_TRUE(Comes([&] { return Durations()[0] == L"*** Annulé !"; }));
    EXPECT_EQ(Runs().size(), 1u);
}

TEST_F(StoppedInterpreter, OutlivesTheProgram) {
    StartBatchOf({installed.MakePdf(L"a wait60000.pdf")});
    const driver::UniqueHandle interpreter = OwnerOfWindow(L"StandInInterpreter");
    Stop();
    EXPECT_EQ(Window().Quit(), 2u);
    // Long enough for anything that came with the program's end.
    EXPECT_EQ(::WaitForSingleObject(interpreter.Get(), 500), static_cast<DWORD>(WAIT_TIMEOUT));
}

}  // namespace
