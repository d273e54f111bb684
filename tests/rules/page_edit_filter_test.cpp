// What the page edit lets through.
#include "ui/page_edit_filter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

namespace {

using testing::ElementsAre;

// All codes that the filter lets through, of those that a window could send and of many more.
std::vector<unsigned> Accepted(bool (*filter)(unsigned) noexcept) {
    std::vector<unsigned> accepted;
    for (unsigned code = 0; code <= 0x110000; ++code) {
        if (filter(code)) accepted.push_back(code);
    }
    for (const unsigned code : {0xFFFFFFF8u, 0xFFFFFFFFu}) {
        if (filter(code)) accepted.push_back(code);
    }
    return accepted;
}

TEST(PageEditAcceptsCharacter, TakesWhatPageListsAreMadeOfAndBackspace) {
    EXPECT_THAT(Accepted(&PageEditAcceptsCharacter),
                ElementsAre(8u, 44u, 45u, 48u, 49u, 50u, 51u, 52u, 53u, 54u, 55u, 56u, 57u));
}

TEST(PageEditAcceptsKey, TakesTheKeysWithTheCodesOfTheCharactersAndFourMore) {
    // Backspace, left, right, print screen, insert, delete and the digits of the main keyboard.
    EXPECT_THAT(Accepted(&PageEditAcceptsKey),
                ElementsAre(8u, 37u, 39u, 44u, 45u, 46u, 48u, 49u, 50u, 51u, 52u, 53u, 54u, 55u, 56u, 57u));
}

}  // namespace
