// The duration of a conversion as text.
#include "log/elapsed_time.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

namespace {

struct ElapsedCase {
    const char* name;
    std::uint32_t startTick;
    std::uint32_t endTick;
    const wchar_t* text;
};

constexpr ElapsedCase kDurations[] = {
    {"NoTime", 0, 0, L"00:00:00"},
    {"NoTimeLateInTheDay", 86'400'000, 86'400'000, L"00:00:00"},
    {"LastMillisecondOfTheFirstSecond", 0, 999, L"00:00:00"},
    {"OneSecond", 0, 1'000, L"00:00:01"},
    {"PartOfASecondIsDropped", 0, 1'999, L"00:00:01"},
    {"PartOfASecondIsOfTheDifference", 999, 1'998, L"00:00:00"},
    {"LastSecondOfTheFirstMinute", 0, 59'999, L"00:00:59"},
    {"OneMinute", 0, 60'000, L"00:01:00"},
    {"MinuteAndSeconds", 5'000, 88'456, L"00:01:23"},
    {"LastSecondOfTheFirstHour", 0, 3'599'999, L"00:59:59"},
    {"OneHour", 0, 3'600'000, L"01:00:00"},
    {"HourMinutesAndSeconds", 0, 3'725'000, L"01:02:05"},
    {"LastSecondOfTheFirstDay", 0, 86'399'999, L"23:59:59"},
    {"HoursGoOnAfterADay", 0, 86'400'000, L"24:00:00"},
    {"LastSecondWithTwoDigitsOfHours", 0, 359'999'999, L"99:59:59"},
    {"ThreeDigitsOfHours", 0, 360'000'000, L"100:00:00"},
    {"HalfOfAllTicks", 0, 0x80000000u, L"596:31:23"},
    {"LongestDifference", 0, 0xFFFFFFFFu, L"1193:02:47"},
    {"LongestDifferenceAcrossTheWrap", 1, 0, L"1193:02:47"},
    {"AcrossTheWrap", 0xFFFFFF00u, 0x00000300u, L"00:00:01"},
    {"FromTheLastTickToTheFirst", 0xFFFFFFFFu, 0, L"00:00:00"},
    {"OneSecondAfterTheLastTick", 0xFFFFFFFFu, 999, L"00:00:01"},
    {"AnHourAcrossTheWrap", 0xFFFFFFFFu - 1'799'999u, 1'800'000, L"01:00:00"},
};

TEST(FormatElapsedTime, ShowsHoursMinutesAndSeconds) {
    for (const ElapsedCase& row : kDurations) {
        EXPECT_EQ(FormatElapsedTime(row.startTick, row.endTick), row.text) << row.name;
    }
}

TEST(FormatDuration, IsTheElapsedTimeWhileTheBatchRuns) {
    EXPECT_EQ(FormatDuration(true, 1'000, 84'000, L"*** Annulé !"), L"00:01:23");
    EXPECT_EQ(FormatDuration(true, 0xFFFFFFFFu, 999, L"*** Annulé !"), L"00:00:01");
}

TEST(FormatDuration, IsTheMarkOnceTheBatchIsStopped) {
    EXPECT_EQ(FormatDuration(false, 1'000, 84'000, L"*** Annulé !"), L"*** Annulé !");
    EXPECT_EQ(FormatDuration(false, 0, 0, L"*** Annulé !"), L"*** Annulé !");
    EXPECT_EQ(FormatDuration(false, 1'000, 84'000, L""), L"");
    EXPECT_EQ(FormatDuration(false, 0, 0, std::wstring_view(L"*** Annulé !", 3)), L"***");
}

TEST(DurationEnd, IsTheTickGivenOrTheStoredOneWhenThatIsZero) {
    EXPECT_EQ(DurationEnd(84'000, 5'000), 84'000u);
    EXPECT_EQ(DurationEnd(1, 5'000), 1u);
    EXPECT_EQ(DurationEnd(0xFFFFFFFFu, 5'000), 0xFFFFFFFFu);
    EXPECT_EQ(DurationEnd(84'000, 0), 84'000u);
    EXPECT_EQ(DurationEnd(0, 5'000), 5'000u);
    EXPECT_EQ(DurationEnd(0, 0), 0u);
}

}  // namespace
