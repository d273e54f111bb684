// How a record is written: where the log lies, the calls and their arguments, and that no failure is told.
#include "tests/window/batch_fixture.h"
#include "tests/window/scripted_log_calls.h"

#include <shlwapi.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class LogFileTest : public BatchFixture {
protected:
    LogFileTest() {
        SetChecked(IDC_HIDE_OUTPUT, true);
        AddFiles({L"C:\\in\\a.pdf", L"C:\\in\\b.pdf"});
    }

    // The batch takes no notice of its log.
    void ExpectWholeBatch() {
        EXPECT_THAT(Column(1), ElementsAre(L"00:00:00", L"00:00:00"));
        EXPECT_THAT(Boxes(), ElementsAre("Conversion terminée !"));
        EXPECT_TRUE(IsEnabled(IDC_OPEN_LOG));
    }
    [[nodiscard]] std::uintmax_t LogSize() const { return std::filesystem::file_size(LogFile()); }
    // The path that the log was deleted at.
    [[nodiscard]] std::string DeletedPath() const {
        const std::vector<std::string> deleted = worker.Of({"DeleteFileW "});
        return deleted.size() == 1 ? deleted[0].substr(12) : "";
    }

    // Two of its letters have accents: a byte each in most code pages, two in UTF-8, which a Windows may
    // have.
    [[nodiscard]] static std::size_t RecordBytes() { return ::GetACP() == CP_UTF8 ? 178 : 176; }
    [[nodiscard]] static std::string WriteOfARecord() {
        return "WriteFile log " + std::to_string(RecordBytes()) + " bytes";
    }

    ScriptedLogCalls log{worker};
};

TEST_F(LogFileTest, EachRecordIsOpenedSoughtWrittenOnceAndClosed) {
    RunBatch();
    const std::vector<std::string> steps = {
        "KillTimer main 2",
        "IsDlgButtonChecked 1019",
        "GetLocaleInfoW locale=0x400 type=0x20000021 size=2",
        "GetLocalTime",
        "CreateFileW " + Utf8(LogFile()) +
            " access=0x40000000 share=0 security=none disposition=4 flags=0 template=none",
        "SetFilePointer log 0 high=none method=2",
        WriteOfARecord(),
        "CloseHandle log",
        "LVM_GETNEXTITEM -1 flags=2",
    };
    std::vector<std::string> taken = worker.Between("KillTimer", "LVM_GETNEXTITEM");
    // Into the ANSI code page, without flags and default character. How often is the converter's business.
    EXPECT_GE(std::erase(taken, "WideCharToMultiByte page=0 flags=0 default=none used=none"), 1u);
    EXPECT_EQ(taken, steps);
    EXPECT_EQ(worker.Count("WriteFile"), 2);
    EXPECT_EQ(worker.Count("CloseHandle log"), 2);
}

TEST_F(LogFileTest, ALogThatCannotBeOpenedLosesTheRecordSilently) {
    log.opens = false;
    RunBatch();
    ExpectWholeBatch();
    EXPECT_FALSE(LogExists());
    EXPECT_EQ(worker.Count("CreateFileW"), 2);
    EXPECT_THAT(worker.Of({"SetFilePointer", "WriteFile", "CloseHandle log"}), IsEmpty());
}

TEST_F(LogFileTest, ALogThatAnotherProgramHoldsLosesTheRecordSilently) {
    HANDLE holder = nullptr;
    worker.At("WaitForSingleObject process 1", 1, [&] {
        holder = ::CreateFileW(LogFile().c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    });
    worker.At("WaitForSingleObject process 2", 1, [&] { ::CloseHandle(holder); });
    RunBatch();
    ExpectWholeBatch();
    EXPECT_EQ(LogSize(), RecordBytes());  // of the second file
}

TEST_F(LogFileTest, AFailedSeekWritesWhereThePointerStands) {
    log.seeks = false;
    RunBatch();
    ExpectWholeBatch();
    EXPECT_EQ(worker.Count(WriteOfARecord()), 2);
    EXPECT_EQ(LogSize(), RecordBytes());  // the second over the first
    EXPECT_EQ(worker.Count("CloseHandle log"), 2);
}

TEST_F(LogFileTest, AFailedWriteIsIgnoredAndTheFileClosed) {
    log.writes = false;
    RunBatch();
    ExpectWholeBatch();
    EXPECT_EQ(worker.Count("WriteFile"), 2);
    EXPECT_EQ(LogSize(), 0u);
    EXPECT_EQ(worker.Count("CloseHandle log"), 2);
}

TEST_F(LogFileTest, LiesBesideTheProgramAndNotInTheCurrentFolder) {
    wchar_t previous[MAX_PATH];
    ::GetCurrentDirectoryW(MAX_PATH, previous);
    std::filesystem::create_directory(folder.Path() / "ailleurs");
    ::SetCurrentDirectoryW(folder.File(L"ailleurs").c_str());
    RunBatch();
    ::SetCurrentDirectoryW(previous);
    EXPECT_TRUE(LogExists());
    EXPECT_FALSE(std::filesystem::exists(folder.Path() / "ailleurs" / "TalvenorLog.txt"));
}

TEST_F(LogFileTest, LiesBesideAProgramOfAnotherName) {
    programPath = folder.File(L"Mon Talvenor.v2.exe");
    RunBatch();
    EXPECT_TRUE(LogExists());
}

TEST_F(LogFileTest, LiesBesideAProgramWhoseNameIsCutAt260Characters) {
    programPath = folder.File(std::wstring(300, L'x').c_str()) + L".exe";
    RunBatch();
    EXPECT_TRUE(LogExists());
}

TEST_F(LogFileTest, LiesWhereACutProgramFolderPoints) {
    log.opens = false;
    programPath = L"Q:\\" + std::wstring(100, L'a') + L"\\" + std::wstring(200, L'b') + L"\\Talvenor.exe";
    RunBatch();
    EXPECT_EQ(DeletedPath(), "Q:\\" + std::string(100, 'a') + "\\TalvenorLog.txt");
    EXPECT_EQ(worker.Count("CreateFileW Q:\\" + std::string(100, 'a') + "\\TalvenorLog.txt access"), 2);
    ASSERT_THAT(converters.Starts(), SizeIs(2));
    EXPECT_EQ(converters.Starts()[0].folder, L"Q:\\" + std::wstring(100, L'a'));
}

TEST_F(LogFileTest, LiesWhereTheSystemPutsItWhenTheProgramFolderLeavesNoRoomForItsName) {
    log.opens = false;
    const std::wstring programFolder = L"Q:\\" + std::wstring(242, L'd');
    programPath = programFolder + L"\\Talvenor.exe";
    wchar_t joined[600] = {};
    ::lstrcpyW(joined, programFolder.c_str());
    ASSERT_FALSE(::PathAppendW(joined, L"TalvenorLog.txt"));
    RunBatch();
    EXPECT_THAT(worker.Of({"DeleteFileW"}), ElementsAre("DeleteFileW " + Utf8(joined)));
    EXPECT_EQ(worker.Count("CreateFileW " + Utf8(joined) + " access"), 2);
    EXPECT_EQ(converters.Starts().at(0).folder, programFolder);
    ExpectWholeBatch();
}

}  // namespace
