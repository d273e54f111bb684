// The orders in which the two threads of a batch may meet, each brought about on purpose: a worker is held at
// a call while the user acts.
#include "tests/faults/threads/threads_fixture.h"

#include "res/resource.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

class Threads : public ThreadsFixture {};

TEST_F(Threads, StopBeforeTheFirstRowConvertsNothing) {
    OpenWith({L"C:\\in\\a.pdf", L"C:\\in\\b.pdf"});
    const Gate gate(watch, "worker SetCursor");
    user.Press(IDOK);
    gate.WaitForArrival();
    Stop();
    gate.Open();
    user.WaitForWorkers();
    EXPECT_THAT(Starts(), IsEmpty());
    EXPECT_THAT(Boxes(), ElementsAre(kQuestion));
    EXPECT_THAT(CloseRequests(), IsEmpty());
    EXPECT_EQ(Durations(), "\n");
}

TEST_F(Threads, StopWhileTheConverterIsBeingStartedEndsTheBatchAfterIt) {
    platform.converters = {{.held = true}};
    OpenWith({L"C:\\in\\a.pdf", L"C:\\in\\b.pdf"});
    const Gate gate(watch, "worker CreateProcessW");
    user.Press(IDOK);
    gate.WaitForArrival();
    Stop();
    gate.Open();
    user.WaitForConverter(1);
    EXPECT_TRUE(LooksIdle()) << "while the stopped converter runs";
    platform.EndConverters(0);
    user.WaitForWorkers();
    EXPECT_THAT(Starts(), SizeIs(1));
    EXPECT_THAT(Boxes(), ElementsAre(kQuestion));
    EXPECT_THAT(CloseRequests(), IsEmpty()) << "there was nothing to close yet";
    EXPECT_EQ(Durations(), "*** Annulé !\n");
}

TEST_F(Threads, StopWhileTheConverterRunsAsksItsConsoleToClose) {
    platform.converters = {{.held = true}};
    OpenWith({L"C:\\in\\a.pdf", L"C:\\in\\b.pdf"});
    user.Press(IDOK);
    user.WaitForConverter(1);
    const Gate gate(watch, "worker GetExitCodeProcess");
    Stop();
    gate.WaitForArrival();
    User::Send(user.Window(), WM_TIMER, 2);
    EXPECT_EQ(Durations(), "*** Annulé !\n") << "at a tick between the stop and the converter's end";
    gate.Open();
    user.WaitForWorkers();
    EXPECT_THAT(CloseRequests(), ElementsAre("console"));
    EXPECT_EQ(Durations(), "*** Annulé !\n");
}

TEST_F(Threads, StopBetweenTwoRowsKeepsTheFirstDurationAndConvertsNoMore) {
    OpenWith({L"C:\\in\\a.pdf", L"C:\\in\\b.pdf"});
    const Gate gate(watch, "worker CloseHandle", 2);  // the process, then the thread of the first converter
    user.Press(IDOK);
    gate.WaitForArrival();
    Stop();
    gate.Open();
    user.WaitForWorkers();
    EXPECT_THAT(Starts(), SizeIs(1));
    EXPECT_THAT(Boxes(), ElementsAre(kQuestion));
    EXPECT_THAT(CloseRequests(), IsEmpty()) << "no converter ran";
    EXPECT_EQ(Durations(), "00:00:07\n");
}

TEST_F(Threads, StopAfterTheLastRowOnlyTakesTheMessageAway) {
    OpenWith({L"C:\\in\\a.pdf"});
    const Gate gate(watch, "worker IsDlgButtonChecked main 1038");
    user.Press(IDOK);
    gate.WaitForArrival();
    Stop();
    gate.Open();
    user.WaitForWorkers();
    EXPECT_THAT(Boxes(), ElementsAre(kQuestion));
    EXPECT_EQ(Durations(), "00:00:07");
}

