// Answers in the system's place: what a person sees and hears, and what makes time pass.
#pragma once

#include "tests/faults/harness/doubles_base.h"

#include <windows.h>
#include <commdlg.h>
#include <shellapi.h>
#include <shlobj.h>

#include <algorithm>
#include <string>

struct DesktopDoubles : DoublesBase {
    static const char* Picture(UINT type) {
        switch (type & MB_ICONMASK) {
        case MB_ICONERROR: return "error ";
        case MB_ICONINFORMATION: return "information ";
        case MB_ICONQUESTION: return "question ";
        default: return "plain ";
        }
    }

    // Windows and sounds

    static int WINAPI MessageBoxW(HWND owner, LPCWSTR text, LPCWSTR caption, UINT type) {
        Platform& self = Current();
        self.Note(Request::Message, Picture(type) + std::string(owner ? "main " : "none ") + Text(text) +
                                        (Text(caption) == "Talvenor" ? "" : " caption=" + Text(caption)));
        if (self.realMessages) return ::MessageBoxW(owner, text, caption, type);
        return (type & MB_TYPEMASK) == MB_YESNO ? self.answerToQuestions.load() : IDOK;
    }

    static HWND WINAPI CreateDialogParamW(HINSTANCE module, LPCWSTR name, HWND owner, DLGPROC procedure,
                                          LPARAM parameter) {
        // Counted in any case: a dialog that closes itself while it is set up has had its controls.
        ++Current().m_modelessDialogs;
        return ::CreateDialogParamW(module, name, owner, procedure, parameter);
    }

    static BOOL WINAPI Beep(DWORD frequency, DWORD duration) {
        Current().Note(Request::Beep, std::to_string(frequency) + ' ' + std::to_string(duration));
        return TRUE;
    }

    static HANDLE WINAPI LoadImageW(HINSTANCE module, LPCWSTR name, UINT type, int width, int height,
                                    UINT flags) {
        const HANDLE image = ::LoadImageW(module, name, type, width, height, flags);
        Platform& self = Current();
        const SystemLockHold lock(self.m_lock);
        if (image) self.m_icons.insert(image);
        return image;
    }

    static BOOL WINAPI DestroyIcon(HICON icon) {
        {
            Platform& self = Current();
            const SystemLockHold lock(self.m_lock);
            self.m_icons.erase(icon);
        }
        return ::DestroyIcon(icon);
    }

    // Files, folders, the shell

    static BOOL WINAPI GetOpenFileNameW(LPOPENFILENAMEW dialog) {
        const std::wstring& chosen = Current().chosenFiles;
        if (chosen.empty() || !dialog->lpstrFile) return FALSE;
        std::copy(chosen.begin(), chosen.end(), dialog->lpstrFile);
        dialog->lpstrFile[chosen.size()] = L'\0';
        dialog->lpstrFile[chosen.size() + 1] = L'\0';
        return TRUE;
    }

    static PIDLIST_ABSOLUTE WINAPI SHBrowseForFolderW(LPBROWSEINFOW /*browser*/) {
        const std::wstring& chosen = Current().chosenFolder;
        return chosen.empty() ? nullptr : ::ILCreateFromPathW(chosen.c_str());
    }

    static BOOL WINAPI ShellExecuteExW(LPSHELLEXECUTEINFOW request) {
        Platform& self = Current();
        self.Note(Request::Shell, Text(request->lpFile) + ' ' + Text(request->lpParameters));
        if (self.shellError == 0) return TRUE;
        ::SetLastError(self.shellError);
        return FALSE;
    }

    // Beside the program's own folder: that is the test's.
    static DWORD WINAPI SearchPathW(LPCWSTR folder, LPCWSTR name, LPCWSTR extension, DWORD size, LPWSTR found,
                                    LPWSTR* part) {
        if (folder) return ::SearchPathW(folder, name, extension, size, found, part);
        std::wstring path = Current().foundOnPath;
        if (path.empty()) {
            path.resize(MAX_PATH);
            path.resize(::GetSystemWindowsDirectoryW(path.data(), MAX_PATH));
            path.append(L"\\").append(name);
        }
        ::lstrcpynW(found, path.c_str(), static_cast<int>(size));
        return static_cast<DWORD>(path.size());
    }

    // Messages

    static LRESULT WINAPI DispatchMessageW(const MSG* message) {
        const bool isMarker = message->message == Platform::kMarkerMessage;
        const LRESULT result = ::DispatchMessageW(message);
        if (isMarker) ++Current().m_markers;
        return result;
    }

    // The machine and its user

    static EXECUTION_STATE WINAPI SetThreadExecutionState(EXECUTION_STATE state) {
        Platform& self = Current();
        const bool keeps = state == (ES_CONTINUOUS | ES_SYSTEM_REQUIRED);
        const bool givesBack = state == ES_CONTINUOUS;
        self.Note(Request::Awake, keeps ? "kept" : givesBack ? "given back" : std::to_string(state));
        const SystemLockHold lock(self.m_lock);
        if (givesBack) {
            self.m_awake.erase(::GetCurrentThreadId());
        } else {
            self.m_awake.insert(::GetCurrentThreadId());
        }
        return ES_CONTINUOUS;
    }

    static BOOL WINAPI SystemParametersInfoW(UINT action, UINT parameter, PVOID value, UINT update) {
        if (action != SPI_GETSCREENREADER) return ::SystemParametersInfoW(action, parameter, value, update);
        *static_cast<BOOL*>(value) = Current().screenReader;
        return TRUE;
    }

    // Time

    static DWORD WINAPI GetTickCount() { return Current().m_tick; }

    static void WINAPI GetLocalTime(LPSYSTEMTIME time) { *time = {2026, 11, 1, 16, 14, 5, 9, 0}; }

    static int WINAPI GetLocaleInfoW(LCID /*locale*/, LCTYPE /*type*/, LPWSTR data, int /*size*/) {
        *reinterpret_cast<DWORD*>(data) = 1;  // day, month, year
        return 2;
    }

    static UINT_PTR WINAPI SetTimer(HWND /*window*/, UINT_PTR id, UINT /*period*/, TIMERPROC /*callback*/) {
        Platform& self = Current();
        const SystemLockHold lock(self.m_lock);
        self.m_timers.insert(id);
        return id;
    }

    static BOOL WINAPI KillTimer(HWND /*window*/, UINT_PTR id) {
        Platform& self = Current();
        const SystemLockHold lock(self.m_lock);
        return self.m_timers.erase(id) != 0;
    }
};
