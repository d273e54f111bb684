// The log that a batch with hidden consoles leaves. The converter's own messages are appended to the same
// file by the interpreter, before the record of each file; the two never write at the same time.

#include "ui/main_dlg.h"

#include "log/ansi_text.h"
#include "log/elapsed_time.h"
#include "log/log_record.h"
#include "log/program_folder.h"
#include "log/string_table.h"
#include "res/resource.h"
#include "ui/framework/unique_resource.h"

#include <windows.h>

namespace {

// The user's short-date ordering. Year-month-day when the system does not tell.
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

// A log that cannot be written loses the record and nothing else: the batch is worth more than its log.
void AppendToLog(const std::wstring& record) {
    const UniqueFile file(
        ::CreateFileW(LogPath().c_str(), GENERIC_WRITE, 0, nullptr, OPEN_ALWAYS, 0, nullptr));
    if (!file) return;
    ::SetFilePointer(file.Get(), 0, nullptr, FILE_END);
    const AnsiText bytes(record);
    DWORD written = 0;
    ::WriteFile(file.Get(), bytes.Bytes(), static_cast<DWORD>(::lstrlenA(bytes.Bytes())), &written, nullptr);
}

}  // namespace

void CMainDlg::WriteLogRecord() {
    const DateOrdering ordering = UserDateOrdering();
    const std::wstring finished = LoadText(IDS_LOG_FINISHED);
    const std::wstring duration = LoadText(IDS_LOG_DURATION);
    AppendToLog(BuildLogRecord({finished, duration}, FormatRecordTime(ordering, Now()), FormatElapsed(0)));
}

std::wstring CMainDlg::FormatElapsed(DWORD now) const {
    const bool running = m_running;
    return FormatDuration(running, m_startTick, DurationEnd(now, m_endTick),
                          running ? std::wstring() : LoadText(IDS_CANCELLED));
}
