#include "log/elapsed_time.h"

#include "base/decimal.h"

std::wstring FormatElapsedTime(std::uint32_t startTick, std::uint32_t endTick) {
    const std::uint32_t seconds = (endTick - startTick) / 1000;
    std::wstring text;
    AppendDecimal(text, seconds / 3600, 2);
    text += L':';
    AppendDecimal(text, seconds % 3600 / 60, 2);
    text += L':';
    AppendDecimal(text, seconds % 60, 2);
    return text;
}

std::wstring FormatDuration(bool running, std::uint32_t startTick, std::uint32_t endTick,
                            std::wstring_view cancelledMark) {
    if (!running) return std::wstring(cancelledMark);
    return FormatElapsedTime(startTick, endTick);
}
