#include "framework/message_loop.h"

#include <algorithm>

bool CMessageLoop::FilterMessage(MSG& message) {
    return std::any_of(m_filters.rbegin(), m_filters.rend(),
                       [&](CMessageFilter* filter) { return filter->FilterMessage(message); });
}

bool CMessageLoop::RunIdleHandlers(int /*idleCount*/) {
    for (CIdleHandler* handler : m_idleHandlers) handler->HandleIdle();
    return false;
}

bool CMessageLoop::ResumesIdle(const MSG& message) const {
    constexpr UINT kCaretBlinkTimer = 0x0118;  // sent by the system; has no public name
    switch (message.message) {
    case WM_PAINT:
    case WM_NCMOUSEMOVE:
    case kCaretBlinkTimer:
    case WM_MOUSEMOVE: return false;
    default: return true;
    }
}

int CMessageLoop::Run() {
    bool doIdle = true;
    int idleCount = 0;
    for (;;) {
        while (doIdle && !::PeekMessageW(&m_message, nullptr, 0, 0, PM_NOREMOVE)) {
            doIdle = RunIdleHandlers(idleCount++);
        }
        const int fetched = ::GetMessageW(&m_message, nullptr, 0, 0);
        if (fetched == -1) continue;
        if (fetched == 0) return static_cast<int>(m_message.wParam);
        if (!FilterMessage(m_message)) {
            ::TranslateMessage(&m_message);
            ::DispatchMessageW(&m_message);
        }
        if (ResumesIdle(m_message)) {
            doIdle = true;
            idleCount = 0;
        }
    }
}
