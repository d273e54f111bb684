// Answers in the system's place: what a person sees and hears, and what makes time pass.
#include "tests/faults/harness/platform.h"

#include <commdlg.h>
#include <shellapi.h>
#include <shlobj.h>

#include <algorithm>

namespace {

const char* Picture(UINT type) {
    switch (type & MB_ICONMASK) {
    case MB_ICONERROR: return "error ";
    case MB_ICONINFORMATION: return "information ";
    case MB_ICONQUESTION: return "question ";
    default: return "plain ";
    }
}

}  // namespace

void Platform::AnswerDesktop() {
    // Windows and sounds

    m_answers.push_back(
        REPLACE_IMPORT(MessageBoxW, [this](HWND owner, LPCWSTR text, LPCWSTR caption, UINT type) -> int {
            const std::string title = TextOf(caption);
            Note("messages", Picture(type) + std::string(owner ? "main " : "none ") + TextOf(text) +
                                 (title == "Talvenor" ? "" : " caption=" + title));
            if (realMessages) return ::MessageBoxW(owner, text, caption, type);
            return (type & MB_TYPEMASK) == MB_YESNO ? answerToQuestions.load() : IDOK;
        }));
    m_answers.push_back(REPLACE_IMPORT(DispatchMessageW, [this](const MSG* message) {
        const bool isMarker = message->message == kMarkerMessage;
        const LRESULT result = ::DispatchMessageW(message);
        if (isMarker) ++m_markers;
        return result;
    }));
    m_answers.push_back(REPLACE_IMPORT(Beep, [this](DWORD frequency, DWORD duration) {
        Note("beeps", std::to_string(frequency) + ' ' + std::to_string(duration));
        return TRUE;
    }));
    m_answers.push_back(REPLACE_IMPORT(LoadImageW, HandsOut(m_icons)));
    m_answers.push_back(REPLACE_IMPORT(DestroyIcon, TakesBack(m_icons)));

    // Files, folders, the shell

    m_answers.push_back(REPLACE_IMPORT(GetOpenFileNameW, [this](LPOPENFILENAMEW dialog) {
        if (chosenFiles.empty() || !dialog->lpstrFile) return FALSE;
        const std::wstring files = chosenFiles + L'\0';  // with the one behind a string: two
        std::copy_n(files.c_str(), files.size() + 1, dialog->lpstrFile);
        return TRUE;
    }));
    m_answers.push_back(REPLACE_IMPORT(SHBrowseForFolderW, [this](LPBROWSEINFOW) {
        return chosenFolder.empty() ? nullptr : ::ILCreateFromPathW(chosenFolder.c_str());
    }));
    m_answers.push_back(REPLACE_IMPORT(ShellExecuteExW, [this](LPSHELLEXECUTEINFOW request) {
        Note("shell", TextOf(request->lpFile) + ' ' + TextOf(request->lpParameters));
        ::SetLastError(shellError);
        return shellError == ERROR_SUCCESS ? TRUE : FALSE;
    }));
    // The search path has the system's own.
    m_answers.push_back(REPLACE_IMPORT(SearchPathW, [](LPCWSTR folder, LPCWSTR name, LPCWSTR extension,
                                                       DWORD size, LPWSTR found, LPWSTR* part) {
        if (folder) return ::SearchPathW(folder, name, extension, size, found, part);
        std::wstring path(MAX_PATH, L'\0');
        path.resize(::GetSystemWindowsDirectoryW(path.data(), MAX_PATH));
        path.append(L"\\").append(name);
        ::lstrcpynW(found, path.c_str(), static_cast<int>(size));
        return static_cast<DWORD>(path.size());
    }));

    // The machine and its user

    m_answers.push_back(
        REPLACE_IMPORT(SetThreadExecutionState, [this](EXECUTION_STATE state) -> EXECUTION_STATE {
            const bool keeps = state == (ES_CONTINUOUS | ES_SYSTEM_REQUIRED);
            const bool givesBack = state == ES_CONTINUOUS;
            Note("awakeCalls", keeps ? "kept" : givesBack ? "given back" : std::to_string(state));
            if (givesBack) {
                Remove(m_awake, ::GetCurrentThreadId());
            } else {
                Add(m_awake, ::GetCurrentThreadId());
            }
            return ES_CONTINUOUS;
        }));
    m_answers.push_back(REPLACE_IMPORT(
        SystemParametersInfoW, [this](auto original, UINT action, UINT parameter, PVOID value, UINT update) {
            if (action != SPI_GETSCREENREADER) return original(action, parameter, value, update);
            *static_cast<BOOL*>(value) = screenReader;
            return TRUE;
        }));

    // Time

    m_answers.push_back(
        REPLACE_IMPORT(GetLocalTime, [](LPSYSTEMTIME time) { *time = {2026, 11, 1, 16, 14, 5, 9, 0}; }));
    m_answers.push_back(REPLACE_IMPORT(GetLocaleInfoW, [](LCID, LCTYPE, LPWSTR data, int) {
        *reinterpret_cast<DWORD*>(data) = 1;  // day, month, year
        return 2;
    }));
    m_answers.push_back(REPLACE_IMPORT(SetTimer, [this](HWND, UINT_PTR id, UINT, TIMERPROC) {
        Add(m_timers, id);
        return id;
    }));
    m_answers.push_back(
        REPLACE_IMPORT(KillTimer, [this](HWND, UINT_PTR id) -> BOOL { return Remove(m_timers, id); }));
}
