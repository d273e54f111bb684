// Functions whose calls are described to `note` before they go on to the system. What `note` returns is kept
// as long as the call lasts.
#pragma once

#include "tests/support/call_text.h"
#include "tests/support/replaced_imports.h"

#include <windows.h>

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

// The name of a function, as an argument of a template. It distinguishes functions of the same type, whose
// replacements would otherwise be one.
struct FunctionName {
    consteval FunctionName(const char* name) {  // NOLINT(google-explicit-constructor): a literal is one
        for (std::size_t i = 0; name[i] != '\0'; ++i) text[i] = name[i];
    }
    char text[40] = {};
};

// All arguments, as they are.
struct AllArguments {
    [[nodiscard]] std::string operator()(auto... arguments) const {
        return CallText("", arguments...).substr(1);
    }
};

template <class Note>
class NotedCalls {
public:
    NotedCalls(std::vector<Replaced>& replaced, Note note) : m_replaced(replaced), m_note(std::move(note)) {}

    // `describe` returns what the record has of the arguments.
    template <FunctionName kName, class Function, class Describe = AllArguments>
    void Add(Describe describe = {}) {
        m_replaced.push_back(
            Replace<Function>(kName.text, [=, note = m_note](auto original, auto... arguments) {
                [[maybe_unused]] const auto kept = note(CallText(kName.text, describe(arguments...)));
                return original(arguments...);
            }));
    }

private:
    std::vector<Replaced>& m_replaced;
    Note m_note;
};
