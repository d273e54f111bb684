// The drop filter against the two characters that may be in each place.
#include "tests/fuzz/fuzz_targets.h"

#include "ui/drop_filter.h"

// Lines: extensions.
void FuzzDropFilter(FuzzInput input) {
    constexpr std::wstring_view kAllowed[] = {L".", L"pP", L"dD", L"fF"};
    do {
        const std::wstring extension = input.Text();
        bool allowed = extension.size() == 4;
        for (std::size_t i = 0; allowed && i < 4; ++i) {
            allowed = kAllowed[i].find(extension[i]) != std::wstring_view::npos;
        }
        Require(IsPdfExtension(UnterminatedText(extension).View()) == allowed,
                "the filter decides otherwise");
    } while (!input.AtEnd());
}
