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
    return accepted;
}

TEST(PageEditAcceptsCharacter, TakesWhatPageListsAreMadeOfAndBackspace) {
    EXPECT_THAT(Accepted(&PageEditAcceptsCharacter),
                ElementsAre(8u, 44u, 45u, 48u, 49u, 50u, 51u, 52u, 53u, 54u, 55u, 56u, 57u));
}

TEST(PageEditAcceptsCharacter, RefusesLettersSeparatorsAndShortcuts) {
    constexpr unsigned kCtrlC = 3;
    constexpr unsigned kTab = 9;
    constexpr unsigned kEnter = 13;
    constexpr unsigned kCtrlV = 22;
    constexpr unsigned kArabicIndicOne = 0x661;
    constexpr unsigned kFullwidthOne = 0xFF11;
    for (const unsigned character :
         {unsigned{'a'}, unsigned{' '}, unsigned{'.'}, unsigned{'/'}, unsigned{':'}, unsigned{';'},
          unsigned{'+'}, unsigned{'\''}, kCtrlC, kTab, kEnter, kCtrlV, kArabicIndicOne, kFullwidthOne,
          0xFFFFFFFFu, 0xFFFFFFF8u}) {
        EXPECT_FALSE(PageEditAcceptsCharacter(character)) << character;
    }
}

TEST(PageEditAcceptsKey, TakesTheKeysWithTheCodesOfTheCharactersAndFourMore) {
    // Backspace, left, right, print screen, insert, delete and the digits of the main keyboard.
    EXPECT_THAT(Accepted(&PageEditAcceptsKey),
                ElementsAre(8u, 37u, 39u, 44u, 45u, 46u, 48u, 49u, 50u, 51u, 52u, 53u, 54u, 55u, 56u, 57u));
}

TEST(PageEditAcceptsKey, RefusesTheOtherKeysOfMovementAndTheNumericKeypad) {
    constexpr unsigned kEnd = 35;
    constexpr unsigned kHome = 36;
    constexpr unsigned kUp = 38;
    constexpr unsigned kDown = 40;
    constexpr unsigned kKeypad0 = 96;
    constexpr unsigned kKeypad9 = 105;
    constexpr unsigned kCommaKey = 0xBC;
    constexpr unsigned kMinusKey = 0xBD;
    for (const unsigned key :
         {kEnd, kHome, kUp, kDown, kKeypad0, kKeypad9, kCommaKey, kMinusKey, 0xFFFFFFFFu}) {
        EXPECT_FALSE(PageEditAcceptsKey(key)) << key;
    }
}

}  // namespace
