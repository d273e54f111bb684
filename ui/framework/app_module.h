// What all windows of the process share: where the resources are, and which message loop a thread has.
#pragma once

#include <windows.h>

#include <vector>

class CMessageLoop;

// One per process. Everything but the resource modules, which do not change after Init, is guarded by the
// module's critical section.
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
    [[nodiscard]] HINSTANCE ResourceInstance() const noexcept;
    // All modules that strings are looked up in, in order. The first is ResourceInstance.
    [[nodiscard]] const std::vector<HINSTANCE>& ResourceModules() const noexcept { return m_resources; }
    void AddResourceModule(HINSTANCE module) { m_resources.push_back(module); }

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
    std::vector<HINSTANCE> m_resources;
    std::vector<ThreadLoop> m_loops;  // at most one for each thread
    std::vector<HWND> m_notificationWindows;
};
