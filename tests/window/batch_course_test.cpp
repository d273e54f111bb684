// What a batch shows from its first file to its last: rows, durations, the status line, the message at its
// end.
#include "tests/window/batch_fixture.h"

#include <tuple>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class BatchCourseTest : public BatchFixture {
protected:
    [[nodiscard]] int SelectedCount() const { return static_cast<int>(SendList(LVM_GETSELECTEDCOUNT)); }
    [[nodiscard]] int FocusedRow() const {
        return static_cast<int>(SendList(LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_FOCUSED));
    }
};

TEST_F(BatchCourseTest, ThreeGoodFilesGetTheirDurationsAndTheMessage) {
    AddFiles({L"C:\\in\\a.pdf", L"C:\\in\\b.pdf", L"C:\\in\\c.pdf"});
    converters.Plan({{.durationMs = 1'000}, {.durationMs = 62'000}, {.durationMs = 3'723'000}});
    RunBatch();
    EXPECT_THAT(Column(1), ElementsAre(L"00:00:01", L"00:01:02", L"01:02:03"));
    EXPECT_THAT(calls.Calls(), ElementsAre(MessageBoxCall("Conversion terminée !", "0x40")));
    EXPECT_EQ(SelectedRow(), -1);
    EXPECT_EQ(Text(IDC_STATUS), L"");
    EXPECT_EQ(Text(IDCANCEL), L"Quitter");
    EXPECT_TRUE(IsEnabled(IDOK));
    EXPECT_FALSE(dialog->IsRunning());
}

TEST_F(BatchCourseTest, EachFileIsTheSelectedRowAndInTheStatusLineWhileItConverts) {
    AddFiles({L"C:\\in\\a.pdf", L"D:\\Été\\b c.pdf", L"C:\\in\\c.pdf"});
    SelectRow(2);
    std::vector<std::tuple<int, int, int, std::wstring>> seen;
    for (int file = 1; file <= 3; ++file) {
        worker.At("CreateProcessW", file,
                  [&] { seen.emplace_back(SelectedRow(), SelectedCount(), FocusedRow(), Text(IDC_STATUS)); });
    }
    RunBatch();
    EXPECT_THAT(seen, ElementsAre(std::tuple(0, 1, 0, L"Conversion en cours : C:\\in\\a.pdf"),
                                  std::tuple(1, 1, 1, L"Conversion en cours : D:\\Été\\b c.pdf"),
                                  std::tuple(2, 1, 2, L"Conversion en cours : C:\\in\\c.pdf")));
}

TEST_F(BatchCourseTest, TheWindowIsInItsRunningStateFromTheStartToTheMessage) {
    AddFiles({L"C:\\in\\a.pdf"});
    std::vector<std::tuple<bool, bool, std::wstring>> seen;
    const auto look = [&] { seen.emplace_back(dialog->IsRunning(), IsEnabled(IDOK), Text(IDCANCEL)); };
    worker.At("DeleteFileW", 1, look);
    worker.At("WaitForSingleObject process 1", 1, look);
    worker.At("MessageBoxW", 1, look);
    RunBatch();
    EXPECT_THAT(seen, ElementsAre(std::tuple(true, false, L"Arrêter "), std::tuple(true, false, L"Arrêter "),
                                  std::tuple(true, false, L"Arrêter ")));
}

TEST_F(BatchCourseTest, AFailedFileEndsTheBatchWithoutAMessage) {
    AddFiles({L"C:\\in\\a.pdf", L"C:\\in\\b.pdf", L"C:\\in\\c.pdf"});
    converters.Plan({{.durationMs = 5'000}, {.exitCode = 1, .durationMs = 5'000}});
    RunBatch();
    EXPECT_THAT(Column(1), ElementsAre(L"00:00:05", L"*** Annulé !", L""));
    EXPECT_THAT(converters.Starts(), SizeIs(2));
    EXPECT_THAT(calls.Calls(), IsEmpty());
    EXPECT_EQ(SelectedRow(), -1);
    EXPECT_EQ(Text(IDC_STATUS), L"");
    EXPECT_EQ(Text(IDCANCEL), L"Quitter");
    EXPECT_TRUE(IsEnabled(IDOK));
    EXPECT_FALSE(dialog->IsRunning());
}

TEST_F(BatchCourseTest, TheRowCountIsAskedAgainAfterEachFile) {
    AddFiles({L"C:\\in\\a.pdf", L"C:\\in\\b.pdf"});
    worker.At("WaitForSingleObject process 2", 1, [&] { Drop({L"C:\\in\\c.pdf"}); });
    RunBatch();
    EXPECT_THAT(converters.Starts(), SizeIs(3));
    EXPECT_THAT(Column(1), ElementsAre(L"00:00:00", L"00:00:00", L"00:00:00"));
}

TEST_F(BatchCourseTest, APathOfMoreThan256CharactersIsReadWhole) {
    const std::wstring name(300, L'x');
    // A drop carries 260 characters at most; other programs can fill the list too.
    InsertRow(L"C:\\" + name + L".pdf");
    AddFiles({});
    RunBatch();
    ASSERT_THAT(converters.Starts(), SizeIs(1));
    EXPECT_EQ(converters.Starts()[0].title, name + L".pdf");
    EXPECT_TRUE(converters.Starts()[0].arguments.ends_with(L" \"C:\\" + name + L".pdf\"\""));
}

TEST_F(BatchCourseTest, OnlyAnExitCodeOfZeroIsSuccess) {
    AddFiles({L"C:\\in\\a.pdf", L"C:\\in\\b.pdf"});
    constexpr DWORD kCommandNotFound = 9009;
    for (const DWORD exitCode :
         {DWORD{1}, DWORD{STILL_ACTIVE}, kCommandNotFound, DWORD{STATUS_ACCESS_VIOLATION},
          DWORD{STATUS_CONTROL_C_EXIT}, 0xFFFFFFFFul}) {
        converters.Plan({{.exitCode = exitCode}});
        RunBatch();
        EXPECT_THAT(Column(1), ElementsAre(L"*** Annulé !", L"")) << exitCode;
    }
    EXPECT_THAT(calls.Calls(), IsEmpty());
}

// How a duration is written is a rule of its own.
TEST_F(BatchCourseTest, DurationsAreRightAcrossTheWrapOfTheTicksAndAtTickZero) {
    AddFiles({L"C:\\in\\a.pdf"});
    static constexpr struct {
        DWORD startTick;
        DWORD durationMs;
        const wchar_t* duration;
    } kCases[] = {{0, 3'725'999, L"01:02:05"},
                  {0xFFFFFF00, 0x400, L"00:00:01"},
                  {0xFFFFF060, 4'000, L"00:00:04"},  // ends at 0
                  {0x80000000, 61'000, L"00:01:01"}};
    for (const auto& row : kCases) {
        converters.tick = row.startTick;
        converters.Plan({{.durationMs = row.durationMs}});
        RunBatch();
        EXPECT_EQ(Cell(0, 1), row.duration) << row.startTick;
    }
}

}  // namespace
