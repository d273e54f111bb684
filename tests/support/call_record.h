// The calls of a replaced system function, written down as short texts in the order in which they came, from
// whichever thread.
#pragma once

#include <algorithm>
#include <mutex>
#include <string>
#include <vector>

// The calls that begin with one of these words.
[[nodiscard]] inline std::vector<std::string> Only(const std::vector<std::string>& beginnings,
                                                   std::vector<std::string> calls) {
    std::erase_if(calls, [&](const std::string& call) {
        return std::none_of(beginnings.begin(), beginnings.end(),
                            [&](const std::string& beginning) { return call.starts_with(beginning); });
    });
    return calls;
}

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
