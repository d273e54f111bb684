#include "tests/faults/harness/scenario.h"

#include <algorithm>
#include <regex>
#include <set>
#include <sstream>

namespace {

// The facts that differ, as "name: expected, but was". Empty when none does.
std::vector<std::string> Differences(const Facts& expected, const Facts& actual) {
    const auto valueOf = [](const Facts& facts, const std::string& name) {
        const auto fact = facts.find(name);
        return fact != facts.end() ? fact->second : std::string("(no such fact)");
    };
    Facts all = expected;
    all.insert(actual.begin(), actual.end());
    std::vector<std::string> differences;
    for (const auto& [name, unused] : all) {
        const std::string wanted = valueOf(expected, name);
        const std::string got = valueOf(actual, name);
        if (wanted != got) differences.push_back(name + ": expected [" + wanted + "], but was [" + got + ']');
    }
    return differences;
}

// Whether a part of the usual value was replaced, once or everywhere.
bool IsReplaced(const std::string& value, const std::string& usual, const std::string& part,
                const std::string& replacement) {
    std::string everywhere = usual;
    for (std::size_t at = usual.rfind(part); at != std::string::npos;
         at = at == 0 ? std::string::npos : usual.rfind(part, at - 1)) {
        std::string once = usual;
        if (once.replace(at, part.size(), replacement) == value) return true;
        everywhere.replace(at, part.size(), replacement);  // from the back: places before stay
    }
    return everywhere != usual && everywhere == value;
}

}  // namespace

Change::Change(const char* factsAndText)
    : Change(Becomes(ReadFact(factsAndText).first, ReadFact(factsAndText).second)) {}

Change Becomes(const std::string& facts, const std::string& text) {
    return {facts, [text](const Observed& fact) { return fact.value == text; }, '[' + text + ']'};
}

Change BecomesLike(const std::string& facts, const std::string& pattern) {
    return {facts,
            [expression = std::regex(pattern)](const Observed& fact) {
                return std::regex_match(fact.value, expression);
            },
            "something like [" + pattern + ']'};
}

Change Reads(const std::string& facts, const std::string& replacement, const std::string& usualPart) {
    return {facts,
            [replacement, usualPart](const Observed& fact) {
                return IsReplaced(fact.value, fact.usual, usualPart, replacement);
            },
            '[' + replacement + "] for [" + usualPart + ']'};
}

Change Loses(const std::string& facts, const std::string& usualPart) {
    return Reads(facts, "", usualPart);
}

Change May(Change change) {
    change.wanted.clear();
    return change;
}

Change MayDiffer(const std::string& facts, const std::string& parts) {
    return {facts, [parts](const Observed& fact) {
                const auto& [name, value, usual, others] = fact;
                if (usual.size() < 2 || value.size() < 2) return false;
                const auto may = [&](const char* part) { return parts.find(part) != std::string::npos; };
                // What follows "ES", but for a text that may differ.
                const auto rest = [&](const std::string& state) {
                    const std::string text = state.substr(2);
                    return text != " C" && may("text") ? "" : text;
                };
                return (value[0] == usual[0] || may("enabled")) && (value[1] == usual[1] || may("shown")) &&
                       rest(value) == rest(usual);
            }};
}

Change MayHaveEmptyLines(const std::string& facts) {
    return {facts, [](const Observed& fact) {
                std::istringstream lines(fact.value + '\n');
                std::istringstream usualLines(fact.usual + '\n');
                std::string line;
                std::string usualLine;
                while (std::getline(usualLines, usualLine)) {
                    if (!std::getline(lines, line) || (!line.empty() && line != usualLine)) return false;
                }
                return !std::getline(lines, line);
            }};
}

Change MayEndEarly(const std::string& facts) {
    return {facts, [](const Observed& fact) { return fact.usual.starts_with(fact.value); }};
}

Change MayBeOver(const std::string& moments, const std::string& later) {
    return {'(' + moments + ")\\..*", [later](const Observed& fact) {
                const auto then = fact.others.find(later + fact.name.substr(fact.name.find('.')));
                return then != fact.others.end() && then->second == fact.value;
            }};
}

const Rule* FindRule(const Scenario& scenario, const std::string& call) {
    const auto rule = std::ranges::find_if(
        scenario.rules, [&](const Rule& one) { return std::regex_match(call, std::regex(one.call)); });
    return rule != scenario.rules.end() ? &*rule : nullptr;
}

std::vector<std::string> Judge(const Scenario& scenario, const std::string& call, const Facts& facts) {
    const Rule* const rule = FindRule(scenario, call);
    Facts expected = scenario.usual;
    if (!rule) return Differences(expected, facts);
    if (rule->onlyTheEndCounts) {
        static const std::set<std::string> kOfTheEnd = {
            "exit", "blocks", "icons", "handles", "objects", "windows", "strays", "shutdowns", "awake"};
        const auto isOther = [](const auto& fact) { return !kOfTheEnd.contains(fact.first); };
        Facts ofTheEnd = facts;
        std::erase_if(ofTheEnd, isOther);
        std::erase_if(expected, isOther);
        return Differences(expected, ofTheEnd);
    }
    // Facts without a dot are about the whole run, the others about a moment.
    const auto isOfAMoment = [](const auto& fact) { return fact.first.find('.') != std::string::npos; };
    if (rule->endsAtOnce) std::erase_if(expected, isOfAMoment);

    std::vector<std::string> wrong;
    std::smatch caught;
    std::regex_match(call, caught, std::regex(rule->call));
    for (const Change& change : rule->changes) {
        const std::regex names(caught.format(change.facts));
        bool isKnown = false;
        for (const auto& [name, value] : facts) {
            const auto usual = scenario.usual.find(name);
            if (usual == scenario.usual.end() || !std::regex_match(name, names)) continue;
            isKnown = true;
            const bool isRight = change.isRight({name, value, usual->second, facts});
            const bool isWrong = !isRight && !change.wanted.empty();
            if (isWrong) wrong.push_back(name + ": expected " + change.wanted + ", but was [" + value + ']');
            if (isRight || isWrong) expected[name] = value;  // said once
        }
        if (!isKnown && !change.wanted.empty()) wrong.push_back("no fact " + change.facts);
    }
    const std::vector<std::string> others = Differences(expected, facts);
    wrong.insert(wrong.end(), others.begin(), others.end());
    return wrong;
}
