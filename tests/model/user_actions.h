// What a random user does, as data: a sequence can be replayed, printed and shortened.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

enum class ActionKind {
    Drop,
    AddByDialog,
    Clear,
    SelectRow,
    DeleteKey,
    ClickBox,
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
    Count
};

struct Action {
    ActionKind kind;
    std::uint32_t choice;  // which row, box, text... : taken modulo what there is
};

// The same sequence for the same seed, on every machine.
std::vector<Action> RandomActions(std::uint32_t seed, int count);

// A line for each action, as a test could be written from it.
std::string Describe(const std::vector<Action>& actions);
