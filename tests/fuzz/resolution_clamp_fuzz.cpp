// The clamp against numbers of any length, which are compared as texts.
#include "tests/fuzz/fuzz_targets.h"

#include "ui/resolution_clamp.h"

namespace {

// Whether the number `a` is less than `b`; both of digits alone, without leading zeros.
bool IsLess(std::wstring_view a, std::wstring_view b) {
    return a.size() != b.size() ? a.size() < b.size() : a < b;
}

}  // namespace

// Line 1: the text of the resolution edit.
void FuzzResolutionClamp(FuzzInput input) {
    const std::wstring typed = input.Text();
    std::wstring_view number = typed;
    number = number.substr(0, number.find_first_not_of(L"0123456789"));
    number.remove_prefix(std::min(number.find_first_not_of(L'0'), number.size()));

    const UnterminatedText unterminated(typed);
    const std::optional<std::wstring_view> clamped = ClampResolution(unterminated.View());
    if (typed.empty()) {
        Require(!clamped, "an empty text does not stay");
    } else if (IsLess(number, L"72")) {
        Require(clamped == L"72", "too low, and not the lowest");
    } else if (IsLess(L"6000", number)) {
        Require(clamped == L"6000", "too high, and not the highest");
    } else {
        Require(!clamped, "an allowed text does not stay");
    }
}
