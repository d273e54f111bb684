// What a run of the program came to, as facts with a name and a value: "messages" -> "information main
// Conversion terminée !".
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

using Facts = std::map<std::string, std::string>;

// A fact as a text, "name: value", taken apart.
[[nodiscard]] std::pair<std::string, std::string> ReadFact(const std::string& text);

// Values of a list, one line each, or with another character between them.
[[nodiscard]] std::string Lines(const std::vector<std::string>& values, char between = '\n');

// The facts that differ, as "name: expected, but was". Empty when none does.
[[nodiscard]] std::vector<std::string> Differences(const Facts& expected, const Facts& actual);
