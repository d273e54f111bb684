// The calls of a replaced system function, written down as short texts in the order in which they came, from
// whichever thread.
#pragma once

#include <mutex>
#include <string>
#include <vector>

class CallRecord {
public:
    void Add(std::string call) {
        const std::lock_guard lock(m_lock);
        m_calls.push_back(std::move(call));
    }
    void Clear() {
        const std::lock_guard lock(m_lock);
        m_calls.clear();
    }
    [[nodiscard]] std::vector<std::string> Calls() const {
        const std::lock_guard lock(m_lock);
        return m_calls;
    }

private:
    mutable std::mutex m_lock;
    std::vector<std::string> m_calls;
};
