// Every call that the program makes to the system fails in turn. Without --full, each function fails once: at
// its first call in the first scenario that has one.
#include "tests/faults/options.h"
#include "tests/faults/scenarios/scenarios.h"
#include "tests/faults/sweep/sweep.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <functional>
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

// The figures of a sweep, or of all: calls, failed, runs, out of memory, not reached, findings.
using Figures = std::array<std::size_t, 6>;

void Print(const std::string& scenario, const Figures& figures) {
    std::printf("[ figures  ] %-22s %8zu %8zu %8zu %14zu %11zu %9zu\n", scenario.c_str(), figures[0],
                figures[1], figures[2], figures[3], figures[4], figures[5]);
}

class FaultSweep : public testing::TestWithParam<std::size_t> {
protected:
    static void SetUpTestSuite() {
        std::printf("[ figures  ] %-22s %8s %8s %8s %14s %11s %9s\n", "Scenario", "calls", "failed", "runs",
                    "out of memory", "not reached", "findings");
    }
    static void TearDownTestSuite() { Print("all", s_all); }

    [[nodiscard]] static const Scenario& TheScenario() { return AllScenarios()[GetParam()]; }

    static inline Figures s_all = {};
};

TEST_P(FaultSweep, ComesToWhatIsPromisedWhicheverCallFails) {
    const Scenario& scenario = TheScenario();
    const RecordedCalls& recorded = CallsOf(scenario);
    for (const std::string& difference : recorded.differences) {
        ADD_FAILURE() << "when nothing fails: " << difference;
    }
    const std::vector<CallKey> calls = CallsToFail(recorded.calls);
    const SweepResult result = Sweep(scenario, calls);
    for (const Finding& finding : result.findings) {
        ADD_FAILURE() << "when it fails: " << finding.call.Text() << '\n' << finding.text;
    }
    for (const CallKey& call : result.notReached) {
        EXPECT_TRUE(kFollowTraffic.contains(call.Function())) << "not made again: " << call.Text();
    }
    const std::size_t notReached = result.notReached.size();
    const Figures figures = {
        recorded.calls.size(), calls.size() - notReached, result.runs, result.endedTheProgram, notReached,
        result.findings.size()};
    Print(scenario.name, figures);
    std::transform(figures.begin(), figures.end(), s_all.begin(), s_all.begin(), std::plus<>());
}

INSTANTIATE_TEST_SUITE_P(Scenarios, FaultSweep, testing::Range(std::size_t{0}, AllScenarios().size()),
                         [](const auto& one) { return AllScenarios()[one.param].name; });

}  // namespace
