// The orders in which the two threads of a batch may meet, each brought about on purpose: a worker is held at
// a call while the user acts.
#include "tests/faults/threads/threads_fixture.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;

// What a stop comes to while the worker is about to make a certain call.
struct StopCase {
    const char* name;
    const char* call;
    int nth;
    std::size_t starts;
    const char* durations;
    bool runs;  // the interpreter, as far as the program can know

    friend void PrintTo(const StopCase& row, std::ostream* out) { *out << "stopped at " << row.call; }
};

class ThreadsAtAStop : public ThreadsFixture, public testing::WithParamInterface<StopCase> {};

TEST_P(ThreadsAtAStop, KeepWhatIsDoneAndLookForAnInterpreterOnlyWhileItRuns) {
    platform.conversions = {Conversion()};  // without a console
    OpenWith({L"C:\\in\\a.pdf", L"C:\\in\\b.pdf"});
    Gate gate(watch, GetParam().call, GetParam().nth);
    user.Press(IDOK);
    gate.WaitForArrival();
    Stop();
    EXPECT_EQ(platform.Fact("shown"), "") << "gone at once";
    gate.Open();
    user.WaitForWorkers();
    EXPECT_THAT(platform.Requests("starts"), SizeIs(GetParam().starts));
    EXPECT_EQ(Durations(), GetParam().durations);
    EXPECT_THAT(Messages(), ElementsAre(kQuestion));
    if (GetParam().runs) {
        EXPECT_THAT(platform.Requests("searches"), ElementsAre("1"));
        EXPECT_THAT(platform.Requests("jobs"), ElementsAre(HasSubstr("C000013A:")));
    } else {
        for (const char* const request : {"searches", "closing", "jobs"}) {
            EXPECT_THAT(platform.Requests(request), SizeIs(0)) << request;
        }
    }
    user.WaitForPosted();
    EXPECT_EQ(platform.Fact("shown"), "") << "what the worker still had to report came too late";
}

INSTANTIATE_TEST_SUITE_P(
    All, ThreadsAtAStop,
    testing::Values(StopCase{"BeforeTheFirstRow", "worker SetCursor", 1, 0, "\n", false},
                    StopCase{"Starting", "worker CreateProcessW", 1, 1, "*** Annulé !\n", false},
                    StopCase{"Waiting", "worker WaitForSingleObject", 1, 1, "*** Annulé !\n", true},
                    StopCase{"AskingForTheExitCode", "worker GetExitCodeProcess", 1, 1, "*** Annulé !\n",
                             true},
                    StopCase{"EndingTheRow", "worker SendMessageW other step", 2, 1, "00:00:07\n", false},
                    StopCase{"AfterTheLastRow", "worker IsDlgButtonChecked main SHUT_DOWN", 1, 2,
                             "00:00:07\n00:00:07", false}),
    [](const auto& one) { return std::string(one.param.name); });

class Threads : public ThreadsFixture {};

TEST_F(Threads, SecondConvertBeforeTheFirstWorkerRunsMakesASecondWorker) {
    OpenWith({L"C:\\in\\a.pdf"});
    Gate first(watch, "worker starts");
    Gate second(watch, "worker starts");
    user.Press(IDOK);
    ASSERT_TRUE(user.IsEnabled(IDOK)) << "nothing is disabled before the worker runs";
    user.Press(IDOK);
    first.WaitForArrival();
    second.WaitForArrival();
    EXPECT_EQ(platform.Workers(), 2);
    first.Open();
    WaitForOneToEnd();
    EXPECT_THAT(Messages(), ElementsAre(kFinished));
    second.Open();
    user.WaitForWorkers();
    EXPECT_THAT(platform.Requests("starts"), SizeIs(2));
    EXPECT_THAT(Messages(), ElementsAre(kFinished, kFinished));
    EXPECT_EQ(Durations(), "00:00:07");
}

class OldWorker : public ThreadsFixture {
protected:
    // A stopped batch whose converter does not care, with a second batch begun beside it.
    void BeginASecondBatchBesideAStoppedOne() {
        platform.conversions = {{.held = true, .console = kConsoleClass}};
        platform.consolesIgnoreClosing = true;
        OpenWith({L"C:\\in\\a.pdf"});
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
};

TEST_F(OldWorker, MayEndAfterTheNewBatch) {
    BeginASecondBatchBesideAStoppedOne();
    platform.converters.Release(2, 0);
    WaitForOneToEnd();
    EXPECT_THAT(Messages(), ElementsAre(kQuestion, kFinished));
    EXPECT_EQ(Durations(), "00:00:07");
    EXPECT_TRUE(LooksIdle());
    platform.converters.Release(1, 0);
    user.WaitForWorkers();
    EXPECT_THAT(Messages(), ElementsAre(kQuestion, kFinished)) << "its own batch had been stopped";
}

TEST_F(OldWorker, MayEndBeforeTheNewBatch) {
    BeginASecondBatchBesideAStoppedOne();
    platform.converters.Release(1, 0);
    WaitForOneToEnd();
    platform.converters.Release(2, 0);
    user.WaitForWorkers();
    // The flag is one: the new batch has set it, so the old worker ends as if never stopped, and clears it.
    EXPECT_THAT(Messages(), ElementsAre(kQuestion, kFinished));
}

TEST_F(OldWorker, EndsEveryBatchThatSharesTheFlagWhenItsFileFails) {
    BeginASecondBatchBesideAStoppedOne();
    platform.converters.Release(1, 1);
    WaitForOneToEnd();
    platform.converters.Release(2, 0);
    user.WaitForWorkers();
    EXPECT_THAT(Messages(), ElementsAre(kQuestion));
}

}  // namespace
