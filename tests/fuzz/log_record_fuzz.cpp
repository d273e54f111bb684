// Records of the log against those that are put together from their parts.
#include "tests/fuzz/fuzz_targets.h"

#include "log/log_record.h"

namespace {

// The date by the places in which the ordering has its parts.
std::wstring TimeText(DateOrdering ordering, const LocalTime& time) {
    const std::uint32_t dates[3][3] = {{time.month, time.day, time.year},
                                       {time.day, time.month, time.year},
                                       {time.year, time.month, time.day}};
    const auto& date = dates[static_cast<std::uint32_t>(ordering)];
    return Digits(date[0], 2) + L"/" + Digits(date[1], 2) + L", " + Digits(date[2], 2) + L" - " +
           Digits(time.hour, 2) + L":" + Digits(time.minute, 2) + L":" + Digits(time.second, 2);
}

// The rule is as long as all that comes before it.
std::wstring Record(const RecordLabels& labels, const std::wstring& finishedAt,
                    const std::wstring& duration) {
    std::wstring text = L"\r\n";
    text.append(labels.finished).append(finishedAt).append(L"\r\n");
    text.append(labels.duration).append(duration).append(L"\r\n");
    return text + std::wstring(text.size(), L'*') + L"\r\n\r\n";
}

}  // namespace

// Lines: ordering, year, month, day, hour, minute, second; both labels; the duration; a time as a text.
void FuzzLogRecord(FuzzInput input) {
    const auto ordering = static_cast<DateOrdering>(input.Number());
    LocalTime time;
    for (std::uint32_t* value :
         {&time.year, &time.month, &time.day, &time.hour, &time.minute, &time.second}) {
        *value = input.Number();
    }
    const std::wstring finishedLabel = input.Text();
    const std::wstring durationLabel = input.Text();
    const std::wstring duration = input.Text();
    const std::wstring timeText = input.Text();

    const std::optional<std::wstring> finishedAt = FormatRecordTime(ordering, time);
    const bool isKnown = ordering <= DateOrdering::YearMonthDay;
    Require(finishedAt.has_value() == isKnown, "known and unknown orderings");
    Require(!isKnown || finishedAt == TimeText(ordering, time), "another time");

    const UnterminatedText finishedLabelText(finishedLabel);
    const UnterminatedText durationLabelText(durationLabel);
    const UnterminatedText durationText(duration);
    const RecordLabels labels = {finishedLabelText.View(), durationLabelText.View()};
    for (const auto& at : {finishedAt, std::optional(timeText)}) {
        Require(BuildLogRecord(labels, at, durationText.View()) ==
                    Record(labels, at.value_or(finishedLabel), duration),
                "another record");
    }
}
