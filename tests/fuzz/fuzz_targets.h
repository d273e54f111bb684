// The rules under the fuzzer. A target feeds arbitrary input to one rule and holds what comes out against an
// oracle: a second way to say the same, with the library and 64 bits, or the inputs read back.
#pragma once

#include <string_view>

void FuzzCommandLine(std::string_view input);
void FuzzDecimal(std::string_view input);
void FuzzDropFilter(std::string_view input);
void FuzzElapsedTime(std::string_view input);
void FuzzLogRecord(std::string_view input);
void FuzzOpenFileSelection(std::string_view input);
void FuzzResolutionClamp(std::string_view input);
void FuzzVersionText(std::string_view input);

struct FuzzTarget {
    const char* name;                     // of the rule's file, and of the folder in corpus/
    void (*run)(std::string_view input);  // throws std::logic_error when rule and oracle differ
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
