// What a batch shows from its first file to its last: rows, durations, the status line, the message at its
// end.
#include "tests/window/batch_fixture.h"

#include <tuple>

namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

using BatchCourseTest = BatchFixture;

TEST_F(BatchCourseTest, ThreeGoodFilesGetTheirDurationsAndTheMessage) {
    Convert(3, {{.durationMs = 1'000}, {.durationMs = 62'000}, {.durationMs = 3'723'000}});
    EXPECT_THAT(Column(1), ElementsAre(L"00:00:01", L"00:01:02", L"01:02:03"));
    EXPECT_THAT(calls.Calls(), ElementsAre(MessageBoxCall("Conversion terminée !", "0x40")));
    ExpectIdle();
}

TEST_F(BatchCourseTest, EachFileIsTheSelectedRowAndInTheStatusLineWhileItConverts) {
    AddFiles({L"C:\\in\\a.pdf", L"D:\\Été\\b c.pdf", L"C:\\in\\c.pdf"});
    SelectRow(2);
    std::vector<std::tuple<int, int, int, std::wstring>> seen;
    const auto look = [&] {
        const LRESULT focused = SendList(LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_FOCUSED);
        seen.emplace_back(SelectedRow(), SendList(LVM_GETSELECTEDCOUNT), focused, Text(IDC_STATUS));
    };
    for (int file = 1; file <= 3; ++file) worker.At("CreateProcessW", file, look);
    RunBatch();
    EXPECT_THAT(seen, ElementsAre(std::tuple(0, 1, 0, L"Conversion en cours : C:\\in\\a.pdf"),
                                  std::tuple(1, 1, 1, L"Conversion en cours : D:\\Été\\b c.pdf"),
                                  std::tuple(2, 1, 2, L"Conversion en cours : C:\\in\\c.pdf")));
}

TEST_F(BatchCourseTest, TheWindowIsInItsRunningStateFromTheStartToTheMessage) {
    std::vector<std::tuple<bool, bool, std::wstring>> seen;
    const auto look = [&] { seen.emplace_back(dialog->IsRunning(), IsEnabled(IDOK), Text(IDCANCEL)); };
    for (const char* const call : {"DeleteFileW", "WaitForSingleObject process 1", "MessageBoxW"}) {
        worker.At(call, 1, look);
    }
    Convert(1);
    EXPECT_THAT(seen, SizeIs(3));
    EXPECT_THAT(seen, Each(std::tuple(true, false, L"Arrêter ")));
}

TEST_F(BatchCourseTest, AFailedFileEndsTheBatchWithoutAMessage) {
    Convert(3, {{.durationMs = 5'000}, {.exitCode = 1, .durationMs = 5'000}});
    EXPECT_THAT(Column(1), ElementsAre(L"00:00:05", L"*** Annulé !", L""));
    EXPECT_THAT(converters.Starts(), SizeIs(2));
    EXPECT_EQ(worker.Count("KillTimer main 2"), 2);
    EXPECT_THAT(calls.Calls(), IsEmpty());
    ExpectIdle();
}

TEST_F(BatchCourseTest, TheRowCountIsAskedAgainAfterEachFile) {
    worker.At("WaitForSingleObject process 2", 1, [&] { Drop({L"C:\\in\\c.pdf"}); });
    Convert(2);
    EXPECT_THAT(converters.Starts(), SizeIs(3));
    EXPECT_THAT(Column(1), ElementsAre(L"00:00:00", L"00:00:00", L"00:00:00"));
}

TEST_F(BatchCourseTest, OnlyAnExitCodeOfZeroIsSuccess) {
    constexpr DWORD kCommandNotFound = 9009;
    for (const DWORD exitCode :
         {DWORD{1}, DWORD{STILL_ACTIVE}, kCommandNotFound, DWORD{STATUS_ACCESS_VIOLATION},
          DWORD{STATUS_CONTROL_C_EXIT}, 0xFFFFFFFFul}) {
        Convert(2, {{.exitCode = exitCode}});
        EXPECT_THAT(Column(1), ElementsAre(L"*** Annulé !", L"")) << exitCode;
    }
    EXPECT_THAT(calls.Calls(), IsEmpty());
}

}  // namespace
