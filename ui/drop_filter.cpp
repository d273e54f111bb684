#include "ui/drop_filter.h"

#include <algorithm>

namespace {

constexpr wchar_t LowerAscii(wchar_t character) noexcept {
    const bool upper = character >= L'A' && character <= L'Z';
    return upper ? static_cast<wchar_t>(character - L'A' + L'a') : character;
}

}  // namespace

bool IsPdfExtension(std::wstring_view extension) noexcept {
    constexpr std::wstring_view kPdf = L".pdf";
    return std::equal(extension.begin(), extension.end(), kPdf.begin(), kPdf.end(),
                      [](wchar_t given, wchar_t wanted) { return LowerAscii(given) == wanted; });
}
