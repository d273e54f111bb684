#include "log/conversion_log.h"

#include "base/program_folder.h"
#include "base/string_table.h"
#include "base/unique_resource.h"
#include "log/ansi_text.h"
#include "log/log_file_name.h"
#include "log/log_record.h"
#include "res/resource.h"

#include <windows.h>

namespace {

// The user's short-date ordering. Year-month-day when the system does not report one.
DateOrdering UserDateOrdering() {
    DWORD ordering = static_cast<DWORD>(DateOrdering::YearMonthDay);
    ::GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_IDATE | LOCALE_RETURN_NUMBER,
                     reinterpret_cast<wchar_t*>(&ordering), sizeof ordering / sizeof(wchar_t));
    return static_cast<DateOrdering>(ordering);
}

LocalTime Now() {
    SYSTEMTIME time = {};
    ::GetLocalTime(&time);
    return {time.wYear, time.wMonth, time.wDay, time.wHour, time.wMinute, time.wSecond};
}

void Append(const std::wstring& record) {
    const UniqueFile file(
        ::CreateFileW(LogPath().c_str(), GENERIC_WRITE, 0, nullptr, OPEN_ALWAYS, 0, nullptr));
    if (!file) return;
    ::SetFilePointer(file.Get(), 0, nullptr, FILE_END);
    const AnsiText bytes(record);
    DWORD written = 0;
    ::WriteFile(file.Get(), bytes.Bytes(), static_cast<DWORD>(::lstrlenA(bytes.Bytes())), &written, nullptr);
}

}  // namespace

std::wstring LogPath() {
    return FileInProgramFolder(kLogFileName);
}

std::optional<std::wstring> RecordTimeNow() {
    const DateOrdering ordering = UserDateOrdering();
    return FormatRecordTime(ordering, Now());
}

void AppendLogRecord(const std::optional<std::wstring>& time, const std::wstring& duration) {
    const std::wstring finishedLabel = LoadText(IDS_LOG_FINISHED);
    const std::wstring durationLabel = LoadText(IDS_LOG_DURATION);
    Append(BuildLogRecord({finishedLabel, durationLabel}, time, duration));
}
