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

// A batch without a converter that runs is over while it is looked at, or at its end: then the status line
// has the path alone.
[[nodiscard]] std::vector<Change> NothingToLookOnAt();

// A batch whose consoles may be hidden: the worker's calls, and those that its messages set off.
[[nodiscard]] std::vector<Rule> BatchRules();
