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

std::vector<std::string> Judge(const Scenario& scenario, const std::optional<CallKey>& call,
                               const Facts& facts) {
    const Rule* const rule = call ? FindRule(scenario, *call) : nullptr;
    Facts expected = scenario.usual;
    if (!rule) return Differences(expected, facts);

    if (rule->endsAtOnce) std::erase_if(expected, [](const auto& fact) { return IsOfAMoment(fact.first); });
    std::vector<std::string> wrong;
    std::smatch caught;
    const std::string text = call->Text();
    static_cast<void>(Matches(text, rule->call, caught));
    for (const Change& change : rule->changes) {
        const std::string pattern = caught.format(change.fact);
        bool known = false;
        for (const auto& [name, value] : facts) {
            if (!Matches(name, pattern)) continue;
            known = true;
            const bool changed = Matches(value, change.value);
            if (changed) {
                expected[name] = value;
            } else if (change.kind == Change::Kind::Must) {
                wrong.push_back(name + ": expected to match [" + change.value + "], but was [" + value + ']');
                expected[name] = value;  // said once
            }
        }
        if (!known && change.kind == Change::Kind::Must) wrong.push_back("no fact " + pattern);
    }
    const std::vector<std::string> others = Differences(expected, facts);
    wrong.insert(wrong.end(), others.begin(), others.end());
    return wrong;
}
