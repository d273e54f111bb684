// What becomes of a resolution when its edit is left.
#include "ui/resolution_clamp.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace std::string_view_literals;

TEST(ClampResolution, MakesTheLowestOrTheHighestOfEveryNumberBeyond) {
    for (int number = 0; number <= 100'000; ++number) {
        const std::optional<std::wstring_view> clamped = ClampResolution(std::to_wstring(number));
        if (number < 72) {
            ASSERT_EQ(clamped, L"72") << number;
        } else if (number > 6000) {
            ASSERT_EQ(clamped, L"6000") << number;
        } else {
            ASSERT_EQ(clamped, std::nullopt) << number;
        }
    }
}

// The leading digits count, and nothing else; as many zeros as anybody likes may be in front of them.
TEST(ClampResolution, MakesTheLowestOfWhatIsTooLow) {
    for (const std::wstring_view typed :
         {L"0071"sv, L"00000000000000000000"sv, L"71dpi"sv, L"7 300"sv, L"7.300"sv, L"abc"sv, L"x300"sv,
          L" "sv, L" 300"sv, L"-300"sv, L"+300"sv, L"/300"sv, L":300"sv, L"30/"sv, L"30:"sv,
          L"\u0663\u0660\u0660"sv, L"300"sv.substr(0, 2), L"30\0009"sv}) {
        EXPECT_EQ(ClampResolution(typed), L"72") << testing::PrintToString(std::wstring(typed));
    }
}

// In 32 and in 64 bits some of these would come round to 0, 100 and 300.
TEST(ClampResolution, MakesTheHighestOfWhatIsTooHigh) {
    for (const std::wstring_view typed :
         {L"0000006001"sv, L"6001dpi"sv, L"2147483648"sv, L"4294967296"sv, L"4294967396"sv,
          L"18446744073709551916"sv, L"100000000000000000000"sv,
          L"9999999999999999999999999999999999999999"sv}) {
        EXPECT_EQ(ClampResolution(typed), L"6000") << testing::PrintToString(std::wstring(typed));
    }
}

TEST(ClampResolution, LeavesWhatIsAllowed) {
    for (const std::wstring_view typed : {L""sv, std::wstring_view(), L"00072"sv, L"0000000000006000"sv,
                                          L"300dpi"sv, L"300 0"sv, L"6000x1"sv, L"60001"sv.substr(0, 4)}) {
        EXPECT_EQ(ClampResolution(typed), std::nullopt) << testing::PrintToString(std::wstring(typed));
    }
}

TEST(ClampResolution, ReturnsTextsThatEndInANull) {
    EXPECT_STREQ(ClampResolution(L"1").value_or(L"").data(), L"72");
    EXPECT_STREQ(ClampResolution(L"9999").value_or(L"").data(), L"6000");
}

TEST(DefaultResolution, IsAllowedItself) {
    EXPECT_STREQ(kDefaultResolution, L"300");
    EXPECT_EQ(ClampResolution(kDefaultResolution), std::nullopt);
}

}  // namespace
