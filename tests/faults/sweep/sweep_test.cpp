// Every call that the program makes to the system fails in turn. Without --full, each function fails once: at
// its first call in the first scenario that has one.
#include "tests/faults/options.h"
#include "tests/faults/scenarios/scenarios.h"
#include "tests/faults/sweep/sweep.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <set>

namespace {

// Functions whose calls follow the messages that the system happens to send; not every one comes in every
// run.
const std::set<std::string> kFollowTraffic = {"GetMessageW", "GetWindowLongPtrW", "IsDialogMessageW",
                                              "PeekMessageW"};

std::vector<CallKey> CallsToFail(const std::vector<CallKey>& recorded) {
    if (IsFull()) return recorded;
    static std::set<std::string> s_swept;
    std::vector<CallKey> chosen;
    for (const CallKey& call : recorded) {
        if (s_swept.insert(call.Function()).second) chosen.push_back(call);
    }
    return chosen;
}

// The figures of a sweep, or of all.
struct Figures {
    std::string scenario;
    std::size_t recorded = 0, failed = 0, runs = 0, endedTheProgram = 0, notReached = 0, findings = 0;

    void Add(std::size_t calls, const SweepResult& result) {
        recorded += calls;
        failed += result.failed;
        runs += result.runs;
        endedTheProgram += result.endedTheProgram;
        notReached += result.notReached.size();
        findings += result.findings.size();
    }
    void Print() const {
        std::printf("[ figures  ] %-22s %8zu %8zu %8zu %14zu %11zu %9zu\n", scenario.c_str(), recorded,
                    failed, runs, endedTheProgram, notReached, findings);
    }
};

class FaultSweep : public testing::TestWithParam<std::size_t> {
protected:
    static void SetUpTestSuite() {
        s_all.scenario = "all";
        std::printf("[ figures  ] %-22s %8s %8s %8s %14s %11s %9s\n", "Scenario", "calls", "failed", "runs",
                    "out of memory", "not reached", "findings");
    }
    static void TearDownTestSuite() { s_all.Print(); }

    [[nodiscard]] static const Scenario& TheScenario() { return AllScenarios()[GetParam()]; }

    static inline Figures s_all;
};

TEST_P(FaultSweep, ComesToWhatIsPromisedWhicheverCallFails) {
    const Scenario& scenario = TheScenario();
    const RecordedCalls& recorded = CallsOf(scenario);
    for (const std::string& difference : recorded.differences) {
        ADD_FAILURE() << "when nothing fails: " << difference;
    }
    const SweepResult result = Sweep(scenario, CallsToFail(recorded.calls));
    for (const Finding& finding : result.findings) {
        ADD_FAILURE() << "when it fails: " << finding.call.Text() << '\n' << finding.text;
    }
    for (const CallKey& call : result.notReached) {
        EXPECT_TRUE(kFollowTraffic.contains(call.Function())) << "not made again: " << call.Text();
    }
    Figures figures{.scenario = scenario.name};
    figures.Add(recorded.calls.size(), result);
    figures.Print();
    s_all.Add(recorded.calls.size(), result);
}

INSTANTIATE_TEST_SUITE_P(Scenarios, FaultSweep, testing::Range(std::size_t{0}, AllScenarios().size()),
                         [](const auto& one) { return AllScenarios()[one.param].name; });

}  // namespace
