#include "framework/invoker.h"

bool CInvoker::Send(const Call& call) const noexcept {
    return m_window.Send(kInvokeMessage, reinterpret_cast<WPARAM>(this), reinterpret_cast<LPARAM>(&call)) ==
           kRan;
}

bool CInvoker::ProcessWindowMessage(HWND /*window*/, UINT message, WPARAM wParam, LPARAM lParam,
                                    LRESULT& result, DWORD /*section*/) {
    if (message != kInvokeMessage || wParam != reinterpret_cast<WPARAM>(this)) return false;
    result = kRan;
    const auto* const call = reinterpret_cast<const Call*>(lParam);
    call->run(call->function);
    return true;
}
