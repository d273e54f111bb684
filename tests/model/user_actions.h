// What a random user does, as data: a sequence can be replayed, printed and shortened.
#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <vector>

enum class ActionKind {
    Drop,
    AddByDialog,
    Clear,
    SelectRow,
    DeleteKey,
    ClickCheckBox,
    ClickDisabledEdit,
    TypePages,
    TypeResolution,
    TypeFolder,
    TypeExtraOptions,
    Browse,
    OpenDestination,
    Convert,
    StopNo,
    StopYes,
    TimerTick,
    ConverterEndsWell,
    ConverterEndsBadly,
    Tab,
    BackTab,
    PressDown,
    PressSpace,
    PressEnter,
    TypeCharacter,
};

struct Action {
    ActionKind kind;
    std::uint32_t choice;  // which row, check box, text... : taken modulo what there is
};

// In the order of ActionKind; how often each comes: a batch must be reached, and be left.
inline constexpr struct {
    const char* name;
    std::size_t weight;
} kActions[] = {
    {"Drop", 8},
    {"AddByDialog", 8},
    {"Clear", 1},
    {"SelectRow", 6},
    {"DeleteKey", 3},
    {"ClickCheckBox", 14},
    {"ClickDisabledEdit", 7},
    {"TypePages", 3},
    {"TypeResolution", 4},
    {"TypeFolder", 6},
    {"TypeExtraOptions", 2},
    {"Browse", 3},
    {"OpenDestination", 4},
    {"Convert", 8},
    {"StopNo", 2},
    {"StopYes", 3},
    {"TimerTick", 3},
    {"ConverterEndsWell", 8},
    {"ConverterEndsBadly", 2},
    {"Tab", 6},
    {"BackTab", 3},
    {"PressDown", 6},
    {"PressSpace", 6},
    {"PressEnter", 6},
    {"TypeCharacter", 6},
};

// The same sequence for the same seed, on every machine.
inline std::vector<Action> RandomActions(std::uint32_t seed, int count) {
    std::vector<ActionKind> urn;
    for (const auto& action : kActions) {
        urn.insert(urn.end(), action.weight, static_cast<ActionKind>(&action - kActions));
    }
    std::mt19937 random(seed);  // its numbers are fixed by the language; those of distributions are not
    std::vector<Action> actions;
    for (int i = 0; i < count; ++i) {
        const ActionKind kind = urn[random() % urn.size()];
        actions.push_back({kind, static_cast<std::uint32_t>(random())});
    }
    return actions;
}

// A line for each action, as a test could be written from it.
inline std::string Describe(const std::vector<Action>& actions) {
    std::string text;
    for (const Action& action : actions) {
        text += std::string("  ") + kActions[static_cast<std::size_t>(action.kind)].name + ' ' +
                std::to_string(action.choice) + '\n';
    }
    return text;
}
