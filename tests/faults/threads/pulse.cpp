#include "tests/faults/threads/pulse.h"

namespace {

constexpr DWORD kIntervalMs = 10;
// What anybody would call hanging, on a machine that is busy with other tests.
constexpr UINT kLimitMs = 5000;

}  // namespace

Pulse::Pulse(HWND window) : m_window(window), m_thread(::CreateThread(nullptr, 0, &Run, this, 0, nullptr)) {}

Pulse::~Pulse() {
    static_cast<void>(Stop());
    ::CloseHandle(m_thread);
    ::CloseHandle(m_over);
}

bool Pulse::Stop() {
    ::SetEvent(m_over);
    ::WaitForSingleObject(m_thread, INFINITE);
    return !m_missing;
}

DWORD WINAPI Pulse::Run(void* pulse) {
    auto& self = *static_cast<Pulse*>(pulse);
    do {
        self.Ask();
    } while (::WaitForSingleObject(self.m_over, kIntervalMs) == WAIT_TIMEOUT);
    return 0;
}

void Pulse::Ask() {
    const ULONGLONG began = ::GetTickCount64();
    DWORD_PTR answer = 0;
    if (!::SendMessageTimeoutW(m_window, WM_NULL, 0, 0, SMTO_NORMAL, kLimitMs, &answer)) {
        m_missing = true;
        return;
    }
    ++m_answers;
    const ULONGLONG took = ::GetTickCount64() - began;
    if (took > m_slowestMs) m_slowestMs = took;
}
