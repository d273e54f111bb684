#include "ui/resolution_clamp.h"

#include <algorithm>
#include <cstdint>

std::optional<std::wstring_view> ClampResolution(std::wstring_view typed) noexcept {
    constexpr std::uint32_t kLowest = 72;
    constexpr std::uint32_t kHighest = 6000;
    if (typed.empty()) return std::nullopt;
    std::uint32_t value = 0;
    for (const wchar_t character : typed) {
        if (character < L'0' || character > L'9') break;
        const auto digit = static_cast<std::uint32_t>(character - L'0');
        value = std::min(value * 10 + digit, kHighest + 1);  // too high is all that matters beyond
    }
    if (value < kLowest) return L"72";
    if (value > kHighest) return L"6000";
    return std::nullopt;
}
