// What a window class of the framework is to the windows that it serves.
#pragma once

#include <windows.h>

class CMessageMap {
public:
    // Handles one message of `window`. `section` names the part of the map that serves it: 0 the window of
    // the class itself, others its contained windows. True when the message was handled; `result` is then its
    // result. False asks for default processing.
    virtual bool ProcessWindowMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                      LRESULT& result, DWORD section) = 0;

    CMessageMap(const CMessageMap&) = delete;  // windows hold the address
    CMessageMap& operator=(const CMessageMap&) = delete;

protected:
    CMessageMap() = default;
    ~CMessageMap() = default;
};
