#include "framework/app_module.h"

namespace {

class CriticalSectionLock {
public:
    explicit CriticalSectionLock(CRITICAL_SECTION& section) noexcept : m_section(section) {
        ::EnterCriticalSection(&m_section);
    }
    CriticalSectionLock(const CriticalSectionLock&) = delete;
    CriticalSectionLock& operator=(const CriticalSectionLock&) = delete;
    ~CriticalSectionLock() { ::LeaveCriticalSection(&m_section); }

private:
    CRITICAL_SECTION& m_section;
};

}  // namespace

CAppModule CAppModule::s_instance;

void CAppModule::Init(HINSTANCE resourceInstance) {
    ::InitializeCriticalSection(&m_lock);
    m_mainThreadId = ::GetCurrentThreadId();
    AddResourceModule(resourceInstance);
}

void CAppModule::Term() {
    {
        const CriticalSectionLock lock(m_lock);
        for (const HWND window : m_notificationWindows) ::DestroyWindow(window);
        m_notificationWindows.clear();
        ForgetResourceModules();
    }
    m_loops.clear();
    m_mainThreadId = 0;
    ::DeleteCriticalSection(&m_lock);
}

void CAppModule::AddMessageLoop(CMessageLoop& loop) {
    RemoveMessageLoop();
    const CriticalSectionLock lock(m_lock);
    m_loops.push_back({::GetCurrentThreadId(), &loop});
}

void CAppModule::RemoveMessageLoop() {
    const CriticalSectionLock lock(m_lock);
    const DWORD thread = ::GetCurrentThreadId();
    std::erase_if(m_loops, [=](const ThreadLoop& entry) { return entry.threadId == thread; });
}

CMessageLoop* CAppModule::MessageLoop() {
    const CriticalSectionLock lock(m_lock);
    const DWORD thread = ::GetCurrentThreadId();
    for (const ThreadLoop& entry : m_loops) {
        if (entry.threadId == thread) return entry.loop;
    }
    return nullptr;
}

void CAppModule::AddNotificationWindow(HWND window) {
    const CriticalSectionLock lock(m_lock);
    m_notificationWindows.push_back(window);
}
