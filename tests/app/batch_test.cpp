// Whole batches through the window, with a converter that does as its files' names say and the system's own
// interpreter.
#include "tests/app/app_fixture.h"

#include <algorithm>
#include <regex>

namespace {

using testing::Each;
using testing::ElementsAre;
using testing::EndsWith;
using testing::StartsWith;

class Batch : public AppTest {
protected:
    // Whether a window of any program can be seen whose title begins so.
    static bool IsWindowShown(const std::wstring& titleBegin) {
        return std::ranges::any_of(driver::TopLevelWindows(), [&](HWND window) {
            wchar_t title[MAX_PATH] = {};
            ::InternalGetWindowText(window, title, MAX_PATH);
            return driver::IsVisible(window) && std::wstring(title).starts_with(titleBegin);
        });
    }
};

TEST_F(Batch, ConvertsTheFilesOneAfterAnotherInTheirOrderWithHiddenConsoles) {
    const std::vector<std::wstring> pdfs = {installed.MakePdf(L"c wait300.pdf"),
                                            installed.MakePdf(L"a wait100.pdf"), installed.MakePdf(L"b.pdf")};
    startOptions.directory = installed.MakeFolder(L"Ailleurs");
    StartHiddenBatch(pdfs);
    CompleteBatch();

    const auto runs = Runs();
    ASSERT_EQ(runs.size(), 3u);
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(ArgumentsOf(runs[i]), PlainArgumentsFor(pdfs[i]));
        EXPECT_EQ(runs[i].at(L"directory"), installed.Folder());
        EXPECT_EQ(runs[i].at(L"console"), L"hidden");
        // A run's end is written before the next begins, or the reader would take it for the later one's.
        EXPECT_EQ(runs[i].at(L"ended"), L"0");
    }
    EXPECT_TRUE(driver::FileExists(installed.Log()));
    EXPECT_TRUE(driver::IsVisible(Control(IDC_OPEN_LOG)));
    EXPECT_EQ(Paths(), pdfs);
    EXPECT_THAT(Durations(), Each(StartsWith(L"00:00:0")));
}

TEST_F(Batch, ShowsConsolesAndLeavesNoLogUnlessTheOutputIsHidden) {
    driver::WriteFileBytes(installed.Log(), "left by an earlier batch");
    const auto a = installed.MakePdf(L"a.pdf");
    StartWith({a});
    ASSERT_TRUE(driver::IsVisible(Control(IDC_OPEN_LOG)));
    Convert();

    const auto runs = Runs();
    ASSERT_EQ(runs.size(), 1u);
    EXPECT_EQ(ArgumentsOf(runs[0]), PlainArgumentsFor(a));
    EXPECT_THAT(runs[0].at(L"command"), EndsWith(L"\" -v  \"" + a + L"\"")) << "nothing may follow the PDF";
    EXPECT_EQ(runs[0].at(L"directory"), installed.Folder());
    // Where another program is the default terminal (Windows 11), it has the window that can be seen, and the
    // converter's own is a stand-in that is never seen.
    EXPECT_THAT(runs[0].at(L"console"), testing::AnyOf(L"visible", L"in a terminal"));
    // Windows's interpreter adds the command that it runs.
    EXPECT_THAT(runs[0].at(L"title"), testing::StartsWith(L"a.pdf"));
    EXPECT_FALSE(driver::FileExists(installed.Log()));
    EXPECT_FALSE(driver::IsVisible(Control(IDC_OPEN_LOG)));
}

TEST_F(Batch, AConsoleIsShownAsLongAsItsConverterRuns) {
    StartWith({installed.MakePdf(L"shown wait1500.pdf")});
    driver::Click(Control(IDOK));
    EXPECT_TRUE(Comes([] { return IsWindowShown(L"shown wait1500.pdf"); }));
    CompleteBatch();
    EXPECT_TRUE(Comes([] { return !IsWindowShown(L"shown wait1500.pdf"); }));
}

TEST_F(Batch, CountsTheSecondsOfAFileAndGoesOnBehindTheAboutBox) {
    StartHiddenBatch({installed.MakePdf(L"a wait2300.pdf"), installed.MakePdf(L"b.pdf")});
    EXPECT_TRUE(Comes([&] {
        return Durations() == std::vector<std::wstring>{L"00:00:01", L""};
    })) << "no second was counted";
    driver::Click(Control(IDC_ABOUT));
    const HWND about = WaitForDialog();
    EXPECT_TRUE(Comes([&] { return Runs().size() == 2; })) << "the batch waits for the About box";
    EXPECT_GE(Durations()[0], L"00:00:02");
    driver::AnswerDialog(about, IDOK);
    CompleteBatch();
}

TEST_F(Batch, LogsTheConvertersOutputWithARecordForEachFileUpToTheFailedOne) {
    StartHiddenBatch({installed.MakePdf(L"a.pdf"), installed.MakePdf(L"b wait1100.pdf"),
                      installed.MakePdf(L"c exit2.pdf"), installed.MakePdf(L"d.pdf")});
    ASSERT_TRUE(BecomesIdle()) << "a failed batch has no message";
    const auto durations = Durations();
    EXPECT_THAT(durations,
                ElementsAre(StartsWith(L"00:00:0"), testing::Ge(L"00:00:01"), L"*** Annulé !", L""));
    // Each record with its duration and its rule, without its time. Accents take a byte or two.
    const std::regex record(
        "\r\nTermin.{1,2} le : ([0-9]{2}/[0-9]{2}, [0-9]{4}|[0-9]{4}/[0-9]{2}, [0-9]{2}) - [0-9:]{8}\r\n"
        "\\*{3} Dur.{1,2}e de conversion \\(hh:mm:ss\\) : ([^\r]+)\r\n(\\*+)\r\n\r\n");
    const std::string log =
        std::regex_replace(driver::ReadFileBytes(installed.Log()), record, "record $2 $3\r\n");
    const std::string output = "stand-in converter: converting\r\nrecord ";
    EXPECT_TRUE(std::regex_match(log, std::regex(output + driver::ToUtf8(durations[0]) + " \\*{86}\r\n" +
                                                 output + driver::ToUtf8(durations[1]) + " \\*{86}\r\n" +
                                                 output + "\\*{3} Annul.{1,2} ! \\*{90}\r\n")))
        << log;
    EXPECT_EQ(Runs().size(), 3u);
}

TEST_F(Batch, EndsAtAConverterThatHasVanished) {
    StartWith({installed.MakePdf(L"a.pdf"), installed.MakePdf(L"b.pdf")});
    ASSERT_TRUE(::DeleteFileW(installed.ConverterPath().c_str()));
    Window().StartBatch();
    ASSERT_TRUE(BecomesIdle());
    EXPECT_THAT(Durations(), ElementsAre(L"*** Annulé !", L""));
}

}  // namespace
