#include "ui/drop_filter.h"

#include <cstddef>

bool IsPdfExtension(std::wstring_view extension) noexcept {
    constexpr std::wstring_view kLower = L".pdf";
    constexpr std::wstring_view kUpper = L".PDF";
    if (extension.size() != kLower.size()) return false;
    for (std::size_t i = 0; i < kLower.size(); ++i) {
        if (extension[i] != kLower[i] && extension[i] != kUpper[i]) return false;
    }
    return true;
}
