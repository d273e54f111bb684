#include "tests/faults/harness/outcome.h"

#include <stdexcept>

std::pair<std::string, std::string> ReadFact(const std::string& text) {
    const std::size_t colon = text.find(": ");
    if (colon == std::string::npos) throw std::logic_error("no fact: " + text);
    return {text.substr(0, colon), text.substr(colon + 2)};
}

std::string Lines(const std::vector<std::string>& values, char between) {
    std::string lines;
    for (const std::string& value : values) {
        if (&value != &values.front()) lines += between;
        lines += value;
    }
    return lines;
}

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
