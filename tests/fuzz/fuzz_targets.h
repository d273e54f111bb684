// The rules under the fuzzer. A target feeds arbitrary input to one rule and holds what comes out against an
// oracle: a second way to say the same, with the library and 64 bits, or the inputs read back.
#pragma once

#include <span>
#include <string_view>

struct FuzzTarget {
    const char* name;                     // of the rule's file, and of the folder in corpus/
    void (*run)(std::string_view input);  // throws std::logic_error when rule and oracle differ
};

[[nodiscard]] std::span<const FuzzTarget> FuzzTargets();

void FuzzCommandLine(std::string_view input);
void FuzzDecimal(std::string_view input);
void FuzzDropFilter(std::string_view input);
void FuzzElapsedTime(std::string_view input);
void FuzzLogRecord(std::string_view input);
void FuzzOpenFileSelection(std::string_view input);
void FuzzResolutionClamp(std::string_view input);
void FuzzVersionText(std::string_view input);
