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

std::vector<std::string> CallsToFail(const std::vector<std::string>& recorded) {
    if (IsFull()) return recorded;
    static std::set<std::string> s_swept;
    std::vector<std::string> chosen;
    for (const std::string& call : recorded) {
        if (s_swept.insert(FunctionOf(call)).second) chosen.push_back(call);
    }
    return chosen;
}

// The figures of a sweep, or of all: calls, failed, out of memory, not reached, findings.
using Figures = std::array<std::size_t, 5>;

void Print(const std::string& of, const Figures& figures) {
    std::printf(
        "[ figures  ] %-20s %6zu calls, %6zu failed, %5zu out of memory, %4zu not reached, %4zu findings\n",
        of.c_str(), figures[0], figures[1], figures[2], figures[3], figures[4]);
}

class FaultSweep : public testing::TestWithParam<std::size_t> {
protected:
    static void TearDownTestSuite() { Print("all", s_all); }

    static inline Figures s_all = {};
};

TEST_P(FaultSweep, ComesToWhatIsPromisedWhicheverCallFails) {
    const Scenario& scenario = AllScenarios()[GetParam()];
    const RecordedCalls& recorded = CallsOf(scenario);
    EXPECT_EQ(recorded.differences, "") << "when nothing fails";
    const std::vector<std::string> calls = CallsToFail(recorded.calls);
    const std::vector<std::string> verdicts = Sweep(scenario, calls);
    ASSERT_EQ(verdicts.size(), calls.size()) << "a process did not survive its last run";
    std::size_t endedTheProgram = 0;
    std::size_t notReached = 0;
    std::size_t findings = 0;
    for (std::size_t i = 0; i < calls.size(); ++i) {
        const Rule* const rule = FindRule(scenario, calls[i]);
        const bool mustEnd = rule && rule->endsWithException != 0;
        if (verdicts[i] == kNotReached) {
            EXPECT_TRUE(kFollowTraffic.contains(FunctionOf(calls[i]))) << "not made again: " << calls[i];
            ++notReached;
        } else if (mustEnd && verdicts[i] == EndOfProcess(rule->endsWithException)) {
            ++endedTheProgram;
        } else if (mustEnd || !verdicts[i].empty()) {
            ADD_FAILURE() << "when it fails: " << calls[i] << '\n'
                          << (mustEnd ? "the program does not end as it must\n" : "") << verdicts[i]
                          << (rule ? "\nthe rule: " + rule->why : "");
            ++findings;
        }
    }
    const Figures figures = {recorded.calls.size(), calls.size() - notReached, endedTheProgram, notReached,
                             findings};
    Print(scenario.name, figures);
    std::transform(figures.begin(), figures.end(), s_all.begin(), s_all.begin(), std::plus<>());
}

INSTANTIATE_TEST_SUITE_P(Scenarios, FaultSweep, testing::Range(std::size_t{0}, AllScenarios().size()),
                         [](const auto& one) { return AllScenarios()[one.param].name; });

}  // namespace
