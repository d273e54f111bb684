// What a batch shows from its first file to its last: rows, durations, the status line, the message at its
// end.
#include "tests/window/batch_fixture.h"

#include <tuple>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr char kFinished[] = "MessageBoxW owner=main text=Conversion terminée ! caption=Talvenor type=0x40";

class BatchCourseTest : public BatchFixture {
protected:
    [[nodiscard]] int SelectedCount() const {
        return static_cast<int>(::SendMessageW(Control(IDC_FILE_LIST), LVM_GETSELECTEDCOUNT, 0, 0));
    }
    [[nodiscard]] int FocusedRow() const {
        return static_cast<int>(
            ::SendMessageW(Control(IDC_FILE_LIST), LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_FOCUSED));
    }
};

TEST_F(BatchCourseTest, ThreeGoodFilesGetTheirDurationsAndTheMessage) {
    AddFiles({L"C:\\in\\a.pdf", L"C:\\in\\b.pdf", L"C:\\in\\c.pdf"});
    converters.Plan({{.durationMs = 1'000}, {.durationMs = 62'000}, {.durationMs = 3'723'000}});
    RunBatch();
    EXPECT_THAT(Column(1), ElementsAre(L"00:00:01", L"00:01:02", L"01:02:03"));
    EXPECT_THAT(calls.Calls(), ElementsAre(kFinished));
    EXPECT_EQ(SelectedRow(), -1);
    EXPECT_EQ(Text(IDC_STATUS), L"");
    EXPECT_EQ(Text(IDCANCEL), L"Quitter");
    EXPECT_TRUE(IsEnabled(IDOK));
    EXPECT_FALSE(dialog->IsRunning());
}

TEST_F(BatchCourseTest, EachFileIsTheSelectedRowAndStandsInTheStatusLineWhileItConverts) {
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

TEST_F(BatchCourseTest, DurationsOfAnEarlierBatchAreEmptiedAtTheStart) {
    AddFiles({L"C:\\in\\a.pdf", L"C:\\in\\b.pdf"});
    converters.Plan({{.durationMs = 1'000}, {.durationMs = 2'000}});
    RunBatch();
    ASSERT_THAT(Column(1), ElementsAre(L"00:00:01", L"00:00:02"));
    std::vector<std::wstring> seen;
    worker.At("CreateProcessW", 1, [&] { seen = Column(1); });
    RunBatch();
    EXPECT_THAT(seen, ElementsAre(L"", L""));
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
    std::wstring path = L"C:\\" + name + L".pdf";
    LVITEMW item = {};
    item.mask = LVIF_TEXT;
    item.pszText = path.data();
    ::SendMessageW(Control(IDC_FILE_LIST), LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
    AddFiles({});
    RunBatch();
    ASSERT_THAT(converters.Starts(), SizeIs(1));
    EXPECT_EQ(converters.Starts()[0].title, name + L".pdf");
    EXPECT_TRUE(converters.Starts()[0].arguments.ends_with(L" \"C:\\" + name + L".pdf\"\""));
}

struct ExitCase {
    const char* name;
    DWORD exitCode;
    const wchar_t* duration;
};
class BatchExitCodeTest : public BatchFixture, public testing::WithParamInterface<ExitCase> {};

TEST_P(BatchExitCodeTest, OnlyZeroIsSuccess) {
    AddFiles({L"C:\\in\\a.pdf", L"C:\\in\\b.pdf"});
    const bool succeeds = GetParam().exitCode == 0;
    converters.Plan({{.exitCode = GetParam().exitCode}});
    RunBatch();
    EXPECT_EQ(Cell(0, 1), GetParam().duration);
    EXPECT_THAT(converters.Starts(), SizeIs(succeeds ? 2 : 1));
    EXPECT_THAT(calls.Calls(), SizeIs(succeeds ? 1 : 0));
}

INSTANTIATE_TEST_SUITE_P(All, BatchExitCodeTest,
                         testing::Values(ExitCase{"Success", 0, L"00:00:00"},
                                         ExitCase{"ConversionFailed", 1, L"*** Annulé !"},
                                         ExitCase{"StillActive", 259, L"*** Annulé !"},
                                         ExitCase{"CommandNotFound", 9009, L"*** Annulé !"},
                                         ExitCase{"AccessViolation", 0xC0000005, L"*** Annulé !"},
                                         ExitCase{"ConsoleClosed", 0xC000013A, L"*** Annulé !"},
                                         ExitCase{"MinusOne", 0xFFFFFFFF, L"*** Annulé !"}),
                         [](const auto& row) { return std::string(row.param.name); });

struct DurationCase {
    const char* name;
    DWORD startTick;
    DWORD durationMs;
    const wchar_t* duration;
};
class BatchDurationTest : public BatchFixture, public testing::WithParamInterface<DurationCase> {};

TEST_P(BatchDurationTest, IsWrittenInHoursMinutesAndSeconds) {
    AddFiles({L"C:\\in\\a.pdf"});
    converters.tick = GetParam().startTick;
    converters.Plan({{.durationMs = GetParam().durationMs}});
    RunBatch();
    EXPECT_EQ(Cell(0, 1), GetParam().duration);
}

INSTANTIATE_TEST_SUITE_P(All, BatchDurationTest,
                         testing::Values(DurationCase{"PartOfASecond", 0, 999, L"00:00:00"},
                                         DurationCase{"AlmostAMinute", 0, 59'999, L"00:00:59"},
                                         DurationCase{"OneHour", 0, 3'600'000, L"01:00:00"},
                                         DurationCase{"HoursMinutesSeconds", 0, 3'725'000, L"01:02:05"},
                                         DurationCase{"MoreThanADay", 0, 90'061'000, L"25:01:01"},
                                         DurationCase{"HundredHours", 0, 360'000'000, L"100:00:00"},
                                         DurationCase{"AcrossTheWrap", 0xFFFFFF00, 0x400, L"00:00:01"},
                                         DurationCase{"EndsAtTickZero", 0xFFFFF060, 4'000, L"00:00:04"},
                                         DurationCase{"StartsInTheUpperHalf", 0x80000000, 61'000,
                                                      L"00:01:01"}),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
