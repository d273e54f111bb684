// One record of the conversion log.
#include "log/log_record.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace {

constexpr RecordLabels kLabels = {L"Terminé le : ", L"*** Durée de conversion (hh:mm:ss) : "};

struct RecordTimeCase {
    const char* name;
    DateOrdering ordering;
    LocalTime time;
    const wchar_t* text;
};

// By the numbers that the system has for the orderings.
constexpr RecordTimeCase kRecordTimes[] = {
    {"MonthDayYear", DateOrdering{0}, {2026, 11, 16, 14, 5, 9}, L"11/16, 2026 - 14:05:09"},
    {"DayMonthYear", DateOrdering{1}, {2026, 11, 16, 14, 5, 9}, L"16/11, 2026 - 14:05:09"},
    {"YearMonthDay", DateOrdering{2}, {2026, 11, 16, 14, 5, 9}, L"2026/11, 16 - 14:05:09"},
    {"MonthDayYearWithSingleDigits", DateOrdering{0}, {2026, 1, 2, 3, 4, 5}, L"01/02, 2026 - 03:04:05"},
    {"DayMonthYearWithSingleDigits", DateOrdering{1}, {2026, 1, 2, 3, 4, 5}, L"02/01, 2026 - 03:04:05"},
    {"YearMonthDayWithSingleDigits", DateOrdering{2}, {2026, 1, 2, 3, 4, 5}, L"2026/01, 02 - 03:04:05"},
    {"Midnight", DateOrdering{1}, {2026, 12, 31, 0, 0, 0}, L"31/12, 2026 - 00:00:00"},
    {"LastSecondOfTheDay", DateOrdering{1}, {1999, 12, 31, 23, 59, 59}, L"31/12, 1999 - 23:59:59"},
    {"LastYearOfTheSystem", DateOrdering{0}, {30827, 9, 10, 1, 10, 11}, L"09/10, 30827 - 01:10:11"},
};

TEST(FormatRecordTime, FollowsTheOrderingOfTheLocale) {
    for (const RecordTimeCase& row : kRecordTimes) {
        EXPECT_EQ(FormatRecordTime(row.ordering, row.time), row.text) << row.name;
    }
}

TEST(FormatRecordTime, IsNothingForAnUnknownOrdering) {
    for (const std::uint32_t ordering : {3u, 4u, 0x100u, 0x10001u, 0xFFFFFFFFu}) {
        EXPECT_EQ(FormatRecordTime(DateOrdering{ordering}, {2026, 11, 16, 14, 5, 9}), std::nullopt)
            << ordering;
    }
}

TEST(BuildLogRecord, IsTheWholeTextForAConvertedFile) {
    EXPECT_EQ(BuildLogRecord(kLabels, L"16/11, 2026 - 14:05:09", L"00:01:23"),
              L"\r\n"
              L"Terminé le : 16/11, 2026 - 14:05:09\r\n"
              L"*** Durée de conversion (hh:mm:ss) : 00:01:23\r\n"
              L"**************************************************************************************\r\n"
              L"\r\n");
}

TEST(BuildLogRecord, WritesTheLabelTwiceWithoutATimeAndOnceWithAnEmptyOne) {
    EXPECT_EQ(BuildLogRecord(kLabels, std::nullopt, L"00:01:23"),
              L"\r\n"
              L"Terminé le : Terminé le : \r\n"
              L"*** Durée de conversion (hh:mm:ss) : 00:01:23\r\n"
              L"*****************************************************************************\r\n"
              L"\r\n");
    EXPECT_EQ(BuildLogRecord(kLabels, L"", L"00:01:23"),
              L"\r\n"
              L"Terminé le : \r\n"
              L"*** Durée de conversion (hh:mm:ss) : 00:01:23\r\n"
              L"****************************************************************\r\n"
              L"\r\n");
}

TEST(BuildLogRecord, KeepsItsShapeWithoutAnyText) {
    EXPECT_EQ(BuildLogRecord({}, L"", L""), L"\r\n\r\n\r\n******\r\n\r\n");
    EXPECT_EQ(BuildLogRecord({}, std::nullopt, L""), L"\r\n\r\n\r\n******\r\n\r\n");
}

TEST(BuildLogRecord, ReadsNoTextBeyondItsEnd) {
    const RecordLabels labels = {std::wstring_view(L"ab", 1), std::wstring_view(L"cd", 1)};
    EXPECT_EQ(BuildLogRecord(labels, L"t", std::wstring_view(L"ef", 1)),
              L"\r\nat\r\nce\r\n**********\r\n\r\n");
}

TEST(BuildLogRecord, EndsInARuleAsLongAsTheWholeTextBeforeIt) {
    static constexpr struct {
        const wchar_t* finishedAt;
        const wchar_t* duration;
        std::ptrdiff_t asterisks;
    } kCases[] = {{L"", L"", 6},  // two for each line break
                  {L"abc", L"de", 11},
                  {L"é", L"", 7},
                  {L"\xD83D\xDE00", L"", 8}};  // two units of the system's are counted as two
    for (const auto& row : kCases) {
        const std::wstring record = BuildLogRecord({L"", L""}, row.finishedAt, row.duration);
        EXPECT_EQ(std::ranges::count(record, L'*'), row.asterisks) << record;
    }
}

}  // namespace
