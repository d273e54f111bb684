// The log that a batch with hidden consoles leaves. The converter's own messages are appended to the same
// file by the interpreter, before the record of each file; the two never write at the same time.
#pragma once

#include <optional>
#include <string>

// Full path of the log, which is in the program's folder.
[[nodiscard]] std::wstring LogPath();

// The present local time as a record shows it, in the user's ordering of dates; none when that ordering is
// not known.
[[nodiscard]] std::optional<std::wstring> RecordTimeNow();

// Appends the record of a file that was finished at `time` after `duration`. A log that cannot be written
// loses the record and nothing else: the batch is worth more than its log.
void AppendLogRecord(const std::optional<std::wstring>& time, const std::wstring& duration);
