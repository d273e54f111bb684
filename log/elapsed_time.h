// The duration of one conversion as text. Ticks are milliseconds of GetTickCount: unsigned 32-bit, so that
// a difference is right across the wrap every 49.7 days.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// "hh:mm:ss" from `startTick` to `endTick`, part of a second dropped. Two digits are a minimum for the hours.
[[nodiscard]] std::wstring FormatElapsedTime(std::uint32_t startTick, std::uint32_t endTick);

// The text of the duration column: the elapsed time while the batch runs, `cancelledMark` once it does not.
[[nodiscard]] std::wstring FormatDuration(bool running, std::uint32_t startTick, std::uint32_t endTick,
                                          std::wstring_view cancelledMark);

// The tick at which a duration ends: `now`, or the stored end of the file when `now` is 0.
[[nodiscard]] constexpr std::uint32_t DurationEnd(std::uint32_t now, std::uint32_t storedEnd) noexcept {
    return now != 0 ? now : storedEnd;
}
