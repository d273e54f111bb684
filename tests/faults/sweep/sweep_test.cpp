// Every call that the program makes to the system fails in turn. Without --full, each function fails once: at
// its first call in the first scenario that has one.
#include "tests/faults/options.h"
#include "tests/faults/scenarios/scenarios.h"
#include "tests/faults/sweep/recorded_calls.h"
#include "tests/faults/sweep/sweep.h"
#include "tests/faults/sweep/sweep_summary.h"

#include <gtest/gtest.h>

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

class FaultSweep : public testing::TestWithParam<std::size_t> {
protected:
    [[nodiscard]] static const Scenario& TheScenario() { return AllScenarios()[GetParam()]; }
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
    AddToSummary(scenario.name, recorded.calls.size(), result);
}

INSTANTIATE_TEST_SUITE_P(Scenarios, FaultSweep, testing::Range(std::size_t{0}, AllScenarios().size()),
                         [](const auto& one) { return AllScenarios()[one.param].name; });

}  // namespace
