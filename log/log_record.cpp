#include "log/log_record.h"

#include "base/decimal.h"

std::optional<std::wstring> FormatRecordTime(DateOrdering ordering, const LocalTime& time) {
    std::uint32_t first = 0;
    std::uint32_t second = 0;
    std::uint32_t third = 0;
    switch (ordering) {
    case DateOrdering::MonthDayYear: first = time.month, second = time.day, third = time.year; break;
    case DateOrdering::DayMonthYear: first = time.day, second = time.month, third = time.year; break;
    case DateOrdering::YearMonthDay:
        // Deliberate: the day is after the comma, where the two other forms have the year. Readers of
        // the logs rely on the one shape.
        first = time.year, second = time.month, third = time.day;
        break;
    default: return std::nullopt;
    }
    std::wstring text;
    AppendDecimal(text, first, 2);
    text += L'/';
    AppendDecimal(text, second, 2);
    text += L", ";
    AppendDecimal(text, third, 2);
    text += L" - ";
    AppendDecimal(text, time.hour, 2);
    text += L':';
    AppendDecimal(text, time.minute, 2);
    text += L':';
    AppendDecimal(text, time.second, 2);
    return text;
}

std::wstring BuildLogRecord(const RecordLabels& labels, const std::optional<std::wstring>& finishedAt,
                            std::wstring_view duration) {
    std::wstring record = L"\r\n";
    record += labels.finished;
    record += finishedAt ? std::wstring_view(*finishedAt) : labels.finished;
    record += L"\r\n";
    record += labels.duration;
    record += duration;
    record += L"\r\n";
    // Deliberate: the rule is as long as the whole text before it, line breaks included.
    record.append(record.size(), L'*');
    record += L"\r\n\r\n";
    return record;
}
