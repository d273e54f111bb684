// What a run of the program came to, as facts with a name and a value: "messages" -> "information main
// Conversion terminée !".
#pragma once

#include <map>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

using Facts = std::map<std::string, std::string>;

// How many there are of certain things.
using Counts = std::map<std::string, long long>;

// A fact as a text, "name: value", taken apart.
[[nodiscard]] inline std::pair<std::string, std::string> ReadFact(const std::string& text) {
    const std::size_t colon = text.find(": ");
    if (colon == std::string::npos) throw std::logic_error("no fact: " + text);
    return {text.substr(0, colon), text.substr(colon + 2)};
}

// Values of a list, one line each, or with another character between them.
[[nodiscard]] inline std::string Lines(const std::vector<std::string>& values, char between = '\n') {
    std::string lines;
    for (const std::string& value : values) {
        if (&value != &values.front()) lines += between;
        lines += value;
    }
    return lines;
}

// The same of numbers.
template <class List>
[[nodiscard]] std::string Numbers(const List& numbers, char between) {
    std::vector<std::string> texts;
    for (const auto number : numbers) texts.push_back(std::to_string(number));
    return Lines(texts, between);
}
