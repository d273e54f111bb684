#include "tests/faults/harness/scenario.h"

#include <algorithm>
#include <iterator>
#include <regex>

namespace {

// Moments of a scenario have facts "<moment>.<what>"; those without a dot are about the whole run.
bool IsOfAMoment(const std::string& fact) {
    return fact.find('.') != std::string::npos;
}

bool Matches(const std::string& text, const std::string& pattern, std::smatch& caught) {
    return std::regex_match(text, caught, std::regex(pattern));
}

bool Matches(const std::string& text, const std::string& pattern) {
    std::smatch ignored;
    return Matches(text, pattern, ignored);
}

std::vector<std::string> NamesOf(const Facts& facts, const std::string& pattern) {
    const std::regex expression(pattern);
    std::vector<std::string> names;
    for (const auto& [name, value] : facts) {
        if (std::regex_match(name, expression)) names.push_back(name);
    }
    return names;
}

// The state of a control without the parts that may differ: "ES C text".
std::string WithoutParts(const std::string& state, const std::string& parts) {
    const auto mayDiffer = [&](const char* part) { return parts.find(part) != std::string::npos; };
    std::string rest = state.size() > 2 ? state.substr(2) : std::string();
    const bool isChecked = rest == " C";
    if (isChecked) rest.clear();
    std::string kept;
    if (!mayDiffer("enabled")) kept += state[0];
    if (!mayDiffer("shown")) kept += state[1];
    if (!mayDiffer("checked") && isChecked) kept += " C";
    if (!mayDiffer("text")) kept += rest;
    return kept;
}

std::vector<std::string> SplitLines(const std::string& text) {
    std::vector<std::string> lines(1);
    for (const char character : text) {
        if (character == '\n') {
            lines.emplace_back();
        } else {
            lines.back() += character;
        }
    }
    return lines;
}

bool HasEmptyLines(const std::string& usual, const std::string& value) {
    const std::vector<std::string> expected = SplitLines(usual);
    const std::vector<std::string> lines = SplitLines(value);
    return std::equal(
        lines.begin(), lines.end(), expected.begin(), expected.end(),
        [](const std::string& line, const std::string& whole) { return line.empty() || line == whole; });
}

// The same fact at another moment; empty when there is none.
std::string AtMoment(const std::string& moment, const std::string& name, const Facts& facts) {
    const auto fact = facts.find(moment + name.substr(name.find('.')));
    return fact != facts.end() ? fact->second : std::string();
}

// Whether `value` is what the change makes of the usual value.
bool IsChange(const Change& change, const std::string& usual, const std::string& value) {
    if (change.kind == Change::Kind::Control) {
        const bool areStates = usual.size() >= 2 && value.size() >= 2;
        return areStates && WithoutParts(usual, change.part) == WithoutParts(value, change.part);
    }
    if (change.kind == Change::Kind::EmptyLines) return HasEmptyLines(usual, value);
    if (change.kind == Change::Kind::Beginning) return usual.starts_with(value);
    if (change.kind == Change::Kind::Value) return Matches(value, change.value);
    std::string everywhere = usual;
    for (std::size_t at = usual.rfind(change.part); at != std::string::npos;
         at = at == 0 ? std::string::npos : usual.rfind(change.part, at - 1)) {
        std::string once = usual;
        if (once.replace(at, change.part.size(), change.value) == value) return true;
        everywhere.replace(at, change.part.size(), change.value);  // from the back: places before stay
    }
    return everywhere != usual && everywhere == value;
}

Facts OnlyOfTheEnd(const Facts& facts) {
    Facts kept;
    for (const std::string& name : FactsOfTheEnd()) {
        if (const auto fact = facts.find(name); fact != facts.end()) kept.insert(*fact);
    }
    return kept;
}

const Rule* FirstMatch(const std::vector<Rule>& rules, const std::string& call) {
    const auto rule =
        std::find_if(rules.begin(), rules.end(), [&](const Rule& one) { return Matches(call, one.call); });
    return rule != rules.end() ? &*rule : nullptr;
}

}  // namespace

const Rule* FindRule(const Scenario& scenario, const CallKey& call) {
    const std::string text = call.Text();
    if (const Rule* const own = FirstMatch(scenario.rules, text)) return own;
    return FirstMatch(RulesOfAllScenarios(), text);
}

const std::vector<std::string>& FactsOfTheEnd() {
    static const std::vector<std::string> kFacts = {"exit",    "blocks", "icons",     "handles", "objects",
                                                    "windows", "strays", "shutdowns", "awake"};
    return kFacts;
}

std::string Exactly(const std::string& text) {
    std::string pattern;
    for (const char character : text) {
        if (std::string("^$\\.*+?()[]{}|").find(character) != std::string::npos) pattern += '\\';
        pattern += character;
    }
    return pattern;
}

std::vector<std::string> Judge(const Scenario& scenario, const std::optional<CallKey>& call,
                               const Facts& facts) {
    const Rule* const rule = call ? FindRule(scenario, *call) : nullptr;
    Facts expected = scenario.usual;
    if (!rule) return Differences(expected, facts);
    if (rule->onlyTheEndCounts) return Differences(OnlyOfTheEnd(expected), OnlyOfTheEnd(facts));
    if (rule->endsAtOnce) std::erase_if(expected, [](const auto& fact) { return IsOfAMoment(fact.first); });

    std::vector<std::string> wrong;
    std::smatch caught;
    const std::string text = call->Text();
    static_cast<void>(Matches(text, rule->call, caught));
    for (const Change& change : rule->changes) {
        const std::string pattern = caught.format(change.fact);
        const std::vector<std::string> names = NamesOf(facts, pattern);
        if (names.empty() && change.must) wrong.push_back("no fact " + pattern);
        for (const std::string& name : names) {
            const std::string& value = facts.at(name);
            const auto usual = scenario.usual.find(name);
            if (change.kind == Change::Kind::LaterMoment) {
                if (value == AtMoment(change.part, name, facts)) expected[name] = value;
            } else if (usual != scenario.usual.end() && IsChange(change, usual->second, value)) {
                expected[name] = value;
            } else if (change.must) {
                wrong.push_back(name + ": expected [" + change.part + " -> " + change.value + "], but was [" +
                                value + ']');
                expected[name] = value;  // said once
            }
        }
    }
    const std::vector<std::string> others = Differences(expected, facts);
    wrong.insert(wrong.end(), others.begin(), others.end());
    return wrong;
}
