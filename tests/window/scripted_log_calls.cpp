#include "tests/window/scripted_log_calls.h"

#include "tests/support/utf8.h"

#include <cstring>
#include <string>

namespace {

std::string Hex(DWORD value) {
    char text[16];
    ::wsprintfA(text, "0x%X", value);
    return text;
}

std::string Presence(const void* pointer) {
    return pointer ? "some" : "none";
}

}  // namespace

int WINAPI ScriptedLogCalls::LocaleInfo(LCID locale, LCTYPE type, LPWSTR data, int size) {
    if (!s_current->m_calls.Note("GetLocaleInfoW locale=" + Hex(locale) + " type=" + Hex(type) +
                                 " size=" + std::to_string(size))) {
        return s_current->m_localeInfo.Original<decltype(::GetLocaleInfoW)>()(locale, type, data, size);
    }
    if (!s_current->ordering) return 0;
    std::memcpy(data, &*s_current->ordering, sizeof *s_current->ordering);
    return 2;
}

void WINAPI ScriptedLogCalls::LocalTime(LPSYSTEMTIME time) {
    if (s_current->m_calls.Note("GetLocalTime")) {
        *time = s_current->time;
    } else {
        s_current->m_localTime.Original<decltype(::GetLocalTime)>()(time);
    }
}

HANDLE WINAPI ScriptedLogCalls::Open(LPCWSTR path, DWORD access, DWORD share, LPSECURITY_ATTRIBUTES security,
                                     DWORD disposition, DWORD flags, HANDLE pattern) {
    const bool onWorker = s_current->m_calls.Note(
        "CreateFileW " + Utf8(path) + " access=" + Hex(access) + " share=" + std::to_string(share) +
        " security=" + Presence(security) + " disposition=" + std::to_string(disposition) +
        " flags=" + std::to_string(flags) + " template=" + Presence(pattern));
    if (onWorker && !s_current->opens) {
        ::SetLastError(ERROR_ACCESS_DENIED);
        return INVALID_HANDLE_VALUE;
    }
    const HANDLE file = s_current->m_open.Original<decltype(::CreateFileW)>()(path, access, share, security,
                                                                              disposition, flags, pattern);
    if (onWorker && file != INVALID_HANDLE_VALUE) s_current->m_calls.NameHandle(file, "log");
    return file;
}

DWORD WINAPI ScriptedLogCalls::Seek(HANDLE file, LONG distance, PLONG high, DWORD method) {
    const bool onWorker = s_current->m_calls.Note("SetFilePointer " + s_current->m_calls.HandleName(file) +
                                                  ' ' + std::to_string(distance) + " high=" + Presence(high) +
                                                  " method=" + std::to_string(method));
    if (onWorker && !s_current->seeks) return INVALID_SET_FILE_POINTER;
    return s_current->m_seek.Original<decltype(::SetFilePointer)>()(file, distance, high, method);
}

int WINAPI ScriptedLogCalls::Convert(UINT codePage, DWORD flags, LPCWCH text, int length, LPSTR bytes,
                                     int size, LPCCH defaultCharacter, LPBOOL usedDefault) {
    if (codePage != CP_UTF8) {
        s_current->m_calls.Note("WideCharToMultiByte page=" + std::to_string(codePage) +
                                " flags=" + std::to_string(flags) + " default=" + Presence(defaultCharacter) +
                                " used=" + Presence(usedDefault));
    }
    return s_current->m_convert.Original<decltype(::WideCharToMultiByte)>()(
        codePage, flags, text, length, bytes, size, defaultCharacter, usedDefault);
}

BOOL WINAPI ScriptedLogCalls::Write(HANDLE file, LPCVOID bytes, DWORD count, LPDWORD written,
                                    LPOVERLAPPED overlapped) {
    const bool onWorker = s_current->m_calls.Note("WriteFile " + s_current->m_calls.HandleName(file) + ' ' +
                                                  std::to_string(count) + " bytes");
    if (onWorker && !s_current->writes) {
        *written = 0;
        return FALSE;
    }
    return s_current->m_write.Original<decltype(::WriteFile)>()(file, bytes, count, written, overlapped);
}
