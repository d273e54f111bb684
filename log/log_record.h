// One record of the conversion log as text. Rules only: time, locale and labels come by argument.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

struct LocalTime {
    std::uint32_t year = 0;  // in full
    std::uint32_t month = 0;
    std::uint32_t day = 0;
    std::uint32_t hour = 0;
    std::uint32_t minute = 0;
    std::uint32_t second = 0;
};

// Short-date ordering of a locale, with the values that the system has for LOCALE_IDATE.
enum class DateOrdering : std::uint32_t { MonthDayYear = 0, DayMonthYear = 1, YearMonthDay = 2 };

// "a/b, c - hh:mm:ss", with day, month and year in the order asked for; nothing for an unknown ordering.
[[nodiscard]] std::optional<std::wstring> FormatRecordTime(DateOrdering ordering, const LocalTime& time);

// The texts around the two values of a record.
struct RecordLabels {
    std::wstring_view finished;
    std::wstring_view duration;
};

// The whole record, from the line break before it to the blank line after it. Without `finishedAt` its label
// is written a second time in its place.
[[nodiscard]] std::wstring BuildLogRecord(const RecordLabels& labels,
                                          const std::optional<std::wstring>& finishedAt,
                                          std::wstring_view duration);
