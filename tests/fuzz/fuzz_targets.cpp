#include "tests/fuzz/fuzz_targets.h"

std::span<const FuzzTarget> FuzzTargets() {
    static constexpr FuzzTarget kTargets[] = {
        {"command_line", &FuzzCommandLine},
        {"decimal", &FuzzDecimal},
        {"drop_filter", &FuzzDropFilter},
        {"elapsed_time", &FuzzElapsedTime},
        {"log_record", &FuzzLogRecord},
        {"open_file_selection", &FuzzOpenFileSelection},
        {"resolution_clamp", &FuzzResolutionClamp},
        {"version_text", &FuzzVersionText},
    };
    return kTargets;
}
