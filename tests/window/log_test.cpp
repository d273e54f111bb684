// The log of a batch with hidden consoles, byte by byte.
#include "tests/window/batch_fixture.h"
#include "tests/window/scripted_log_calls.h"

#include <fstream>
#include <iterator>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// The ANSI code page is Windows-1252 in these tests: "é" is the byte E9.
class LogTest : public BatchFixture {
protected:
    LogTest() { SetChecked(IDC_HIDE_OUTPUT, true); }

    void SetUp() override {
        if (::GetACP() != 1252) GTEST_SKIP() << "the bytes are those of code page 1252, not " << ::GetACP();
    }

    [[nodiscard]] std::string LogBytes() const {
        std::ifstream file(std::filesystem::path(LogFile()), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    void Convert(std::vector<Conversion> plan) {
        std::vector<std::wstring> files;
        for (std::size_t i = 0; i < plan.size(); ++i)
            files.push_back(L"C:\\in\\" + std::to_wstring(i) + L".pdf");
        AddFiles(files);
        converters.Plan(std::move(plan));
        RunBatch();
    }

    ScriptedLogCalls log{worker};
};

TEST_F(LogTest, ARecordHasTheTimeOfItsEndAndTheDuration) {
    Convert({{.durationMs = 83'000}});
    EXPECT_EQ(LogBytes(),
              "\r\n"
              "Termin\xE9 le : 16/11, 2026 - 14:05:09\r\n"
              "*** Dur\xE9"
              "e de conversion (hh:mm:ss) : 00:01:23\r\n"
              "**************************************************************************************\r\n"
              "\r\n");
}

TEST_F(LogTest, TheRuleIsAsLongAsAllTheTextBeforeIt) {
    Convert({{.durationMs = 360'000'000}});
    const std::string bytes = LogBytes();
    const std::string rule(87, '*');  // one more than for two digits of hours
    EXPECT_TRUE(bytes.ends_with(" : 100:00:00\r\n" + rule + "\r\n\r\n"));
    EXPECT_EQ(bytes.size(), 87u + 87u + 4u);
}

TEST_F(LogTest, AFailedFileIsMarkedAsCancelled) {
    Convert({{.exitCode = 1, .durationMs = 83'000}, {}});
    EXPECT_EQ(LogBytes(),
              "\r\nTermin\xE9 le : 16/11, 2026 - 14:05:09\r\n*** Dur\xE9"
              "e de conversion (hh:mm:ss) : *** Annul\xE9 !\r\n" +
                  std::string(90, '*') + "\r\n\r\n");
}

TEST_F(LogTest, AStoppedFileIsMarkedAsCancelledAndTheRestHasNoRecord) {
    worker.At("WaitForSingleObject process 2", 1, [&] { PressStop(); });
    Convert({{.durationMs = 1'000}, {.durationMs = 1'000}, {}});
    const std::string bytes = LogBytes();
    EXPECT_EQ(bytes.size(), 176u + 184u);
    EXPECT_NE(bytes.find(" : 00:00:01\r\n"), std::string::npos);
    EXPECT_NE(bytes.find(" : *** Annul\xE9 !\r\n", 176), std::string::npos);
}

TEST_F(LogTest, AFileThatCannotBeStartedHasTheTimeUpToTheEndOfItsMessage) {
    worker.At("MessageBoxW Erreur CreateProcess", 1, [&] { converters.tick += 7'000; });
    Convert({{.startError = ERROR_FILE_NOT_FOUND}});
    EXPECT_NE(LogBytes().find(" : 00:00:07\r\n"), std::string::npos);
}

TEST_F(LogTest, TheConvertersOwnOutputStandsBeforeEachRecord) {
    worker.At("WaitForSingleObject process 1", 1, [&] { WriteLog("page 1\r\npage 2\r\n"); });
    worker.At("WaitForSingleObject process 2", 1, [&] { WriteLog("\xC3\xA9 as it came\r\n"); });
    Convert({{.durationMs = 1'000}, {.durationMs = 2'000}});
    const std::string label =
        "\r\nTermin\xE9 le : 16/11, 2026 - 14:05:09\r\n*** Dur\xE9"
        "e de conversion (hh:mm:ss) : ";
    const std::string rule = "\r\n" + std::string(86, '*') + "\r\n\r\n";
    EXPECT_EQ(LogBytes(), "page 1\r\npage 2\r\n" + label + "00:00:01" + rule + "\xC3\xA9 as it came\r\n" +
                              label + "00:00:02" + rule);
}

TEST_F(LogTest, NothingOfAnEarlierBatchIsLeft) {
    WriteLog("of an earlier batch");
    Convert({{.durationMs = 1'000}});
    EXPECT_EQ(LogBytes().size(), 176u);
}

TEST_F(LogTest, AVisibleBatchWritesNoLog) {
    SetChecked(IDC_HIDE_OUTPUT, false);
    Convert({{}, {}});
    EXPECT_FALSE(LogExists());
    EXPECT_EQ(worker.Count("CreateFileW"), 0);
}

struct TimeCase {
    const char* name;
    std::optional<DWORD> ordering;
    SYSTEMTIME time;
    const char* text;
};
class LogTimeTest : public LogTest, public testing::WithParamInterface<TimeCase> {};

TEST_P(LogTimeTest, FollowsTheUsersShortDate) {
    log.ordering = GetParam().ordering;
    log.time = GetParam().time;
    Convert({{}});
    const std::string bytes = LogBytes();
    EXPECT_EQ(bytes.substr(0, bytes.find("\r\n", 2)), std::string("\r\nTermin\xE9 le : ") + GetParam().text);
}

constexpr SYSTEMTIME At(WORD year, WORD month, WORD day, WORD hour, WORD minute, WORD second) {
    return {year, month, 0, day, hour, minute, second, 0};
}

INSTANTIATE_TEST_SUITE_P(
    All, LogTimeTest,
    testing::Values(TimeCase{"MonthFirst", 0, At(2026, 11, 16, 14, 5, 9), "11/16, 2026 - 14:05:09"},
                    TimeCase{"DayFirst", 1, At(2026, 11, 16, 14, 5, 9), "16/11, 2026 - 14:05:09"},
                    TimeCase{"YearFirst", 2, At(2026, 11, 16, 9, 3, 7), "2026/11, 16 - 09:03:07"},
                    TimeCase{"UnknownToTheSystem", {}, At(2026, 11, 16, 14, 5, 9), "2026/11, 16 - 14:05:09"},
                    TimeCase{"NoOrdering", 3, At(2026, 11, 16, 14, 5, 9), "Termin\xE9 le : "},
                    TimeCase{"HugeOrdering", 0xFFFFFFFF, At(2026, 11, 16, 14, 5, 9), "Termin\xE9 le : "},
                    TimeCase{"LeadingZeros", 1, At(2026, 1, 2, 3, 4, 5), "02/01, 2026 - 03:04:05"},
                    TimeCase{"Midnight", 0, At(2027, 12, 31, 0, 0, 0), "12/31, 2027 - 00:00:00"}),
    [](const auto& row) { return std::string(row.param.name); });

}  // namespace
