// What a reader of the results must know of the machine they come from. No name of a person or a computer is
// in it.
#pragma once
#include <string>
#include <utility>
#include <vector>

// Each fact with its name.
std::vector<std::pair<std::string, std::string>> DescribeThisSystem();
