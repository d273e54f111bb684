#include "tests/faults/harness/call_watch.h"

#include "tests/faults/harness/failure_table.h"

#include <algorithm>
#include <mutex>
#include <utility>

namespace {

// The failure of the one call of a run that fails. What the called function returns is all that is known of
// it here: its arguments stay where they are, which the calling convention allows.
const Failure* g_failure = nullptr;

std::uint64_t FailPlainly() {
    ::SetLastError(g_failure->error);
    return g_failure->value;
}

}  // namespace

std::string FunctionOf(const std::string& call) {
    const std::size_t begin = call.find(' ') + 1;
    return call.substr(begin, call.find(' ', begin) - begin);
}

void CallWatch::Begin() {
    const std::lock_guard lock(m_lock);
    m_counts.clear();
    m_calls.clear();
    m_failed = false;
    m_counting = true;
}

std::vector<std::string> CallWatch::Counted() const {
    const std::lock_guard lock(m_lock);
    return m_calls;
}

void CallWatch::At(std::string label, int nth, std::function<void()> action) {
    const std::lock_guard lock(m_lock);
    m_actions.push_back({std::move(label), nth, std::move(action)});
    m_hasActions = true;
}

void CallWatch::Happens(const std::string& what) {
    if (m_hasActions) RunAction(Role(), what);
}

void* CallWatch::Route(const std::string& function, SavedRegisters registers) {
    const bool acting = m_hasActions;
    if (!acting && !m_counting) return nullptr;
    const Failure* const failure = FindFailure(function);
    if (!failure && !acting) return nullptr;
    const std::string label = CallLabel(function, registers);
    if (acting) RunAction(Role(), label);
    // Now: the action may have begun the counting with this call, or ended it before.
    if (!m_counting || !failure || !Count(Role() + label)) return nullptr;
    g_failure = failure;
    return failure->instead ? failure->instead : reinterpret_cast<void*>(&FailPlainly);
}

bool CallWatch::Count(const std::string& label) {
    const std::lock_guard lock(m_lock);
    m_calls.push_back(label + " #" + std::to_string(++m_counts[label]));
    if (m_failed || m_calls.back() != m_failAt) return false;
    m_failed = true;
    return true;
}

void CallWatch::RunAction(const std::string& role, const std::string& label) {
    std::function<void()> run;
    {
        const std::lock_guard lock(m_lock);
        const auto due = std::find_if(m_actions.begin(), m_actions.end(), [&](const Action& action) {
            return action.label == label || action.label == role + label;
        });
        if (due == m_actions.end() || --due->callsLeft > 0) return;
        run = std::move(due->run);
        m_actions.erase(due);
        m_hasActions = !m_actions.empty();
    }
    run();  // may wait, and may be waited for
}
