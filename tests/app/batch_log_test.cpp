// The log of a batch, byte by byte.
#include "tests/app/app_fixture.h"

#include <regex>

#include "tests/equipment/file_bytes.h"
#include "tests/equipment/text.h"

namespace {

struct LogRecord {
    std::string before;  // what the converter wrote
    std::string duration;
    std::size_t asterisks = 0;
};

// Takes the log apart; what is no record stays in `rest`. In bytes of the Western code page, 0xE9 is "é".
std::vector<LogRecord> ReadLog(const std::string& bytes, std::string& rest) {
    static const std::regex kRecord(
        "\r\n"
        "Termin\xE9 le : (?:[0-9]{2}/[0-9]{2}, [0-9]{4}|[0-9]{4}/[0-9]{2}, [0-9]{2})"
        " - [0-9]{2}:[0-9]{2}:[0-9]{2}\r\n"
        "\\*\\*\\* Dur\xE9"
        "e de conversion \\(hh:mm:ss\\) : (.*)\r\n"
        "(\\*+)\r\n"
        "\r\n");
    std::vector<LogRecord> records;
    rest = bytes;
    for (std::smatch match; std::regex_search(rest, match, kRecord);) {
        records.push_back({match.prefix(), match[1], static_cast<std::size_t>(match[2].length())});
        rest = match.suffix();
    }
    return records;
}

class BatchLog : public AppTest {
protected:
    void SetUp() override {
        constexpr UINT kWestern = 1252;
        if (::GetACP() != kWestern) GTEST_SKIP() << "the bytes are written down for the Western code page";
    }

    // Converts in hidden mode and waits for the window to be idle, message or not.
    void ConvertHidden(const std::vector<std::wstring>& paths) {
        Start();
        AddForConversion(paths);
        Window().Tick(id::kHideOutput);
        Window().StartBatch();
        HWND box = nullptr;
        ASSERT_TRUE(Comes([&] { return !Window().IsRunning() || (box = Window().OpenBox()) != nullptr; }));
        if (box) Window().CloseCompletion(box);
    }

    // What tells a record that was never written from a converter that the system did not start.
    [[nodiscard]] std::string Course() const {
        std::string course;
        for (const std::wstring& duration : Durations()) course += "row: " + driver::ToUtf8(duration) + "\n";
        for (const RecordedRun& run : Runs()) course += "run: " + driver::ToUtf8(run.command) + "\n";
        return course + "log: " + driver::ReadFileBytes(installed.Log());
    }
};

constexpr char kConverterOutput[] = "stand-in converter: converting\r\n";
// As long as all that comes before, line ends counted: 2 + (13 + 22 + 2) + (37 + 8 + 2), or 12 for the 8.
constexpr std::size_t kAsterisksUnderADuration = 86;
constexpr std::size_t kAsterisksUnderACancellation = 90;

TEST_F(BatchLog, HasTheConvertersOutputAndARecordForEachFile) {
    ConvertHidden(
        {installed.MakePdf(L"a.pdf"), installed.MakePdf(L"b wait1100.pdf"), installed.MakePdf(L"c.pdf")});
    std::string rest;
    const auto records = ReadLog(driver::ReadFileBytes(installed.Log()), rest);
    ASSERT_EQ(records.size(), 3u) << Course();
    EXPECT_EQ(rest, "");
    for (const LogRecord& record : records) {
        EXPECT_EQ(record.before, kConverterOutput);
        EXPECT_EQ(record.asterisks, kAsterisksUnderADuration);
        EXPECT_EQ(record.duration.size(), 8u);
    }
    EXPECT_GE(records[1].duration, "00:00:01");
    // The list and the log tell the same.
    for (std::size_t i = 0; i < records.size(); ++i)
        EXPECT_EQ(driver::FromUtf8(records[i].duration), Durations()[i]) << i;
}

TEST_F(BatchLog, EndsWithACancellationAfterAFailedFile) {
    ConvertHidden(
        {installed.MakePdf(L"a.pdf"), installed.MakePdf(L"b exit1.pdf"), installed.MakePdf(L"c.pdf")});
    std::string rest;
    const auto records = ReadLog(driver::ReadFileBytes(installed.Log()), rest);
    ASSERT_EQ(records.size(), 2u) << Course();
    EXPECT_EQ(rest, "");
    EXPECT_EQ(records[0].asterisks, kAsterisksUnderADuration);
    EXPECT_EQ(records[1].duration, "*** Annul\xE9 !");
    EXPECT_EQ(records[1].asterisks, kAsterisksUnderACancellation);
}

}  // namespace
