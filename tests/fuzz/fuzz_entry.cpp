// What libFuzzer calls. One program a target, named by TALVENOR_FUZZ_TARGET.
#include "tests/fuzz/fuzz_targets.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const auto target =
        std::ranges::find(FuzzTargets(), std::string_view(TALVENOR_FUZZ_TARGET),
                          [](const FuzzTarget& candidate) { return std::string_view(candidate.name); });
    target->run({reinterpret_cast<const char*>(data), size});
    return 0;
}
