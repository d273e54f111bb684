// Holds a thread of the program at one of its calls until the test lets it go on.
#pragma once

#include "tests/faults/harness/call_watch.h"
#include "tests/faults/harness/user.h"

#include <atomic>
#include <string>

class Gate {
public:
    // Closed for the `nth` call from now with this label.
    Gate(CallWatch& watch, const std::string& label, int nth = 1) {
        watch.At(label, nth, [this] { Hold(); });
    }
    Gate(const Gate&) = delete;
    Gate& operator=(const Gate&) = delete;
    ~Gate() { ::CloseHandle(m_open); }

    void WaitForArrival() const {
        WaitUntil("a thread of the program arrives", [this] { return m_arrived.load(); });
    }
    void Open() const { ::SetEvent(m_open); }

private:
    void Hold() {
        m_arrived = true;
        ::WaitForSingleObject(m_open, INFINITE);
    }

    const HANDLE m_open = ::CreateEventW(nullptr, TRUE, FALSE, nullptr);
    std::atomic<bool> m_arrived{false};
};