TEST_F(Threads, SecondConvertBeforeTheFirstWorkerRunsMakesASecondWorker) {
    OpenWith({L"C:\\in\\a.pdf"});
    const Gate first(watch, "worker starts");
    const Gate second(watch, "worker starts");
    user.Press(IDOK);
    ASSERT_TRUE(user.IsEnabled(IDOK)) << "nothing is disabled before the worker runs";
    user.Press(IDOK);
    first.WaitForArrival();
    second.WaitForArrival();
    EXPECT_EQ(platform.Workers(), 2);
    first.Open();
    WaitUntil("the first worker has ended", [&] { return platform.Workers() == 1; });
    EXPECT_THAT(Boxes(), ElementsAre(kFinished));
    second.Open();
    user.WaitForWorkers();
    EXPECT_THAT(Starts(), SizeIs(2));
    EXPECT_THAT(Boxes(), ElementsAre(kFinished, kFinished));
    EXPECT_EQ(Durations(), "00:00:07");
}

TEST_F(Threads, TwoWorkersAtTheSameFilesBothComeToAnEnd) {
    OpenWith({L"C:\\in\\a.pdf", L"C:\\in\\b.pdf", L"C:\\in\\c.pdf"});
    const Gate first(watch, "worker starts");
    const Gate second(watch, "worker starts");
    user.Press(IDOK);
    user.Press(IDOK);
    first.WaitForArrival();
    second.WaitForArrival();
    first.Open();
    second.Open();
    user.WaitForWorkers();
    // Which of them ends the other is open. Each converts at least one file, or finds the batch over.
    EXPECT_THAT(Starts().size(), testing::AllOf(testing::Ge(3u), testing::Le(6u)));
    EXPECT_THAT(Boxes(), testing::Each(kFinished));
    EXPECT_THAT(Boxes().size(), testing::AllOf(testing::Ge(1u), testing::Le(2u)));
}

class OldWorker : public ThreadsFixture {
protected:
    // A stopped batch whose converter does not care, with a second batch begun beside it.
    void BeginASecondBatchBesideAStoppedOne() {
        platform.converters = {{.held = true}};
        platform.consolesIgnoreClosing = true;
        OpenWith({L"C:\\in\\a.pdf"});
        user.Press(IDOK);
        user.WaitForConverter(1);
        Stop();
        EXPECT_EQ(platform.Workers(), 1) << "the old worker still waits";
        user.Press(IDOK);
        user.WaitForConverter(2);
        EXPECT_EQ(platform.Workers(), 2);
        EXPECT_FALSE(user.IsEnabled(IDOK)) << "the second batch is running";
    }
    // Workers end in their own time; this is the moment when only one is left.
    void WaitForOneToEnd() {
        WaitUntil("one worker has ended", [&] { return platform.Workers() == 1; });
    }
};

TEST_F(OldWorker, EndsAfterTheNewBatch) {
    BeginASecondBatchBesideAStoppedOne();
    platform.EndConverters(0, 2);
    WaitForOneToEnd();
    EXPECT_THAT(Boxes(), ElementsAre(kQuestion, kFinished));
    EXPECT_EQ(Durations(), "00:00:07");
    EXPECT_TRUE(LooksIdle());
    platform.EndConverters(0, 1);
    user.WaitForWorkers();
    EXPECT_THAT(Boxes(), ElementsAre(kQuestion, kFinished)) << "its own batch had been stopped";
}

TEST_F(OldWorker, EndsBeforeTheNewBatch) {
    BeginASecondBatchBesideAStoppedOne();
    platform.EndConverters(0, 1);
    WaitForOneToEnd();
    platform.EndConverters(0, 2);
    user.WaitForWorkers();
    // The flag is one: the new batch has set it, so the old worker ends as if never stopped, and clears it.
    EXPECT_THAT(Boxes(), ElementsAre(kQuestion, kFinished));
}

TEST_F(OldWorker, FailsWhileTheNewBatchRuns) {
    BeginASecondBatchBesideAStoppedOne();
    platform.EndConverters(1, 1);
    WaitForOneToEnd();
    platform.EndConverters(0, 2);
    user.WaitForWorkers();
    EXPECT_THAT(Boxes(), ElementsAre(kQuestion)) << "a failed file ends every batch that shares the flag";
}

TEST_F(OldWorker, IsNotWhatAStopOfTheNewBatchCloses) {
    BeginASecondBatchBesideAStoppedOne();
    Stop();
    EXPECT_THAT(CloseRequests(), SizeIs(2));
    platform.EndConverters(0);
    user.WaitForWorkers();
    EXPECT_THAT(Boxes(), ElementsAre(kQuestion, kQuestion));
}

}  // namespace
