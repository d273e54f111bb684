// Stopping a batch: the question, and what is left of the batch at every moment at which it can be stopped.
// Whom a stop asks while an interpreter runs is a subject of its own.
#include "tests/window/batch_fixture.h"

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using testing::SizeIs;
using testing::UnorderedElementsAre;

constexpr char kQuestion[] = "Un traitement est en cours.\r\nÊtes-vous sûr de vouloir l'interrompre ?";

struct StopCase {
    const char* name;
    const char* at;  // the worker's call at which the user stops
    std::size_t starts;
    std::vector<std::wstring> durations;
    std::vector<Conversion> plan = {{.durationMs = 5'000}, {.durationMs = 5'000}, {.durationMs = 5'000}};
    int nth = 1;  // of the calls that begin like `at`

    friend void PrintTo(const StopCase& row, std::ostream* out) { *out << "stopped at " << row.at; }
};
class BatchStoppedAtTest : public BatchFixture, public testing::WithParamInterface<StopCase> {};

TEST_P(BatchStoppedAtTest, KeepsWhatWasConvertedAndConvertsNoMore) {
    consoles.windows = {{Conversion().processId}};
    Check(IDC_SHUT_DOWN);
    StopAt(GetParam().at, GetParam().nth);
    Convert(3, GetParam().plan);
    ASSERT_THAT(MessageTexts(), Contains(kQuestion).Times(1));
    EXPECT_THAT(Column(1), ElementsAreArray(GetParam().durations));
    EXPECT_THAT(converters.Starts(), SizeIs(GetParam().starts));
    EXPECT_EQ(worker.Count("DialogBoxParamW 101"), 1) << "the countdown also follows a stop";
    EXPECT_EQ(worker.Count("MessageBoxW Conversion terminée !"), 0);
    ExpectIdle();
    // As far as the batch knows.
    const std::string at = GetParam().at;
    const bool interpreterRuns = at.starts_with("WaitForSingleObject") || at == "GetExitCodeProcess";
    EXPECT_EQ(consoles.requests.Calls().empty(), !interpreterRuns);
    EXPECT_EQ(worker.Count("SetThreadExecutionState"), GetParam().starts == 0 ? 0 : 2);
}

constexpr wchar_t kDone[] = L"00:00:05";
constexpr wchar_t kMarked[] = L"*** Annulé !";

INSTANTIATE_TEST_SUITE_P(
    All, BatchStoppedAtTest,
    testing::Values(
        StopCase{"BeforeTheFirstConverter", "DeleteFileW", 0, {L"", L"", L""}},
        StopCase{"BeforeTheFirstRow", "SetCursor busy", 0, {L"", L"", L""}},
        StopCase{"AfterTheFirstRowHasBegun", "PathStripPathW C:\\in\\a.pdf", 1, {kMarked, L"", L""}},
        StopCase{"WhileItIsStarted", "CreateProcessW", 1, {kMarked, L"", L""}},
        StopCase{"WhileItIsPutIntoTheJob", "AssignProcessToJobObject", 1, {kMarked, L"", L""}},
        StopCase{"WhileItRunsAndItFails",
                 "WaitForSingleObject process 1",
                 1,
                 {kMarked, L"", L""},
                 {{.exitCode = 0xC000013A, .durationMs = 5'000}}},
        StopCase{
            "WhileItRunsAndItSucceedsAllTheSame", "WaitForSingleObject process 1", 1, {kMarked, L"", L""}},
        StopCase{"WhileItsExitCodeIsRead", "GetExitCodeProcess", 1, {kMarked, L"", L""}},
        StopCase{"WhileItsEndIsTimed", "GetTickCount", 1, {kMarked, L"", L""}, {{.durationMs = 5'000}}, 2},
        StopCase{"AfterItsEnd", "KillTimer main 2", 1, {kMarked, L"", L""}},
        StopCase{
            "BetweenTwoFiles", "LVM_SETITEMW 1040 row=0 column=1 mask=1 \"00:00:05\"", 1, {kDone, L"", L""}},
        StopCase{"AtTheClosingOfItsHandles", "CloseHandle process 1", 1, {kDone, L"", L""}},
        StopCase{"AtTheNextFile", "LVM_GETITEMTEXTW 1040 row=1", 2, {kDone, kMarked, L""}},
        StopCase{"AfterTheNextRowHasBegun", "LVM_SETITEMSTATE 1040 row=1 state=3", 2, {kDone, kMarked, L""}},
        StopCase{"InTheLastFile", "WaitForSingleObject process 3", 3, {kDone, kDone, kMarked}},
        StopCase{"InTheMessageOfAFailedStart",
                 "MessageBoxW Erreur CreateProcess",
                 2,
                 {kDone, kMarked, L""},
                 {{.durationMs = 5'000}, {.startError = ERROR_FILE_NOT_FOUND}}},
        StopCase{"AfterTheLastFile", "IsDlgButtonChecked 1038", 3, {kDone, kDone, kDone}},
        StopCase{"InTheCountdown", "DialogBoxParamW 101", 3, {kDone, kDone, kDone}}),
    [](const auto& row) { return std::string(row.param.name); });

class BatchStopTest : public BatchFixture {};

TEST_F(BatchStopTest, NoLetsTheBatchGoOn) {
    ConvertUntilHeld(2, {{.held = true}});
    stopAnswer = IDNO;
    PressStop();
    EXPECT_TRUE(dialog->IsRunning());
    EXPECT_FALSE(IsEnabled(IDOK));
    EXPECT_EQ(Text(IDCANCEL), L"Arrêter ");
    PumpPending();
    EXPECT_EQ(taskbar.calls.Calls().back(), "SetProgressValue 0/2");
    Finish(1);
    EXPECT_THAT(consoles.requests.Calls(), IsEmpty());
    EXPECT_THAT(Column(1), ElementsAre(L"00:00:00", L"00:00:00"));
    EXPECT_THAT(MessageTexts(), ElementsAre(kQuestion, "Conversion terminée !"));
}

TEST_F(BatchStopTest, YesBringsTheIdleStateAtOnceAndATimerTheMarkWhileTheWorkerStillWaits) {
    ConvertUntilHeld(2, {{.held = true}});
    PressStop();
    EXPECT_FALSE(dialog->IsRunning());
    EXPECT_TRUE(dialog->HasWorker());
    EXPECT_NE(dialog->Handle(), nullptr);
    EXPECT_TRUE(IsEnabled(IDOK));
    EXPECT_TRUE(IsEnabled(IDC_FILE_LIST));
    EXPECT_EQ(Text(IDCANCEL), L"Quitter");
    EXPECT_EQ(Cell(0, 1), L"");
    Tick(converters.tick + 3'000);
    EXPECT_THAT(Column(1), ElementsAre(L"*** Annulé !", L""));
    Finish(1);
    EXPECT_THAT(Column(1), ElementsAre(L"*** Annulé !", L""));
    EXPECT_THAT(converters.Starts(), SizeIs(1));
}

// A second batch beside an old one that was stopped and still waits for its converter.
class BatchSideBySideTest : public BatchFixture {
protected:
    BatchSideBySideTest() {
        ConvertUntilHeld(1, {{.exitCode = 1, .held = true}, {.held = true}});
        PressStop();
        PressConvert();
        WaitForConverter(2);
    }

    [[nodiscard]] int ClosedHandlesOf(int number) const {
        return worker.Count("CloseHandle process " + std::to_string(number)) +
               worker.Count("CloseHandle thread " + std::to_string(number));
    }
    // Lets one converter end, then the other, and looks at what the worker of each did with handles.
    void ExpectOwnHandles(int first, int last) {
        converters.Release(first);
        ASSERT_TRUE(WaitFor([&] { return ClosedHandlesOf(first) == 2; }));
        EXPECT_EQ(ClosedHandlesOf(last), 0);
        Finish(last);
        for (const int number : {1, 2}) {
            const std::string name = std::to_string(number);
            EXPECT_THAT(worker.OfWorker(converters.Starts().at(static_cast<std::size_t>(number) - 1).workerId,
                                        {"WaitForSingleObject", "GetExitCodeProcess", "CloseHandle"}),
                        UnorderedElementsAre("WaitForSingleObject process " + name + " INFINITE",
                                             "GetExitCodeProcess process " + name,
                                             "CloseHandle process " + name, "CloseHandle thread " + name));
        }
    }
};

TEST_F(BatchSideBySideTest, EachWorkerUsesItsOwnHandlesWhenTheNewOneEndsFirst) {
    ExpectOwnHandles(2, 1);
}

TEST_F(BatchSideBySideTest, EachWorkerUsesItsOwnHandlesWhenTheOldOneEndsFirst) {
    ExpectOwnHandles(1, 2);
}

TEST_F(BatchSideBySideTest, TheOldWorkerCountsUntilItHasEnded) {
    converters.Release(2);
    ASSERT_TRUE(WaitFor([&] { return worker.Count("SetCursor previous") == 1; }));
    EXPECT_TRUE(dialog->HasWorker());
    Finish(1);
    EXPECT_FALSE(dialog->IsRunning());
}

}  // namespace
