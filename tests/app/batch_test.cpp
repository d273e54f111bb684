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
    [[nodiscard]] std::wstring Djvu(const wchar_t* name) const {
        return installed.PdfFolder() + L"\\" + name;
    }
    // Whether a window of any program can be seen whose title begins so.
    static bool IsWindowShown(const std::wstring& titleBegin) {
        const std::vector<HWND> windows = driver::TopLevelWindows();
        return std::any_of(windows.begin(), windows.end(), [&](HWND window) {
            wchar_t title[MAX_PATH] = {};
            ::InternalGetWindowText(window, title, MAX_PATH);
            return driver::IsVisible(window) && std::wstring(title).starts_with(titleBegin);
        });
    }
};

TEST_F(Batch, ConvertsTheFilesOneAfterAnotherInTheirOrderWithHiddenConsoles) {
    const auto c = installed.MakePdf(L"c wait300.pdf");
    const auto a = installed.MakePdf(L"a wait100.pdf");
    const auto b = installed.MakePdf(L"b.pdf");
    StartHiddenBatch({c, a, b});
    CompleteBatch();

    const auto runs = Runs();
    ASSERT_EQ(runs.size(), 3u);
    EXPECT_THAT(runs[0].Arguments(), ElementsAre(L"pdf2djvu.exe", L"-o", Djvu(L"c wait300.djvu"), L"-v", c));
    EXPECT_THAT(runs[1].Arguments(), ElementsAre(L"pdf2djvu.exe", L"-o", Djvu(L"a wait100.djvu"), L"-v", a));
    EXPECT_THAT(runs[2].Arguments(), ElementsAre(L"pdf2djvu.exe", L"-o", Djvu(L"b.djvu"), L"-v", b));
    for (const RecordedRun& run : runs) {
        EXPECT_EQ(run.directory, installed.Folder());
        EXPECT_EQ(run.console, L"hidden");
        // A run's end is written before the next begins, or the reader would take it for the later one's.
        EXPECT_EQ(run.ended, 0);
    }
    EXPECT_THAT(Paths(), ElementsAre(c, a, b));
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
    EXPECT_THAT(runs[0].Arguments(), ElementsAre(L"pdf2djvu.exe", L"-o", Djvu(L"a.djvu"), L"-v", a));
    EXPECT_THAT(runs[0].command, EndsWith(L"\" -v  \"" + a + L"\"")) << "nothing may follow the PDF";
    EXPECT_EQ(runs[0].directory, installed.Folder());
    // Where another program is the default terminal (Windows 11), it has the window that can be seen, and the
    // converter's own is a stand-in that is never seen.
    EXPECT_THAT(runs[0].console, testing::AnyOf(L"visible", L"in a terminal"));
    // Windows's interpreter adds the command that it runs.
    EXPECT_THAT(runs[0].title, testing::StartsWith(L"a.pdf"));
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

TEST_F(Batch, ShowsTheFileBeingConvertedAndItsTimeAndGoesOnBehindTheAboutBox) {
    const auto a = installed.MakePdf(L"a & co wait2300.pdf");
    StartHiddenBatch({a, installed.MakePdf(L"b.pdf")});
    ASSERT_TRUE(Comes([&] { return Runs().size() == 1; }));
    EXPECT_EQ(driver::SelectedRow(List()), 0);
    EXPECT_EQ(Text(IDC_STATUS), L"Conversion en cours : " + a);
    EXPECT_EQ(Text(IDCANCEL), L"Arrêter ");
    EXPECT_TRUE(Comes([&] {
        return Durations() == std::vector<std::wstring>{L"00:00:01", L""};
    })) << "no second was counted";
    driver::Click(Control(IDC_ABOUT));
    const HWND about = WaitForDialog();
    EXPECT_TRUE(Comes([&] { return Runs().size() == 2; })) << "the batch waits for the About box";
    EXPECT_GE(Durations()[0], L"00:00:02");
    driver::PressDialogButton(about, IDOK);
    ASSERT_TRUE(Comes([&] { return !::IsWindow(about); }));
    CompleteBatch();
    EXPECT_EQ(Text(IDC_STATUS), L"");
    EXPECT_EQ(Text(IDCANCEL), L"Quitter");
}

// In bytes of the Western code page, where 0xE9 is "é". The rule is as long as all that comes before it in
// the record, line ends counted.
std::string LogRecord(const std::string& duration, std::size_t asterisks) {
    return "\r\nTermin\xE9 le : <date> - <time>\r\n*** Dur\xE9"
           "e de conversion (hh:mm:ss) : " +
           duration + "\r\n" + std::string(asterisks, '*') + "\r\n\r\n";
}

TEST_F(Batch, LogsTheConvertersOutputWithARecordForEachFileUpToTheFailedOne) {
    constexpr UINT kWestern = 1252;
    if (::GetACP() != kWestern) GTEST_SKIP() << "the bytes are written down for the Western code page";
    StartHiddenBatch({installed.MakePdf(L"a.pdf"), installed.MakePdf(L"b wait1100.pdf"),
                      installed.MakePdf(L"c exit2.pdf"), installed.MakePdf(L"d.pdf")});
    ASSERT_TRUE(BecomesIdle()) << "a failed batch has no message";
    const auto durations = Durations();
    EXPECT_THAT(durations,
                ElementsAre(StartsWith(L"00:00:0"), testing::Ge(L"00:00:01"), L"*** Annulé !", L""));
    const std::regex time(" : ([0-9]{2}/[0-9]{2}, [0-9]{4}|[0-9]{4}/[0-9]{2}, [0-9]{2}) - [0-9:]{8}\r");
    const std::string output = "stand-in converter: converting\r\n";
    EXPECT_EQ(std::regex_replace(driver::ReadFileBytes(installed.Log()), time, " : <date> - <time>\r"),
              output + LogRecord(driver::ToUtf8(durations[0]), 86) + output +
                  LogRecord(driver::ToUtf8(durations[1]), 86) + output + LogRecord("*** Annul\xE9 !", 90));
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
