// What libFuzzer calls. One program a target, named by TALVENOR_FUZZ_TARGET.
#include "tests/fuzz/fuzz_targets.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const FuzzTarget* const target =
        std::ranges::find(kFuzzTargets, std::string_view(TALVENOR_FUZZ_TARGET), &FuzzTarget::name);
    target->run(FuzzInput({reinterpret_cast<const char*>(data), size}));
    return 0;
}
