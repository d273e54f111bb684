// What all windows of the process share: the module with their resources, and the message loop of each
// thread.
#pragma once

#include "base/resource_modules.h"

#include <windows.h>

#include <vector>

class CMessageLoop;

// One per process. The loops and windows are guarded by the module's critical section.
class CAppModule {
public:
    [[nodiscard]] static CAppModule& Instance() noexcept { return s_instance; }

    CAppModule(const CAppModule&) = delete;
    CAppModule& operator=(const CAppModule&) = delete;

    // Called once by the main thread before any other operation, with the module that holds the resources.
    void Init(HINSTANCE resourceInstance);
    // Undoes Init. Loops still registered are forgotten, notification windows destroyed.
    void Term();

    [[nodiscard]] DWORD MainThreadId() const noexcept { return m_mainThreadId; }

    // Where dialogs, strings and icons are loaded from; null, the running program, before Init.
    [[nodiscard]] HINSTANCE ResourceInstance() const noexcept { return ::ResourceInstance(); }

    // The message loop of the calling thread. Borrowed; null when it has none. Adding a second one replaces
    // the first.
    void AddMessageLoop(CMessageLoop& loop);
    void RemoveMessageLoop();
    [[nodiscard]] CMessageLoop* MessageLoop();

    // A window of the calling thread that Term destroys if it is still there.
    void AddNotificationWindow(HWND window);

private:
    struct ThreadLoop {
        DWORD threadId;
        CMessageLoop* loop;  // borrowed
    };

    CAppModule() noexcept = default;
    ~CAppModule() = default;

    static CAppModule s_instance;

    CRITICAL_SECTION m_lock = {};
    DWORD m_mainThreadId = 0;
    std::vector<ThreadLoop> m_loops;  // at most one for each thread
    std::vector<HWND> m_notificationWindows;
};
