// What the failure of a call comes to, wherever it is made. Scenarios put rules of their own before these.
#pragma once

#include "tests/faults/harness/scenario.h"

#include <initializer_list>
#include <string>
#include <vector>

[[nodiscard]] std::vector<Rule> Joined(std::initializer_list<std::vector<Rule>> parts);

[[nodiscard]] std::vector<Change> Also(std::vector<Change> changes, const std::vector<Change>& others);

// A batch whose consoles may be hidden: the worker's calls, and those that its messages set off.
[[nodiscard]] std::vector<Rule> BatchRules();

// The message about the first refusal of the shell, whose description by the system is given.
[[nodiscard]] std::vector<Rule> ShellFailureRules(const std::string& description);
