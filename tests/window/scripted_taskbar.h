// The taskbar of the desktop as a test has it: what the program would show in its button.
#pragma once

#include "tests/support/call_record.h"
#include "tests/support/replaced_imports.h"

#include <windows.h>
#include <objbase.h>

// While one lives, every COM object that the program asks for is this one. `calls` has:
//   CoCreateInstance taskbar      (or "something else")
//   HrInit
//   SetProgressValue 0/2          (the window is checked to be `button` when that is not null)
//   SetProgressState 0
//   Release                       (the last of the references)
class ScriptedTaskbar {
public:
    ScriptedTaskbar();
    ScriptedTaskbar(const ScriptedTaskbar&) = delete;
    ScriptedTaskbar& operator=(const ScriptedTaskbar&) = delete;
    ~ScriptedTaskbar();

    CallRecord calls;
    HRESULT creation = S_OK;
    HRESULT initialisation = S_OK;
    HRESULT showing = S_OK;  // the result of every call that shows something
    HWND button = nullptr;
    DWORD userInterface = ::GetCurrentThreadId();  // other threads may not call

private:
    static HRESULT WINAPI Create(REFCLSID classId, LPUNKNOWN outer, DWORD context, REFIID interfaceId,
                                 LPVOID* object);

    ReplacedImport m_create{"CoCreateInstance", &Create};
};
