// Answers in the system's place: what a person sees and hears, and what makes time pass.
#include "tests/faults/harness/doubles.h"

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

void Platform::AddDesktop(Doubles& doubles) {
    // Windows and sounds

    doubles["MessageBoxW"] =
        Answer<decltype(::MessageBoxW)>([](HWND owner, LPCWSTR text, LPCWSTR caption, UINT type) -> int {
            Platform& self = Current();
            const std::string title = TextOf(caption);
            self.Note("messages", Picture(type) + std::string(owner ? "main " : "none ") + TextOf(text) +
                                      (title == "Talvenor" ? "" : " caption=" + title));
            if (self.realMessages) return ::MessageBoxW(owner, text, caption, type);
            return (type & MB_TYPEMASK) == MB_YESNO ? self.answerToQuestions.load() : IDOK;
        });
    doubles["CreateDialogParamW"] = Answer<decltype(::CreateDialogParamW)>(
        [](HINSTANCE module, LPCWSTR name, HWND owner, DLGPROC procedure, LPARAM parameter) {
            // Counted in any case: a dialog that closes itself while it is set up has had its
            // controls.
            ++Current().m_modelessDialogs;
            return ::CreateDialogParamW(module, name, owner, procedure, parameter);
        });
    doubles["DispatchMessageW"] = Answer<decltype(::DispatchMessageW)>([](const MSG* message) {
        const bool isMarker = message->message == Platform::kMarkerMessage;
        const LRESULT result = ::DispatchMessageW(message);
        if (isMarker) ++Current().m_markers;
        return result;
    });
    doubles["Beep"] = Answer<decltype(::Beep)>([](DWORD frequency, DWORD duration) {
        Current().Note("beeps", std::to_string(frequency) + ' ' + std::to_string(duration));
        return TRUE;
    });
    doubles["LoadImageW"] = Answer<decltype(::LoadImageW)>(
        [](HINSTANCE module, LPCWSTR name, UINT type, int width, int height, UINT flags) {
            const HANDLE image = ::LoadImageW(module, name, type, width, height, flags);
            if (image) Current().m_icons.Add(image);
            return image;
        });
    doubles["DestroyIcon"] = Answer<decltype(::DestroyIcon)>([](HICON icon) {
        Current().m_icons.Remove(icon);
        return ::DestroyIcon(icon);
    });

    // Files, folders, the shell

    doubles["GetOpenFileNameW"] = Answer<decltype(::GetOpenFileNameW)>([](LPOPENFILENAMEW dialog) {
        const std::wstring& chosen = Current().chosenFiles;
        if (chosen.empty() || !dialog->lpstrFile) return FALSE;
        std::copy(chosen.begin(), chosen.end(), dialog->lpstrFile);
        dialog->lpstrFile[chosen.size()] = L'\0';
        dialog->lpstrFile[chosen.size() + 1] = L'\0';
        return TRUE;
    });
    doubles["SHBrowseForFolderW"] = Answer<decltype(::SHBrowseForFolderW)>([](LPBROWSEINFOW) {
        const std::wstring& chosen = Current().chosenFolder;
        return chosen.empty() ? nullptr : ::ILCreateFromPathW(chosen.c_str());
    });
    doubles["ShellExecuteExW"] = Answer<decltype(::ShellExecuteExW)>([](LPSHELLEXECUTEINFOW request) {
        Platform& self = Current();
        self.Note("shell", TextOf(request->lpFile) + ' ' + TextOf(request->lpParameters));
        ::SetLastError(self.shellError);
        return self.shellError == ERROR_SUCCESS ? TRUE : FALSE;
    });
    // Beside the program's own folder: that is the test's.
    doubles["SearchPathW"] = Answer<decltype(::SearchPathW)>(
        [](LPCWSTR folder, LPCWSTR name, LPCWSTR extension, DWORD size, LPWSTR found, LPWSTR* part) {
            if (folder) return ::SearchPathW(folder, name, extension, size, found, part);
            std::wstring path = Current().foundOnPath;
            if (path.empty()) {
                path.resize(MAX_PATH);
                path.resize(::GetSystemWindowsDirectoryW(path.data(), MAX_PATH));
                path.append(L"\\").append(name);
            }
            ::lstrcpynW(found, path.c_str(), static_cast<int>(size));
            return static_cast<DWORD>(path.size());
        });

    // The machine and its user

    doubles["SetThreadExecutionState"] =
        Answer<decltype(::SetThreadExecutionState)>([](EXECUTION_STATE state) -> EXECUTION_STATE {
            Platform& self = Current();
            const bool keeps = state == (ES_CONTINUOUS | ES_SYSTEM_REQUIRED);
            const bool givesBack = state == ES_CONTINUOUS;
            self.Note("awakeCalls", keeps ? "kept" : givesBack ? "given back" : std::to_string(state));
            if (givesBack) {
                self.m_awake.Remove(::GetCurrentThreadId());
            } else {
                self.m_awake.Add(::GetCurrentThreadId());
            }
            return ES_CONTINUOUS;
        });
    doubles["SystemParametersInfoW"] =
        Answer<decltype(::SystemParametersInfoW)>([](UINT action, UINT parameter, PVOID value, UINT update) {
            if (action != SPI_GETSCREENREADER)
                return ::SystemParametersInfoW(action, parameter, value, update);
            *static_cast<BOOL*>(value) = Current().screenReader;
            return TRUE;
        });

    // Time

    doubles["GetTickCount"] = Answer<decltype(::GetTickCount)>([] { return Current().m_tick.load(); });
    doubles["GetLocalTime"] =
        Answer<decltype(::GetLocalTime)>([](LPSYSTEMTIME time) { *time = {2026, 11, 1, 16, 14, 5, 9, 0}; });
    doubles["GetLocaleInfoW"] = Answer<decltype(::GetLocaleInfoW)>([](LCID, LCTYPE, LPWSTR data, int) {
        *reinterpret_cast<DWORD*>(data) = 1;  // day, month, year
        return 2;
    });
    doubles["SetTimer"] = Answer<decltype(::SetTimer)>([](HWND, UINT_PTR id, UINT, TIMERPROC) {
        Current().m_timers.Add(id);
        return id;
    });
    doubles["KillTimer"] = Answer<decltype(::KillTimer)>(
        [](HWND, UINT_PTR id) -> BOOL { return Current().m_timers.Remove(id); });
}
