// The calls with which a record gets into the log: written down, and made to answer or fail as the test says.
// The file itself is real.
#pragma once

#include "tests/support/replaced_imports.h"
#include "tests/support/utf8.h"
#include "tests/equipment/worker_calls.h"

#include <windows.h>

#include <atomic>
#include <cstring>
#include <memory>
#include <optional>
#include <string>

// Records, of workers:
//   GetLocaleInfoW locale=1024 type=536870945 size=2
//   GetLocalTime
//   CreateFileW C:\...\TalvenorLog.txt access=1073741824 share=0 disposition=4 flags=0
//   SetFilePointer log 0 method=2
//   WideCharToMultiByte page=0 flags=0        (not of UTF-8)
//   WriteFile log 176 bytes
// The handle's name is "log", as in "CloseHandle log". An argument that is to be null and is not adds " and
// more".
class ScriptedLogCalls {
public:
    explicit ScriptedLogCalls(WorkerCalls& calls) : m_calls(calls) {}
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
    static std::string Number(const char* name, DWORD value) {
        return std::string(" ") + name + '=' + std::to_string(value);
    }
    static std::string More(bool more) { return more ? " and more" : ""; }

    WorkerCalls& m_calls;
    Replaced m_localeInfo = REPLACE_IMPORT(
        GetLocaleInfoW, [this](auto original, LCID locale, LCTYPE type, LPWSTR data, int size) {
            if (!m_calls.Note("GetLocaleInfoW" + Number("locale", locale) + Number("type", type) +
                              " size=" + std::to_string(size))) {
                return original(locale, type, data, size);
            }
            if (!ordering) return 0;
            std::memcpy(data, &*ordering, sizeof *ordering);
            return 2;
        });
    Replaced m_localTime = REPLACE_IMPORT(GetLocalTime, [this](auto original, LPSYSTEMTIME now) {
        if (m_calls.Note("GetLocalTime")) {
            *now = time;
        } else {
            original(now);
        }
    });
    Replaced m_open = REPLACE_IMPORT(
        CreateFileW, [this](auto original, LPCWSTR path, DWORD access, DWORD share,
                            LPSECURITY_ATTRIBUTES security, DWORD disposition, DWORD flags, HANDLE pattern) {
            const bool onWorker = m_calls.Note("CreateFileW " + Utf8(path) + Number("access", access) +
                                               Number("share", share) + Number("disposition", disposition) +
                                               Number("flags", flags) + More(security || pattern));
            if (onWorker && !opens) {
                ::SetLastError(ERROR_ACCESS_DENIED);
                return INVALID_HANDLE_VALUE;
            }
            const HANDLE file = original(path, access, share, security, disposition, flags, pattern);
            if (onWorker && file != INVALID_HANDLE_VALUE) m_calls.NameHandle(file, "log");
            return file;
        });
    Replaced m_seek = REPLACE_IMPORT(SetFilePointer, [this](auto original, HANDLE file, LONG distance,
                                                            PLONG high, DWORD method) {
        const bool onWorker = m_calls.Note("SetFilePointer " + m_calls.HandleName(file) + ' ' +
                                           std::to_string(distance) + Number("method", method) + More(high));
        return onWorker && !seeks ? INVALID_SET_FILE_POINTER : original(file, distance, high, method);
    });
    Replaced m_convert = REPLACE_IMPORT(
        WideCharToMultiByte, [this](auto original, UINT codePage, DWORD flags, LPCWCH text, int length,
                                    LPSTR bytes, int size, LPCCH defaultCharacter, LPBOOL usedDefault) {
            if (codePage != CP_UTF8) {
                m_calls.Note("WideCharToMultiByte" + Number("page", codePage) + Number("flags", flags) +
                             More(defaultCharacter || usedDefault));
            }
            return original(codePage, flags, text, length, bytes, size, defaultCharacter, usedDefault);
        });
    Replaced m_write =
        REPLACE_IMPORT(WriteFile, [this](auto original, HANDLE file, LPCVOID bytes, DWORD count,
                                         LPDWORD written, LPOVERLAPPED overlapped) {
            const bool onWorker = m_calls.Note("WriteFile " + m_calls.HandleName(file) + ' ' +
                                               std::to_string(count) + " bytes" + More(overlapped));
            if (onWorker && !writes) {
                *written = 0;
                return FALSE;
            }
            return original(file, bytes, count, written, overlapped);
        });
};
