// Keeps the machine from going to sleep by itself. A batch runs for hours without anybody at the keyboard.
#pragma once

#include <windows.h>

// Lasts from Hold to its end. Both on one thread, of which the request is a property. The display may go
// dark. A system that refuses does so silently: the batch goes on.
class AwakeSystem {
public:
    AwakeSystem() = default;
    AwakeSystem(const AwakeSystem&) = delete;
    AwakeSystem& operator=(const AwakeSystem&) = delete;
    ~AwakeSystem() {
        if (m_held) ::SetThreadExecutionState(ES_CONTINUOUS);
    }

    void Hold() noexcept {
        m_held = true;
        ::SetThreadExecutionState(ES_CONTINUOUS | ES_SYSTEM_REQUIRED);
    }

private:
    bool m_held = false;
};
