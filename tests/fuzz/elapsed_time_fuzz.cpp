// Durations against those that are reckoned in 64 bits.
#include "tests/fuzz/fuzz_targets.h"

#include "log/elapsed_time.h"
#include "tests/fuzz/fuzz_input.h"

// Lines: start, end and stored end tick, whether the batch runs (0: no), the mark of a cancelled file.
void FuzzElapsedTime(std::string_view input) {
    constexpr std::uint64_t kAllTicks = std::uint64_t{1} << 32;
    FuzzInput values(input);
    const std::uint32_t start = values.Number();
    const std::uint32_t end = values.Number();
    const std::uint32_t stored = values.Number();
    const bool running = values.Number() != 0;
    const std::wstring mark = values.Text();

    // In 64 bits only the difference of the ticks wraps.
    const std::uint64_t seconds = (end + kAllTicks - start) % kAllTicks / 1000;
    const std::wstring elapsed =
        Digits(seconds / 3600, 2) + L":" + Digits(seconds / 60 % 60, 2) + L":" + Digits(seconds % 60, 2);
    Require(FormatElapsedTime(start, end) == elapsed, "another time");
    Require(FormatDuration(running, start, end, UnterminatedText(mark).View()) == (running ? elapsed : mark),
            "another duration");

    const std::uint32_t durationEnd = DurationEnd(end, stored);
    Require(end == 0 ? durationEnd == stored : durationEnd == end, "another end");
}
