// The log of a batch with hidden consoles: where it is, its bytes, the calls that write it, and that no
// failure is reported.
#include "tests/window/batch_fixture.h"
#include "tests/window/scripted_log_calls.h"

#include <fstream>
#include <iterator>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class ConversionLogTest : public BatchFixture {
protected:
    ConversionLogTest() { Check(IDC_HIDE_OUTPUT); }

    [[nodiscard]] std::string LogBytes() const {
        std::ifstream file(std::filesystem::path(LogFile()), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    ScriptedLogCalls log{worker};
};

// The ANSI code page is Windows-1252 in these tests: "é" is the byte E9.
class ConversionLogBytesTest : public ConversionLogTest {
protected:
    void SetUp() override {
        if (::GetACP() != 1252) GTEST_SKIP() << "the bytes are those of code page 1252, not " << ::GetACP();
    }
    // A record with this duration.
    static std::string Record(const std::string& duration) {
        const std::string text =
            "\r\nTermin\xE9 le : 16/11, 2026 - 14:05:09\r\n*** Dur\xE9"
            "e de conversion (hh:mm:ss) : " +
            duration + "\r\n";
        return text + std::string(text.size(), '*') + "\r\n\r\n";
    }
};

TEST_F(ConversionLogBytesTest, AFailedFileIsMarkedAsCancelledAndTheRestHasNoRecord) {
    Convert(3, {{.durationMs = 360'000'000}, {.exitCode = 1, .durationMs = 83'000}});
    EXPECT_EQ(LogBytes(), Record("100:00:00") + Record("*** Annul\xE9 !"));
}

TEST_F(ConversionLogBytesTest, AStoppedFileIsMarkedAsCancelledAndTheRestHasNoRecord) {
    StopAt("WaitForSingleObject process 2");
    Convert(3, {{.durationMs = 1'000}, {.durationMs = 1'000}});
    EXPECT_EQ(LogBytes(), Record("00:00:01") + Record("*** Annul\xE9 !"));
}

TEST_F(ConversionLogBytesTest, AFileThatCannotBeStartedHasTheTimeUpToTheEndOfItsMessage) {
    worker.At("MessageBoxW Erreur CreateProcess", 1, [&] { converters.tick += 7'000; });
    Convert(1, {{.startError = ERROR_FILE_NOT_FOUND}});
    EXPECT_EQ(LogBytes(), Record("00:00:07"));
}

TEST_F(ConversionLogBytesTest, TheConvertersOwnOutputIsBeforeEachRecordAndNothingOfAnEarlierBatch) {
    WriteLog("of an earlier batch");
    worker.At("WaitForSingleObject process 1", 1, [&] { WriteLog("page 1\r\npage 2\r\n"); });
    worker.At("WaitForSingleObject process 2", 1, [&] { WriteLog("\xC3\xA9 as it came\r\n"); });
    Convert(2, {{.durationMs = 1'000}, {.durationMs = 2'000}});
    EXPECT_EQ(LogBytes(),
              "page 1\r\npage 2\r\n" + Record("00:00:01") + "\xC3\xA9 as it came\r\n" + Record("00:00:02"));
}

TEST_F(ConversionLogBytesTest, TheTimeFollowsTheUsersShortDateOrHasTheYearFirst) {
    log.ordering = 0;
    Convert(1);
    EXPECT_THAT(LogBytes(), HasSubstr("le : 11/16, 2026 - 14:05:09\r\n"));
    log.ordering = 3;  // there is none: the label comes a second time
    RunBatch();
    EXPECT_THAT(LogBytes(), HasSubstr("Termin\xE9 le : Termin\xE9 le : \r\n"));
    log.ordering.reset();
    RunBatch();
    EXPECT_THAT(LogBytes(), HasSubstr("le : 2026/11, 16 - 14:05:09\r\n"));
}

class ConversionLogFileTest : public ConversionLogTest {
protected:
    // A batch, which takes no notice of its log.
    void RunWholeBatch() {
        Convert(2);
        EXPECT_THAT(Column(1), ElementsAre(L"00:00:00", L"00:00:00"));
        EXPECT_THAT(MessageTexts(), ElementsAre("Conversion terminée !"));
        EXPECT_TRUE(IsEnabled(IDC_OPEN_LOG));
    }
    [[nodiscard]] std::uintmax_t LogSize() const { return std::filesystem::file_size(LogFile()); }

    // Two of its letters have accents: a byte each in most code pages, two in UTF-8, which a Windows may
    // have.
    [[nodiscard]] static std::size_t RecordBytes() { return ::GetACP() == CP_UTF8 ? 178 : 176; }
    [[nodiscard]] static std::string WriteOfARecord() {
        return "WriteFile log " + std::to_string(RecordBytes()) + " bytes";
    }
};

TEST_F(ConversionLogFileTest, EachRecordIsOpenedSoughtWrittenOnceAndClosed) {
    Convert(2);
    const std::vector<std::string> steps = {
        "KillTimer main 2",
        "IsDlgButtonChecked 1019",
        "GetLocaleInfoW locale=1024 type=536870945 size=2",  // the user's, IDATE as a number
        "GetLocalTime",
        "CreateFileW " + Utf8(LogFile()) + " access=1073741824 share=0 disposition=4 flags=0",
        "SetFilePointer log 0 method=2",
        WriteOfARecord(),
        "CloseHandle log",
        "LVM_GETNEXTITEM 1040 -1 2",
    };
    std::vector<std::string> taken = worker.Between("KillTimer", "LVM_GETNEXTITEM");
    // Into the ANSI code page, without flags and default character. How often is the converter's business.
    EXPECT_GE(std::erase(taken, "WideCharToMultiByte page=0 flags=0"), 1u);
    EXPECT_EQ(taken, steps);
    EXPECT_EQ(worker.Count("WriteFile"), 2);
    EXPECT_EQ(worker.Count("CloseHandle log"), 2);
}

TEST_F(ConversionLogFileTest, ALogThatCannotBeOpenedLosesTheRecordSilently) {
    log.opens = false;
    RunWholeBatch();
    EXPECT_FALSE(LogExists());
    EXPECT_EQ(worker.Count("CreateFileW"), 2);
    EXPECT_THAT(worker.Of({"SetFilePointer", "WriteFile", "CloseHandle log"}), IsEmpty());
}

TEST_F(ConversionLogFileTest, ALogThatAnotherProgramHoldsLosesTheRecordSilently) {
    HANDLE holder = nullptr;
    worker.At("WaitForSingleObject process 1", 1, [&] {
        holder = ::CreateFileW(LogFile().c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    });
    worker.At("WaitForSingleObject process 2", 1, [&] { ::CloseHandle(holder); });
    RunWholeBatch();
    EXPECT_EQ(LogSize(), RecordBytes());  // of the second file
}

TEST_F(ConversionLogFileTest, AFailedSeekWritesWhereThePointerIs) {
    log.seeks = false;
    RunWholeBatch();
    EXPECT_EQ(worker.Count(WriteOfARecord()), 2);
    EXPECT_EQ(LogSize(), RecordBytes());  // the second over the first
    EXPECT_EQ(worker.Count("CloseHandle log"), 2);
}

TEST_F(ConversionLogFileTest, AFailedWriteIsIgnoredAndTheFileClosed) {
    log.writes = false;
    RunWholeBatch();
    EXPECT_EQ(worker.Count("WriteFile"), 2);
    EXPECT_EQ(LogSize(), 0u);
    EXPECT_EQ(worker.Count("CloseHandle log"), 2);
}

TEST_F(ConversionLogFileTest, IsInTheFolderThatTheProgramHasThenAndNotInTheCurrentOne) {
    const TemporaryFolder elsewhere, programFolder;
    const CurrentFolder current(elsewhere.Path());
    programPath = programFolder.File(L"Mon Talvenor.v2.exe");
    RunWholeBatch();
    EXPECT_TRUE(std::filesystem::exists(programFolder.File(L"TalvenorLog.txt")));
    EXPECT_FALSE(std::filesystem::exists(elsewhere.File(L"TalvenorLog.txt")));
}

}  // namespace
