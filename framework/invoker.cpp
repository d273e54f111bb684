#include "framework/invoker.h"

bool CInvoker::Send(CallFunction call, const void* function) const noexcept {
    return m_window.Send(kInvokeMessage, reinterpret_cast<WPARAM>(call),
                         reinterpret_cast<LPARAM>(function)) == kRan;
}

bool CInvoker::ProcessWindowMessage(HWND /*window*/, UINT message, WPARAM wParam, LPARAM lParam,
                                    LRESULT& result, DWORD /*section*/) {
    if (message != kInvokeMessage) return false;
    result = kRan;
    reinterpret_cast<CallFunction>(wParam)(reinterpret_cast<const void*>(lParam));
    return true;
}
