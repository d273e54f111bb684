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
    ExpectNothingSentToAnybody();
    EXPECT_EQ(Durations(), "\n");
    EXPECT_THAT(platform.Requests(Platform::Request::Awake), IsEmpty()) << "nothing was converted";
}

TEST_F(Threads, StopOfABatchWithoutFilesSendsNothingToAnybody) {
    OpenWith({L"C:\\in\\a.pdf"});
    user.Press(IDOK);
    user.WaitForWorkers();
    user.SelectRow(0);
    user.PressListKey(VK_DELETE);  // which leaves button 1 as it is
    const std::size_t earlier = Taskbar().size();
    user.Press(IDOK);
    user.WaitForWorkers();
    EXPECT_EQ(platform.AwakeThreads(), 0);
    Stop();
    ExpectNothingSentToAnybody();
    EXPECT_THAT(Starts(), SizeIs(1)) << "of the first batch";
    EXPECT_THAT(platform.Requests(Platform::Request::Awake), ElementsAre("kept", "given back"));
    const std::vector<std::string> taskbar = Taskbar();
    EXPECT_THAT(std::vector(taskbar.begin() + static_cast<std::ptrdiff_t>(earlier), taskbar.end()),
                testing::Each("none"));
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
    ExpectNothingSentToAnybody();  // there was nothing to close yet
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
    EXPECT_THAT(CloseRequests(), ElementsAre("console 1"));
    EXPECT_THAT(Searches(), ElementsAre("1"));
    EXPECT_THAT(platform.Requests(Platform::Request::Job), IsEmpty()) << "it has a window";
    EXPECT_EQ(Durations(), "*** Annulé !\n");
}

TEST_F(Threads, StopBetweenTwoRowsKeepsTheFirstDurationAndConvertsNoMore) {
    OpenWith({L"C:\\in\\a.pdf", L"C:\\in\\b.pdf"});
    const Gate gate(watch, "worker SendMessageW other step", 2);  // which ends the first row
    user.Press(IDOK);
    gate.WaitForArrival();
    Stop();
    gate.Open();
    user.WaitForWorkers();
    EXPECT_THAT(Starts(), SizeIs(1));
    EXPECT_THAT(Boxes(), ElementsAre(kQuestion));
    ExpectNothingSentToAnybody();  // no converter ran
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
    ExpectNothingSentToAnybody();
    EXPECT_EQ(Durations(), "00:00:07");
}

// What a stop does that comes while the worker is about to make a certain call.
struct StopCase {
    const char* name;
    const char* call;
    int nth;
    bool runs;  // the interpreter, as far as the program can know
};

class ThreadsAroundAConverter : public ThreadsFixture, public testing::WithParamInterface<StopCase> {};

TEST_P(ThreadsAroundAConverter, StopLooksForAProcessOnlyWhileItIsHeld) {
    platform.converters = {{.console = Console::None}};
    OpenWith({L"C:\\in\\a.pdf", L"C:\\in\\b.pdf"});
    const Gate gate(watch, GetParam().call, GetParam().nth);
    user.Press(IDOK);
    gate.WaitForArrival();
    Stop();
    EXPECT_EQ(platform.TaskbarShows(), "") << "gone at once";
    gate.Open();
    user.WaitForWorkers();
    if (GetParam().runs) {
        EXPECT_THAT(Searches(), ElementsAre("1"));
        EXPECT_THAT(platform.Requests(Platform::Request::Job), ElementsAre(HasSubstr("C000013A:")));
    } else {
        ExpectNothingSentToAnybody();
    }
    EXPECT_THAT(Starts(), SizeIs(1));
    EXPECT_EQ(Taskbar().back(), "none");
    EXPECT_EQ(platform.TaskbarShows(), "") << "what the worker still had to say came too late";
}

INSTANTIATE_TEST_SUITE_P(All, ThreadsAroundAConverter,
                         testing::Values(StopCase{"PutIntoTheJob", "worker AssignProcessToJobObject", 1,
                                                  false},
                                         StopCase{"WaitedFor", "worker WaitForSingleObject", 1, true},
                                         StopCase{"Ended", "worker GetExitCodeProcess", 1, true},
                                         StopCase{"Timed", "worker GetTickCount", 2, false},
                                         StopCase{"TimerKilled", "worker KillTimer main 2", 1, false},
                                         StopCase{"RowEnded", "worker SendMessageW other step", 2, false}),
                         [](const auto& one) { return std::string(one.param.name); });

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
    void BeginASecondBatchBesideAStoppedOne(const std::vector<std::wstring>& paths = {L"C:\\in\\a.pdf"}) {
        platform.converters = {{.held = true}};
        platform.consolesIgnoreClosing = true;
        OpenWith(paths);
        user.Press(IDOK);
        user.WaitForConverter(1);
        user.WaitForPosted();
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

TEST_F(OldWorker, EndDoesNotTakeTheNewOnesConverterFromAStop) {
    BeginASecondBatchBesideAStoppedOne();
    const Gate gate(watch, "worker KillTimer main 2");
    platform.EndConverters(0, 1);
    gate.WaitForArrival();  // the old one's converter is no longer to be looked for
    Stop();
    gate.Open();
    EXPECT_THAT(CloseRequests(), ElementsAre("console 1", "console 2"));
    platform.EndConverters(0);
    user.WaitForWorkers();
}

TEST_F(OldWorker, ReportsDoNotTouchWhatTheTaskbarShowsOfTheNewBatch) {
    BeginASecondBatchBesideAStoppedOne({L"C:\\in\\a.pdf", L"C:\\in\\b.pdf"});
    const std::vector<std::string> before = Taskbar();
    EXPECT_THAT(before, ElementsAre("0 of 2", "none", "0 of 2"));
    // The flag is one: the old worker goes on with the next row, and to its end.
    platform.EndConverters(0, 1);
    user.WaitForConverter(3);
    EXPECT_EQ(Taskbar(), before);
    platform.EndConverters(0, 3);
    WaitForOneToEnd();
    EXPECT_EQ(Taskbar(), before);
    EXPECT_EQ(platform.TaskbarShows(), "0 of 2");
    platform.EndConverters(0, 2);
    user.WaitForWorkers();
    EXPECT_THAT(Taskbar(), ElementsAre("0 of 2", "none", "0 of 2", "none"));
}

TEST_F(OldWorker, IsNotWhatAStopOfTheNewBatchCloses) {
    BeginASecondBatchBesideAStoppedOne();
    Stop();
    EXPECT_THAT(CloseRequests(), ElementsAre("console 1", "console 2"));
    platform.EndConverters(0);
    user.WaitForWorkers();
    EXPECT_THAT(Boxes(), ElementsAre(kQuestion, kQuestion));
}

}  // namespace
