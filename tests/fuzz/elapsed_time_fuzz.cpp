// Durations, read back as seconds.
#include "tests/fuzz/fuzz_targets.h"

#include "log/elapsed_time.h"
#include "tests/fuzz/fuzz_input.h"

namespace {

std::uint64_t SecondsOf(std::wstring_view text) {
    TextReader reader(text);
    const std::uint64_t hours = reader.TakeNumber(2);
    Require(reader.Take(L":"), "no colon behind the hours");
    const std::uint64_t minutes = reader.TakeNumber(2);
    Require(reader.Take(L":"), "no colon behind the minutes");
    const std::uint64_t seconds = reader.TakeNumber(2);
    Require(reader.AtEnd(), "something follows the seconds");
    Require(minutes < 60 && seconds < 60, "more than 59 minutes or seconds");
    return hours * 3600 + minutes * 60 + seconds;
}

}  // namespace

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
    const std::uint64_t elapsedMs = (end + kAllTicks - start) % kAllTicks;
    const std::wstring elapsed = FormatElapsedTime(start, end);
    Require(SecondsOf(elapsed) == elapsedMs / 1000, "another time");
    Require(FormatDuration(running, start, end, UnterminatedText(mark).View()) == (running ? elapsed : mark),
            "another duration");

    const std::uint32_t durationEnd = DurationEnd(end, stored);
    Require(end == 0 ? durationEnd == stored : durationEnd == end, "another end");
}
