// Durations against those that are reckoned in 64 bits.
#include "tests/fuzz/fuzz_targets.h"

#include "log/elapsed_time.h"

// Lines: start, end and stored end tick, whether the batch runs (0: no), the mark of a cancelled file.
void FuzzElapsedTime(FuzzInput input) {
    constexpr std::uint64_t kAllTicks = std::uint64_t{1} << 32;
    const std::uint32_t start = input.Number();
    const std::uint32_t end = input.Number();
    const std::uint32_t stored = input.Number();
    const bool running = input.Number() != 0;
    const std::wstring mark = input.Text();

    // In 64 bits only the difference of the ticks wraps.
    const std::uint64_t seconds = (end + kAllTicks - start) % kAllTicks / 1000;
    const std::wstring elapsed =
        Digits(seconds / 3600, 2) + L":" + Digits(seconds / 60 % 60, 2) + L":" + Digits(seconds % 60, 2);
    Require(FormatElapsedTime(start, end) == elapsed, "another time");
    Require(FormatDuration(running, start, end, UnterminatedText(mark).View()) == (running ? elapsed : mark),
            "another duration");
    Require(DurationEnd(end, stored) == (end == 0 ? stored : end), "another end");
}
