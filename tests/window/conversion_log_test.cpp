// The log of a batch with hidden consoles: where it is, its bytes, the calls that write it, and that no
// failure is reported.
#include "tests/window/batch_fixture.h"

#include <cstring>
#include <fstream>
#include <iterator>
#include <optional>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

// The calls with which a record gets into the log answer or fail as the test says. The file itself is real.
// Records, of workers:
//   GetLocaleInfoW 1024 536870945 2     (locale, type, size)
//   GetLocalTime
//   CreateFileW "C:\...\TalvenorLog.txt" 1073741824 0 4 0     (access, share, disposition, flags)
//   SetFilePointer log 0 2              (distance, method)
//   WideCharToMultiByte 0 0             (code page, flags; not of UTF-8)
//   WriteFile log 176                   (bytes)
// An argument that is to be null and is not adds " and more".
class ConversionLogTest : public BatchFixture {
protected:
    ConversionLogTest() { Check(IDC_HIDE_OUTPUT); }

    [[nodiscard]] std::string LogBytes() const {
        std::ifstream file(std::filesystem::path(LogFile()), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    std::optional<DWORD> ordering = 1;  // of the user's short dates; nothing: the call fails
    bool opens = true;
    bool seeks = true;
    bool writes = true;

private:
    // Writes a call down. Whether it is a worker's.
    template <class... Arguments>
    bool Note(const char* name, const void* toBeNull, const Arguments&... arguments) {
        return worker.Note(CallText(name, arguments...) + (toBeNull ? " and more" : ""));
    }

    Replaced m_localeInfo = REPLACE_IMPORT(
        GetLocaleInfoW, [this](auto original, LCID locale, LCTYPE type, LPWSTR data, int size) {
            if (!Note("GetLocaleInfoW", nullptr, locale, type, size)) {
                return original(locale, type, data, size);
            }
            if (ordering) std::memcpy(data, &*ordering, sizeof *ordering);
            return ordering ? 2 : 0;
        });
    Replaced m_localTime = REPLACE_IMPORT(GetLocalTime, [this](auto original, LPSYSTEMTIME now) {
        original(now);
        constexpr SYSTEMTIME kMondayAfternoon = {2026, 11, 1, 16, 14, 5, 9, 999};
        if (Note("GetLocalTime", nullptr)) *now = kMondayAfternoon;
    });
    Replaced m_open = REPLACE_IMPORT(
        CreateFileW, [this](auto original, LPCWSTR path, DWORD access, DWORD share,
                            LPSECURITY_ATTRIBUTES security, DWORD disposition, DWORD flags, HANDLE pattern) {
            const bool onWorker =
                Note("CreateFileW", security ? security : pattern, path, access, share, disposition, flags);
            if (onWorker && !opens) return INVALID_HANDLE_VALUE;
            const HANDLE file = original(path, access, share, security, disposition, flags, pattern);
            if (onWorker && file != INVALID_HANDLE_VALUE) worker.NameHandle(file, "log");
            return file;
        });
    Replaced m_seek = REPLACE_IMPORT(
        SetFilePointer, [this](auto original, HANDLE file, LONG distance, PLONG high, DWORD method) {
            const bool onWorker = Note("SetFilePointer", high, worker.HandleName(file), distance, method);
            return onWorker && !seeks ? INVALID_SET_FILE_POINTER : original(file, distance, high, method);
        });
    Replaced m_convert = REPLACE_IMPORT(
        WideCharToMultiByte, [this](auto original, UINT codePage, DWORD flags, LPCWCH text, int length,
                                    LPSTR bytes, int size, LPCCH defaultCharacter, LPBOOL usedDefault) {
            const void* const extra =
                defaultCharacter ? static_cast<const void*>(defaultCharacter) : usedDefault;
            if (codePage != CP_UTF8) Note("WideCharToMultiByte", extra, codePage, flags);
            return original(codePage, flags, text, length, bytes, size, defaultCharacter, usedDefault);
        });
    Replaced m_write =
        REPLACE_IMPORT(WriteFile, [this](auto original, HANDLE file, LPCVOID bytes, DWORD count,
                                         LPDWORD written, LPOVERLAPPED overlapped) {
            const bool onWorker = Note("WriteFile", overlapped, worker.HandleName(file), count);
            if (!onWorker || writes) return original(file, bytes, count, written, overlapped);
            *written = 0;
            return FALSE;
        });
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

TEST_F(ConversionLogBytesTest, AFailedOrStoppedFileIsMarkedAsCancelledAndTheRestHasNoRecord) {
    Convert(3, {{.durationMs = 360'000'000}, {.exitCode = 1, .durationMs = 83'000}});
    EXPECT_EQ(LogBytes(), Record("100:00:00") + Record("*** Annul\xE9 !"));
    StopAt("WaitForSingleObject process 4");
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
    ordering = 0;
    Convert(1);
    EXPECT_THAT(LogBytes(), HasSubstr("le : 11/16, 2026 - 14:05:09\r\n"));
    ordering = 3;  // there is none: the label comes a second time
    RunBatch();
    EXPECT_THAT(LogBytes(), HasSubstr("Termin\xE9 le : Termin\xE9 le : \r\n"));
    ordering.reset();
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
        calls.Clear();
    }
    [[nodiscard]] std::uintmax_t LogSize() const { return std::filesystem::file_size(LogFile()); }

    // Two of its letters have accents: a byte each in most code pages, two in UTF-8, which a Windows may
    // have.
    [[nodiscard]] static std::size_t RecordBytes() { return ::GetACP() == CP_UTF8 ? 178 : 176; }
    [[nodiscard]] static std::string WriteOfARecord() { return CallText("WriteFile log", RecordBytes()); }
};

TEST_F(ConversionLogFileTest, EachRecordIsOpenedSoughtWrittenOnceAndClosed) {
    Convert(2);
    const std::vector<std::string> steps = {
        "KillTimer main 2",
        "IsDlgButtonChecked 1019",
        "GetLocaleInfoW 1024 536870945 2",  // the user's, IDATE as a number
        "GetLocalTime",
        CallText("CreateFileW", LogFile().c_str()) + " 1073741824 0 4 0",
        "SetFilePointer log 0 2",
        WriteOfARecord(),
        "CloseHandle log",
        "LVM_GETNEXTITEM 1040 -1 2",
    };
    std::vector<std::string> taken = worker.Between("KillTimer", "LVM_GETNEXTITEM");
    // Into the ANSI code page, without flags and default character. How often is the converter's business.
    EXPECT_GE(std::erase(taken, "WideCharToMultiByte 0 0"), 1u);
    EXPECT_EQ(taken, steps);
    EXPECT_EQ(worker.Count("WriteFile"), 2);
    EXPECT_EQ(worker.Count("CloseHandle log"), 2);
}

TEST_F(ConversionLogFileTest, ALogThatCannotBeOpenedLosesTheRecordSilently) {
    opens = false;
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

TEST_F(ConversionLogFileTest, AfterAFailedSeekOrWriteTheFileIsClosedAllTheSame) {
    seeks = false;
    RunWholeBatch();
    EXPECT_EQ(worker.Count(WriteOfARecord()), 2);
    EXPECT_EQ(LogSize(), RecordBytes()) << "the second is written where the pointer is: over the first";
    EXPECT_EQ(worker.Count("CloseHandle log"), 2);
    seeks = true;
    writes = false;
    RunWholeBatch();
    EXPECT_EQ(worker.Count(WriteOfARecord()), 4);
    EXPECT_EQ(LogSize(), 0u);
    EXPECT_EQ(worker.Count("CloseHandle log"), 4);
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
