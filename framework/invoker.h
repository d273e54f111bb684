// Runs functions of other threads on the thread that owns the windows. Whatever a function asks of controls
// then costs one message and two switches between the threads, instead of two for each question.
#pragma once

#include "framework/contained_window.h"
#include "framework/message_map.h"

#include <windows.h>

class CInvoker final : private CMessageMap {
public:
    CInvoker() = default;
    ~CInvoker() { Close(); }

    // From here on functions run on the calling thread, which must serve its messages. Has no effect while
    // that is so already, or when the window that it takes cannot be created.
    void Open() noexcept { m_window.CreateMessageOnly(); }
    // Called on the same thread. From here on functions run on the threads that ask, those that wait for
    // their turn too.
    void Close() noexcept { m_window.Destroy(); }

    // Any thread. Runs `function` once, on the thread of Open while it is open and else on the calling one,
    // and returns when it has returned.
    template <class Function>
    void Invoke(const Function& function) const {
        const Call call{[](const void* target) { (*static_cast<const Function*>(target))(); }, &function};
        if (!Send(call)) function();
    }

    struct Call {
        void (*run)(const void* function);
        const void* function;
    };
    // wParam: the invoker, which other programs that send such a message do not name; lParam: a Call. The
    // result is kRan.
    static constexpr UINT kInvokeMessage = WM_APP;

private:
    static constexpr LRESULT kRan = 1;

    // Whether the other thread has run it. Nobody there answers, or another one than ours, when the window is
    // already destroyed, or could not be made ours.
    bool Send(const Call& call) const noexcept;

    bool ProcessWindowMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result,
                              DWORD section) override;

    CContainedWindow m_window{*this, 0};
};
