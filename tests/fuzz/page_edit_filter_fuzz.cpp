// The page edit's filter against lists of what it lets through.
#include "tests/fuzz/fuzz_targets.h"

#include "tests/fuzz/fuzz_input.h"
#include "ui/page_edit_filter.h"

#include <algorithm>

// Lines: codes, each of them as a character and as a key.
void FuzzPageEditFilter(std::string_view input) {
    constexpr std::uint32_t kCharacters[] = {8, 44, 45, 48, 49, 50, 51, 52, 53, 54, 55, 56, 57};
    constexpr std::uint32_t kKeys[] = {8, 37, 39, 44, 45, 46, 48, 49, 50, 51, 52, 53, 54, 55, 56, 57};
    FuzzInput values(input);
    do {
        const std::uint32_t code = values.Number();
        Require(PageEditAcceptsCharacter(code) == std::ranges::binary_search(kCharacters, code),
                "the character filter decides otherwise");
        Require(PageEditAcceptsKey(code) == std::ranges::binary_search(kKeys, code),
                "the key filter decides otherwise");
    } while (!values.AtEnd());
}
