// One way of using the program, what it comes to, and what it comes to when one of its calls fails.
#pragma once

#include "tests/faults/harness/call_watch.h"
#include "tests/faults/harness/outcome.h"
#include "tests/faults/harness/user.h"

#include <optional>
#include <string>
#include <vector>

// How a fact may differ from what it usually is. Facts are named by a regular expression, in which $1 and so
// on stand for what the expression of the call caught.
struct Change {
    enum class Kind { Value, Replacement, Control, EmptyLines, Beginning, LaterMoment };

    Kind kind = Kind::Value;
    bool must = false;  // else the fact may also be as usual: which depends on the call's place
    std::string fact = {};
    std::string value = {};  // regular expression for the whole, or the replacement
    std::string part = {};   // of the usual value: what is replaced, once or everywhere
                             // of a control's state: what may differ; or the later moment
};

[[nodiscard]] inline Change Becomes(std::string fact, std::string pattern) {
    return {.must = true, .fact = std::move(fact), .value = std::move(pattern)};
}
[[nodiscard]] inline Change MayBecome(std::string fact, std::string pattern) {
    return {.fact = std::move(fact), .value = std::move(pattern)};
}
[[nodiscard]] inline Change MayRead(std::string fact, std::string replacement, std::string usualPart) {
    return {Change::Kind::Replacement, false, std::move(fact), std::move(replacement), std::move(usualPart)};
}
[[nodiscard]] inline Change MayLose(std::string fact, std::string part) {
    return MayRead(std::move(fact), {}, std::move(part));
}
[[nodiscard]] inline Change Reads(std::string fact, std::string replacement, std::string usualPart) {
    return {Change::Kind::Replacement, true, std::move(fact), std::move(replacement), std::move(usualPart)};
}
[[nodiscard]] inline Change Loses(std::string fact, std::string part) {
    return Reads(std::move(fact), {}, std::move(part));
}

// Of a control's state (see AddControlFacts) only the named parts: "enabled", "shown", "checked", "text".
[[nodiscard]] inline Change MayDiffer(std::string fact, std::string parts) {
    return {.kind = Change::Kind::Control, .fact = std::move(fact), .part = std::move(parts)};
}

// Of a text of several lines some may be empty.
[[nodiscard]] inline Change MayHaveEmptyLines(std::string fact) {
    return {.kind = Change::Kind::EmptyLines, .fact = std::move(fact)};
}
// Of a text only the beginning may be there.
[[nodiscard]] inline Change MayEndEarly(std::string fact) {
    return {.kind = Change::Kind::Beginning, .fact = std::move(fact)};
}
// At these moments (a regular expression) a worker may have come so far that all is as at the later one.
[[nodiscard]] inline Change MayBeOver(const std::string& moments, std::string later) {
    return {.kind = Change::Kind::LaterMoment, .fact = '(' + moments + ")\\..*", .part = std::move(later)};
}

// A regular expression for exactly this text.
[[nodiscard]] std::string Exactly(const std::string& text);

// What the failure of certain calls comes to. Facts that are not named stay as usual.
struct Rule {
    std::string call = {};  // pattern for CallKey::Text(): "worker CreateProcessW #1"
    std::string why = {};
    std::vector<Change> changes = {};
    bool endsAtOnce = false;        // the program ends before anything of the scenario happens
    bool onlyTheEndCounts = false;  // see FactsOfTheEnd
    DWORD endsWithException = 0;    // the process ends with this code
};

// The facts that stay as usual even when a message of the user, or one between two windows, is lost: that the
// program can be left, and leaves nothing behind.
[[nodiscard]] const std::vector<std::string>& FactsOfTheEnd();

struct Scenario {
    std::string name;
    void (*prepare)(Platform& platform);
    // Starts the program and uses it until just before it is quit, or beyond. Says which calls count.
    void (*use)(User& user, CallWatch& watch, Facts& facts);
    Facts usual;
    std::vector<Rule> rules =
        {};  // the first that matches holds; then those of all scenarios; then no change
    bool spendsItsProcess = false;  // ends it by ExitProcess: what it holds then is not counted
};

// What holds in every scenario unless it says otherwise.
[[nodiscard]] const std::vector<Rule>& RulesOfAllScenarios();

// The rule for this failing call; null when nothing may change.
[[nodiscard]] const Rule* FindRule(const Scenario& scenario, const CallKey& call);

// The deviations from what must come out when `call` fails, or when none does. Empty: all is as it must be.
[[nodiscard]] std::vector<std::string> Judge(const Scenario& scenario, const std::optional<CallKey>& call,
                                             const Facts& facts);
