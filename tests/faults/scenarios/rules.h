// What the failure of a call comes to, wherever it is made. Scenarios put rules of their own before these.
#pragma once

#include "tests/faults/harness/scenario.h"

#include <initializer_list>
#include <string>
#include <vector>

// Lists of rules, of changes or of scenarios, one behind the other.
template <class Item>
[[nodiscard]] std::vector<Item> Joined(std::initializer_list<std::vector<Item>> parts) {
    std::vector<Item> all;
    for (const std::vector<Item>& part : parts) all.insert(all.end(), part.begin(), part.end());
    return all;
}

// A batch in which no converter runs is soon over: what is looked at as its course may be its end. There the
// selection is cleared before the status line is, which writes the path alone into it.
[[nodiscard]] std::vector<Change> NothingToLookOnAt();

// A batch whose consoles may be hidden: the worker's calls, and those that its messages set off.
[[nodiscard]] std::vector<Rule> BatchRules();
