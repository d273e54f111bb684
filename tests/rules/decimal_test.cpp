// Numbers as decimal text.
#include "base/decimal.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

namespace {

struct DecimalCase {
    const char* name;
    std::uint32_t value;
    int minimumDigits;
    const wchar_t* text;
};

constexpr DecimalCase kNumbers[] = {
    {"Zero", 0, 1, L"0"},
    {"ZeroWithoutAMinimum", 0, 0, L"0"},
    {"ZeroInTwoDigits", 0, 2, L"00"},
    {"Nine", 9, 1, L"9"},
    {"NineInTwoDigits", 9, 2, L"09"},
    {"Ten", 10, 1, L"10"},
    {"TenInTwoDigits", 10, 2, L"10"},
    {"SevenInFourDigits", 7, 4, L"0007"},
    {"NinetyNineInTwoDigits", 99, 2, L"99"},
    {"AHundredInTwoDigits", 100, 2, L"100"},
    {"InnerZeros", 1'002'003'040, 1, L"1002003040"},
    {"LargestSigned", 0x7FFFFFFFu, 1, L"2147483647"},
    {"SmallestAboveSigned", 0x80000000u, 1, L"2147483648"},
    {"Largest", 0xFFFFFFFFu, 1, L"4294967295"},
    {"LargestInTenDigits", 0xFFFFFFFFu, 10, L"4294967295"},
    {"LargestInTwelveDigits", 0xFFFFFFFFu, 12, L"004294967295"},
};

TEST(AppendDecimal, WritesTheValueWithLeadingZeros) {
    for (const DecimalCase& row : kNumbers) {
        std::wstring text;
        AppendDecimal(text, row.value, row.minimumDigits);
        EXPECT_EQ(text, row.text) << row.name;
    }
}

TEST(AppendDecimal, PadsNothingUnlessAskedTo) {
    std::wstring text;
    AppendDecimal(text, 5);
    EXPECT_EQ(text, L"5");
}

TEST(AppendDecimal, LeavesWhatIsThere) {
    std::wstring text = L"12:";
    AppendDecimal(text, 3, 2);
    AppendDecimal(text, 45, 1);
    EXPECT_EQ(text, L"12:0345");
}

}  // namespace
