// What a run of the program came to, as facts with a name and a value: "messages" -> "information main
// Conversion terminée !".
#pragma once

#include <map>
#include <string>
#include <vector>

using Facts = std::map<std::string, std::string>;

// Values of a list, one line each.
[[nodiscard]] std::string Lines(const std::vector<std::string>& values);

// The facts that differ, as "name: expected, but was". Empty when none does.
[[nodiscard]] std::vector<std::string> Differences(const Facts& expected, const Facts& actual);
