#include "tests/faults/harness/outcome.h"

std::string Lines(const std::vector<std::string>& values) {
    std::string lines;
    for (const std::string& value : values) {
        if (&value != &values.front()) lines += '\n';
        lines += value;
    }
    return lines;
}

std::vector<std::string> Differences(const Facts& expected, const Facts& actual) {
    std::vector<std::string> differences;
    const auto valueOf = [](const Facts& facts, const std::string& name) {
        const auto fact = facts.find(name);
        return fact != facts.end() ? fact->second : std::string("(no such fact)");
    };
    Facts all = expected;
    all.insert(actual.begin(), actual.end());
    for (const auto& [name, unused] : all) {
        const std::string wanted = valueOf(expected, name);
        const std::string got = valueOf(actual, name);
        if (wanted != got) differences.push_back(name + ": expected [" + wanted + "], but was [" + got + ']');
    }
    return differences;
}
