// Tables whose rows are about several functions, by their names between blanks.
#pragma once

#include <map>
#include <sstream>
#include <string>

// The row that is about `function`; null when there is none. A type of rows has one table.
template <class Group, std::size_t size>
[[nodiscard]] const Group* FindGroup(const Group (&table)[size], const std::string& function) {
    static const std::map<std::string, const Group*> kByFunction = [&] {
        std::map<std::string, const Group*> byFunction;
        for (const Group& group : table) {
            std::istringstream names(group.functions);
            for (std::string name; names >> name;) byFunction[name] = &group;
        }
        return byFunction;
    }();
    const auto known = kByFunction.find(function);
    return known != kByFunction.end() ? known->second : nullptr;
}
