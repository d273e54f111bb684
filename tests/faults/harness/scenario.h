// One way of using the program, what it comes to, and what it comes to when one of its calls fails.
#pragma once

#include "tests/faults/harness/call_watch.h"
#include "tests/faults/harness/outcome.h"
#include "tests/faults/harness/user.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

// A fact of a run in which a call failed.
struct Observed {
    const std::string& name;
    const std::string& value;
    const std::string& usual;
    const Facts& others;
};

// How facts may differ from what they usually are. They are named by a regular expression, in which $1 and so
// on stand for what the expression of the call caught.
struct Change {
    using IsRight = std::function<bool(const Observed& fact)>;

    // As Becomes: "done.(OK|CANCEL): ES".
    Change(const char* factsAndText);
    Change(std::string theFacts, IsRight whether, std::string whatIsWanted = {})
        : facts(std::move(theFacts)), isRight(std::move(whether)), wanted(std::move(whatIsWanted)) {}

    std::string facts;
    IsRight isRight;
    std::string wanted;  // what a value that is not right is reported to lack; empty: it may be as usual
};

// The whole value is this text, or matches this regular expression.
[[nodiscard]] Change Becomes(const std::string& facts, const std::string& text);
[[nodiscard]] Change BecomesLike(const std::string& facts, const std::string& pattern);
// A part of the usual value is replaced, once or everywhere, or missing.
[[nodiscard]] Change Reads(const std::string& facts, const std::string& replacement,
                           const std::string& usualPart);
[[nodiscard]] Change Loses(const std::string& facts, const std::string& usualPart);
// Or it is as usual: which depends on the call's place. So it is with the others that begin with "May".
[[nodiscard]] Change May(Change change);
// Of a control's state (see AddControlFacts) only the named parts: "enabled", "shown", "text".
[[nodiscard]] Change MayDiffer(const std::string& facts, const std::string& parts);
// Of a text of several lines some may be empty.
[[nodiscard]] Change MayHaveEmptyLines(const std::string& facts);
// Of a text only the beginning may be there.
[[nodiscard]] Change MayEndEarly(const std::string& facts);
// At these moments (a regular expression) a worker may have come so far that all is as at the later one.
[[nodiscard]] Change MayBeOver(const std::string& moments, const std::string& later);

// What the failure of certain calls comes to. Facts that are not named stay as usual.
struct Rule {
    std::string call;  // a regular expression: "worker CreateProcessW #1"
    std::string why;
    std::vector<Change> changes = {};
    bool endsAtOnce = false;        // the program ends before anything of the scenario happens
    bool onlyTheEndCounts = false;  // see OnlyTheEndCounts
    DWORD endsWithException = 0;    // the process ends with this code
};
[[nodiscard]] inline Rule When(std::string call, std::string why, std::vector<Change> changes = {}) {
    return {std::move(call), std::move(why), std::move(changes)};
}
// When a message of the user, or one between two windows, is lost, this stays as usual: that the program can
// be left, and leaves nothing behind.
[[nodiscard]] inline Rule OnlyTheEndCounts(std::string call, std::string why) {
    return {std::move(call), std::move(why), {}, false, true};
}

struct Scenario {
    std::string name;
    void (*prepare)(Platform& platform) = [](Platform&) {};
    // Starts the program and uses it until just before it is quit, or beyond. Says which calls count.
    void (*use)(User& user, CallWatch& watch, Facts& facts);
    Facts usual;
    // The first that matches holds; when none does, nothing changes.
    std::vector<Rule> rules = {};
    bool spendsItsProcess = false;  // ends it by ExitProcess: what it holds then is not counted
};

// The rule for this failing call; null when nothing may change.
[[nodiscard]] const Rule* FindRule(const Scenario& scenario, const std::string& call);

// The deviations from what must come out when `call` fails, or none when that is empty. Empty: all is as it
// must be.
[[nodiscard]] std::vector<std::string> Judge(const Scenario& scenario, const std::string& call,
                                             const Facts& facts);
