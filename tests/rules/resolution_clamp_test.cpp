// What becomes of a resolution when its edit is left.
#include "ui/resolution_clamp.h"

#include <gtest/gtest.h>

#include <string>

namespace {

struct ResolutionCase {
    const char* name;
    std::wstring_view typed;
};

std::string NameOfCase(const testing::TestParamInfo<ResolutionCase>& info) {
    return info.param.name;
}

constexpr ResolutionCase kTooLow[] = {
    {"Zero", L"0"},
    {"One", L"1"},
    {"Seven", L"7"},
    {"Nine", L"9"},
    {"Fifty", L"50"},
    {"JustBelow", L"71"},
    {"ZerosBefore", L"0071"},
    {"ManyZeros", L"00000000000000000000"},
    {"LettersBehind", L"71dpi"},
    {"DigitsBehindABlank", L"7 300"},
    {"DigitsBehindAPoint", L"7.300"},
    {"Letters", L"abc"},
    {"LetterFirst", L"x300"},
    {"Blank", L" "},
    {"BlankFirst", L" 300"},
    {"MinusFirst", L"-300"},
    {"PlusFirst", L"+300"},
    {"CharacterBeforeZero", L"/300"},
    {"CharacterAfterNine", L":300"},
    {"CharacterBeforeZeroLater", L"30/"},
    {"CharacterAfterNineLater", L"30:"},
    {"DigitsOfAnotherScript", L"\u0663\u0660\u0660"},
    {"NoTerminatorNeeded", std::wstring_view(L"300", 2)},
    {"EndsAtANull", std::wstring_view(L"30\0009", 4)},
};

class ResolutionTooLowTest : public testing::TestWithParam<ResolutionCase> {};

TEST_P(ResolutionTooLowTest, BecomesTheLowest) {
    EXPECT_EQ(ClampResolution(GetParam().typed), L"72");
}

INSTANTIATE_TEST_SUITE_P(ClampResolution, ResolutionTooLowTest, testing::ValuesIn(kTooLow), NameOfCase);

constexpr ResolutionCase kTooHigh[] = {
    {"JustAbove", L"6001"},
    {"SevenThousand", L"7000"},
    {"NineThousand", L"9000"},
    {"FiveDigits", L"10000"},
    {"OneDigitMoreThanTheHighest", L"60000"},
    {"ZerosBefore", L"0000006001"},
    {"LettersBehind", L"6001dpi"},
    {"JustAboveSigned", L"2147483648"},
    // In 32 and in 64 bits these would come round to 0, 100 and 300.
    {"ZeroAfterTheWrap", L"4294967296"},
    {"AllowedAfterTheWrap", L"4294967396"},
    {"AllowedAfterTheLongWrap", L"18446744073709551916"},
    {"OneAndTwentyZeros", L"100000000000000000000"},
    {"FortyNines", L"9999999999999999999999999999999999999999"},
};

class ResolutionTooHighTest : public testing::TestWithParam<ResolutionCase> {};

TEST_P(ResolutionTooHighTest, BecomesTheHighest) {
    EXPECT_EQ(ClampResolution(GetParam().typed), L"6000");
}

INSTANTIATE_TEST_SUITE_P(ClampResolution, ResolutionTooHighTest, testing::ValuesIn(kTooHigh), NameOfCase);

constexpr ResolutionCase kAllowed[] = {
    {"Empty", L""},
    {"NoText", std::wstring_view()},
    {"Lowest", L"72"},
    {"JustAboveTheLowest", L"73"},
    {"Default", L"300"},
    {"AllDigits", L"1980"},
    {"OtherDigits", L"5467"},
    {"JustBelowTheHighest", L"5999"},
    {"Highest", L"6000"},
    {"LowestAfterZeros", L"00072"},
    {"HighestAfterZeros", L"0000000000006000"},
    {"LettersBehind", L"300dpi"},
    {"DigitsBehindABlank", L"300 0"},
    {"DigitsBehindALetter", L"6000x1"},
    {"NoTerminatorNeeded", std::wstring_view(L"60001", 4)},
};

class ResolutionAllowedTest : public testing::TestWithParam<ResolutionCase> {};

TEST_P(ResolutionAllowedTest, StaysAsTyped) {
    EXPECT_EQ(ClampResolution(GetParam().typed), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(ClampResolution, ResolutionAllowedTest, testing::ValuesIn(kAllowed), NameOfCase);

TEST(ClampResolution, ReturnsTextsThatEndInANull) {
    EXPECT_STREQ(ClampResolution(L"1").value_or(L"").data(), L"72");
    EXPECT_STREQ(ClampResolution(L"9999").value_or(L"").data(), L"6000");
}

TEST(DefaultResolution, IsAllowedItself) {
    EXPECT_STREQ(kDefaultResolution, L"300");
    EXPECT_EQ(ClampResolution(kDefaultResolution), std::nullopt);
}

}  // namespace
