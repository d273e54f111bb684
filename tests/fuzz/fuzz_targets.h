// The rules under the fuzzer. A target feeds arbitrary input to one rule and holds what comes out against an
// oracle: a second way to say the same, with the library and 64 bits, or the inputs read back.
#pragma once

#include "tests/fuzz/fuzz_input.h"

void FuzzCommandLine(FuzzInput input);
void FuzzDecimal(FuzzInput input);
void FuzzDropFilter(FuzzInput input);
void FuzzElapsedTime(FuzzInput input);
void FuzzLogRecord(FuzzInput input);
void FuzzOpenFileSelection(FuzzInput input);
void FuzzResolutionClamp(FuzzInput input);
void FuzzVersionText(FuzzInput input);

struct FuzzTarget {
    const char* name;              // of the rule's file, and of the folder in corpus/
    void (*run)(FuzzInput input);  // throws std::logic_error when rule and oracle differ
};

inline constexpr FuzzTarget kFuzzTargets[] = {
    {"command_line", &FuzzCommandLine},
    {"decimal", &FuzzDecimal},
    {"drop_filter", &FuzzDropFilter},
    {"elapsed_time", &FuzzElapsedTime},
    {"log_record", &FuzzLogRecord},
    {"open_file_selection", &FuzzOpenFileSelection},
    {"resolution_clamp", &FuzzResolutionClamp},
    {"version_text", &FuzzVersionText},
};
