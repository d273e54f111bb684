// One way of using the program, what it comes to, and what it comes to when one of its calls fails.
#pragma once

#include "tests/faults/harness/call_watch.h"
#include "tests/faults/harness/outcome.h"
#include "tests/faults/harness/user.h"

#include <optional>
#include <string>
#include <vector>

// A fact that is not as usual. Patterns are regular expressions for the whole text; in `fact`, $1 and so on
// stand for what the call's pattern caught.
struct Change {
    enum class Kind { Must, May };

    Kind kind;
    std::string fact;
    std::string value;
};

// The fact has this value.
[[nodiscard]] inline Change Becomes(std::string fact, std::string value) {
    return {Change::Kind::Must, std::move(fact), std::move(value)};
}
// The fact has this value, or the usual one: which depends on the call's place among its like.
[[nodiscard]] inline Change MayBecome(std::string fact, std::string value) {
    return {Change::Kind::May, std::move(fact), std::move(value)};
}

// What the failure of certain calls comes to. Facts that are not named stay as usual.
struct Rule {
    std::string call = {};  // pattern for CallKey::Text(): "worker CreateProcessW #1"
    std::string why = {};
    std::vector<Change> changes = {};
    bool endsAtOnce = false;      // the program ends before anything of the scenario happens
    DWORD endsWithException = 0;  // the process ends with this code
};

struct Scenario {
    std::string name;
    void (*prepare)(Platform& platform);
    // Starts the program and uses it until just before it is quit, or beyond. Says which calls count.
    void (*use)(User& user, CallWatch& watch, Facts& facts);
    Facts usual;
    std::vector<Rule> rules = {};  // the first that matches holds; then those of all scenarios; then no change
    bool spendsItsProcess = false;  // ends it by ExitProcess: what it holds then is not counted
};

// What holds in every scenario unless it says otherwise.
[[nodiscard]] const std::vector<Rule>& RulesOfAllScenarios();

// The rule for this failing call; null when nothing may change.
[[nodiscard]] const Rule* FindRule(const Scenario& scenario, const CallKey& call);

// The deviations from what must come out when `call` fails, or when none does. Empty: all is as it must be.
[[nodiscard]] std::vector<std::string> Judge(const Scenario& scenario, const std::optional<CallKey>& call,
                                             const Facts& facts);
