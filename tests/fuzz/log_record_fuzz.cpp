// Records of the log, taken apart.
#include "tests/fuzz/fuzz_targets.h"

#include "log/log_record.h"
#include "tests/fuzz/fuzz_input.h"

namespace {

void RequireTime(std::wstring_view text, DateOrdering ordering, const LocalTime& time) {
    // Which value is in each of the three places of the date.
    const std::uint32_t places[3][3] = {{time.month, time.day, time.year},
                                        {time.day, time.month, time.year},
                                        {time.year, time.month, time.day}};
    const auto& date = places[static_cast<std::uint32_t>(ordering)];
    TextReader reader(text);
    Require(reader.TakeNumber(2) == date[0] && reader.Take(L"/") && reader.TakeNumber(2) == date[1] &&
                reader.Take(L", ") && reader.TakeNumber(2) == date[2],
            "another date");
    Require(reader.Take(L" - ") && reader.TakeNumber(2) == time.hour && reader.Take(L":") &&
                reader.TakeNumber(2) == time.minute && reader.Take(L":") &&
                reader.TakeNumber(2) == time.second && reader.AtEnd(),
            "another time");
}

void RequireRecord(std::wstring_view record, const RecordLabels& labels, std::wstring_view finished,
                   std::wstring_view duration) {
    constexpr std::wstring_view kEnd = L"\r\n\r\n";
    Require(record.ends_with(kEnd), "no blank line at the end");
    record.remove_suffix(kEnd.size());
    Require(record.size() % 2 == 0, "the rule is not half of the record");
    TextReader head(record.substr(0, record.size() / 2));
    const std::wstring_view rule = record.substr(record.size() / 2);
    Require(rule.find_first_not_of(L'*') == std::wstring_view::npos, "not only asterisks in the rule");
    Require(head.Take(L"\r\n") && head.Take(labels.finished) && head.Take(finished) && head.Take(L"\r\n"),
            "another first line");
    Require(head.Take(labels.duration) && head.Take(duration) && head.Take(L"\r\n") && head.AtEnd(),
            "another second line");
}

}  // namespace

// Lines: ordering, year, month, day, hour, minute, second; both labels; the duration; a time as a text.
void FuzzLogRecord(std::string_view input) {
    FuzzInput values(input);
    const auto ordering = static_cast<DateOrdering>(values.Number());
    LocalTime time;
    for (std::uint32_t* value :
         {&time.year, &time.month, &time.day, &time.hour, &time.minute, &time.second}) {
        *value = values.Number();
    }
    const std::wstring finishedLabel = values.Text();
    const std::wstring durationLabel = values.Text();
    const std::wstring duration = values.Text();
    const std::wstring timeText = values.Text();

    const std::optional<std::wstring> finishedAt = FormatRecordTime(ordering, time);
    Require(finishedAt.has_value() == (ordering <= DateOrdering::YearMonthDay),
            "known and unknown orderings");
    if (finishedAt) RequireTime(*finishedAt, ordering, time);

    const UnterminatedText finishedLabelText(finishedLabel);
    const UnterminatedText durationLabelText(durationLabel);
    const UnterminatedText durationText(duration);
    const RecordLabels labels = {finishedLabelText.View(), durationLabelText.View()};
    RequireRecord(BuildLogRecord(labels, finishedAt, durationText.View()), labels,
                  finishedAt.value_or(finishedLabel), duration);
    RequireRecord(BuildLogRecord(labels, timeText, durationText.View()), labels, timeText, duration);
}
