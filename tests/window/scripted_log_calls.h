// The calls with which a record gets into the log: written down, and made to answer or fail as the test says.
// The file itself is real.
#pragma once

#include "tests/support/replaced_imports.h"
#include "tests/window/worker_calls.h"

#include <windows.h>

#include <atomic>
#include <optional>

// Records, of workers:
//   GetLocaleInfoW locale=0x400 type=0x20000021 size=2
//   GetLocalTime
//   CreateFileW C:\...\TalvenorLog.txt access=0x40000000 share=0 security=none disposition=4 flags=0
//   template=none SetFilePointer log 0 high=none method=2 WideCharToMultiByte page=0 flags=0 default=none
//   used=none     (not of UTF-8) WriteFile log 176 bytes
// The handle's name is "log", as in "CloseHandle log".
class ScriptedLogCalls {
public:
    explicit ScriptedLogCalls(WorkerCalls& calls) : m_calls(calls) { s_current = this; }
    ScriptedLogCalls(const ScriptedLogCalls&) = delete;
    ScriptedLogCalls& operator=(const ScriptedLogCalls&) = delete;

    std::optional<DWORD> ordering = 1;  // of the user's short dates; nothing: the call fails
    SYSTEMTIME time = {.wYear = 2026,
                       .wMonth = 11,
                       .wDayOfWeek = 1,
                       .wDay = 16,
                       .wHour = 14,
                       .wMinute = 5,
                       .wSecond = 9,
                       .wMilliseconds = 999};
    std::atomic<bool> opens{true};
    std::atomic<bool> seeks{true};
    std::atomic<bool> writes{true};

private:
    static int WINAPI LocaleInfo(LCID locale, LCTYPE type, LPWSTR data, int size);
    static void WINAPI LocalTime(LPSYSTEMTIME time);
    static HANDLE WINAPI Open(LPCWSTR path, DWORD access, DWORD share, LPSECURITY_ATTRIBUTES security,
                              DWORD disposition, DWORD flags, HANDLE pattern);
    static DWORD WINAPI Seek(HANDLE file, LONG distance, PLONG high, DWORD method);
    static int WINAPI Convert(UINT codePage, DWORD flags, LPCWCH text, int length, LPSTR bytes, int size,
                              LPCCH defaultCharacter, LPBOOL usedDefault);
    static BOOL WINAPI Write(HANDLE file, LPCVOID bytes, DWORD count, LPDWORD written,
                             LPOVERLAPPED overlapped);

    static inline ScriptedLogCalls* s_current = nullptr;

    WorkerCalls& m_calls;
    ReplacedImport m_localeInfo{"GetLocaleInfoW", &LocaleInfo};
    ReplacedImport m_localTime{"GetLocalTime", &LocalTime};
    ReplacedImport m_open{"CreateFileW", &Open};
    ReplacedImport m_seek{"SetFilePointer", &Seek};
    ReplacedImport m_convert{"WideCharToMultiByte", &Convert};
    ReplacedImport m_write{"WriteFile", &Write};
};
