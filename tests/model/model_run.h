// Plays a sequence of actions on the real window and on the model, side by side.
#pragma once

#include "tests/model/user_actions.h"
#include "tests/model/window_model.h"
#include "tests/support/replaced_late_import.h"
#include "tests/window/main_window_fixture.h"
#include "tests/equipment/scripted_converters.h"

#include <windows.h>
#include <commdlg.h>
#include <objbase.h>
#include <shellapi.h>
#include <shlobj.h>

#include <cwchar>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class ModelRun : public MainWindowFixture {
protected:
    ModelRun();

    // The first difference between window and model, with the action after which it showed; nothing when
    // there is none. Each call begins with a window of its own.
    std::optional<std::string> Play(const std::vector<Action>& actions);

    // The shortest part of a failing sequence that still fails, found by leaving actions out.
    std::vector<Action> Shrink(std::vector<Action> failing);

    // Actions that did something, over all plays; a user whose every click is refused would prove little.
    int effective = 0;
    int conversions = 0;
    int keysOfDisabled = 0;  // pressed in a control that was disabled

private:
    // Does one action to both. False when the window does not allow it now.
    bool Do(const Action& action, WindowModel& model, ScriptedConverters& converters);
    [[nodiscard]] std::optional<std::string> Compare(const WindowModel& model) const;
    bool WaitForWorker(int startedBefore, const ScriptedConverters& converters);
    // Messages of the keyboard for the control with the focus, served as the program's loop does.
    void PressKey(WORD key);
    void TypeCharacter(wchar_t character);
    void ServeKeys();
    void SetFocusTo(int id) { ::SetFocus(Control(id)); }

    std::vector<std::wstring> m_chosen;
    std::wstring m_browsed;
    std::vector<std::wstring> m_opened;
    int m_countdowns = 0;
    std::wstring m_goodFolder;

    static BOOL WINAPI ChooseFiles(LPOPENFILENAMEW dialog) {
        if (s_current->m_chosen.empty()) return FALSE;
        std::wcscpy(dialog->lpstrFile, s_current->m_chosen.front().c_str());
        return TRUE;
    }

    static inline ModelRun* s_current = nullptr;
    ReplacedLateImport m_open{"GetOpenFileNameW", &ChooseFiles};
    std::unique_ptr<ReplacedImport> m_browse =
        Replace<decltype(::SHBrowseForFolderW)>("SHBrowseForFolderW", [this](LPBROWSEINFOW) {
            static ITEMIDLIST item = {};
            return m_browsed.empty() ? nullptr : &item;
        });
    std::unique_ptr<ReplacedImport> m_path = Replace<decltype(::SHGetPathFromIDListW)>(
        "SHGetPathFromIDListW", [this](PCIDLIST_ABSOLUTE, LPWSTR path) {
            std::wcscpy(path, m_browsed.c_str());
            return TRUE;
        });
    std::unique_ptr<ReplacedImport> m_free =
        Replace<decltype(::CoTaskMemFree)>("CoTaskMemFree", [](LPVOID) {});
    std::unique_ptr<ReplacedImport> m_shell =
        Replace<decltype(::ShellExecuteExW)>("ShellExecuteExW", [this](SHELLEXECUTEINFOW* request) {
            m_opened.emplace_back(request->lpParameters);
            return TRUE;
        });
    std::unique_ptr<ReplacedImport> m_dialogBox = Replace<decltype(::DialogBoxParamW)>(
        "DialogBoxParamW", [this](HINSTANCE, LPCWSTR name, HWND, DLGPROC, LPARAM) {
            if (name == MAKEINTRESOURCEW(IDD_COUNTDOWN)) ++m_countdowns;
            return IDCANCEL;
        });
    std::unique_ptr<ReplacedImport> m_timer = Replace<decltype(::SetTimer)>(
        "SetTimer", [](HWND, UINT_PTR, UINT, TIMERPROC) -> UINT_PTR { return 1; });
    std::unique_ptr<ReplacedImport> m_kill =
        Replace<decltype(::KillTimer)>("KillTimer", [](HWND, UINT_PTR) { return TRUE; });
};
