// Plays a sequence of actions on the real window and on the model, side by side.
#pragma once

#include "tests/model/user_actions.h"
#include "tests/model/window_model.h"
#include "tests/support/replaced_late_import.h"
#include "tests/window/held_converter.h"
#include "tests/window/main_window_fixture.h"

#include <windows.h>
#include <commdlg.h>
#include <shellapi.h>
#include <shlobj.h>

#include <optional>
#include <set>
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
    bool Do(const Action& action, WindowModel& model, HeldConverter& converter);
    [[nodiscard]] std::optional<std::string> Compare(const WindowModel& model) const;
    bool WaitForWorker(int startedBefore, const HeldConverter& converter);
    // Messages of the keyboard for the control with the focus, served as the program's loop does.
    void PressKey(WORD key);
    void TypeCharacter(wchar_t character);
    void ServeKeys();
    void SetFocusTo(int id) { ::SetFocus(Control(id)); }

    static BOOL WINAPI ChooseFiles(LPOPENFILENAMEW dialog);
    static PIDLIST_ABSOLUTE WINAPI BrowseFolder(LPBROWSEINFOW browser);
    static BOOL WINAPI PathOfFolder(PCIDLIST_ABSOLUTE item, LPWSTR path);
    static void WINAPI FreeFolder(LPVOID item);
    static BOOL WINAPI RecordShell(SHELLEXECUTEINFOW* request);
    static INT_PTR WINAPI RecordDialog(HINSTANCE, LPCWSTR templateName, HWND, DLGPROC, LPARAM);
    static DWORD WINAPI StandingClock() { return 1000; }
    static UINT_PTR WINAPI NoTimer(HWND, UINT_PTR, UINT, TIMERPROC) { return 1; }
    static BOOL WINAPI NoKill(HWND, UINT_PTR) { return TRUE; }

    static inline std::vector<std::wstring> s_chosen;
    static inline std::wstring s_browsed;
    static inline std::vector<std::wstring> s_opened;
    static inline int s_countdowns = 0;

    std::wstring m_goodFolder;
    ReplacedLateImport m_open{"GetOpenFileNameW", &ChooseFiles};
    ReplacedImport m_browse{"SHBrowseForFolderW", &BrowseFolder};
    ReplacedImport m_path{"SHGetPathFromIDListW", &PathOfFolder};
    ReplacedImport m_free{"CoTaskMemFree", &FreeFolder};
    ReplacedImport m_shell{"ShellExecuteExW", &RecordShell};
    ReplacedImport m_dialogBox{"DialogBoxParamW", &RecordDialog};
    ReplacedImport m_clock{"GetTickCount", &StandingClock};
    ReplacedImport m_timer{"SetTimer", &NoTimer};
    ReplacedImport m_kill{"KillTimer", &NoKill};
};
