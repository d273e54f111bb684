#include "tests/equipment/worker_calls.h"

#include "tests/support/call_record.h"

#include <algorithm>
#include <utility>

namespace {

thread_local bool t_inAction = false;
thread_local DWORD t_onBehalfOf = 0;

}  // namespace

WorkerCalls::OnBehalfOf::OnBehalfOf(DWORD worker) : m_before(std::exchange(t_onBehalfOf, worker)) {}

WorkerCalls::OnBehalfOf::~OnBehalfOf() {
    t_onBehalfOf = m_before;
}

bool WorkerCalls::Note(const std::string& call) {
    const DWORD thread = t_onBehalfOf != 0 ? t_onBehalfOf : ::GetCurrentThreadId();
    if (!keepsCalls || thread == m_userInterface || t_inAction) return false;
    std::vector<std::function<void()>> due;
    {
        const std::lock_guard lock(m_lock);
        m_calls.push_back({thread, call});
        for (Action& action : m_actions) {
            if (call.starts_with(action.call) && --action.callsLeft == 0) due.push_back(action.run);
        }
    }
    t_inAction = true;
    for (const auto& run : due) run();
    t_inAction = false;
    return true;
}

void WorkerCalls::At(std::string call, int nth, std::function<void()> action) {
    const std::lock_guard lock(m_lock);
    m_actions.push_back({std::move(call), nth, std::move(action)});
}

std::vector<std::string> WorkerCalls::All() const {
    const std::lock_guard lock(m_lock);
    std::vector<std::string> texts;
    for (const Call& call : m_calls) texts.push_back(call.text);
    return texts;
}

std::vector<std::string> WorkerCalls::Of(const std::vector<std::string>& beginnings) const {
    return Only(beginnings, All());
}

std::vector<std::string> WorkerCalls::OfWorker(DWORD threadId,
                                               const std::vector<std::string>& beginnings) const {
    const std::lock_guard lock(m_lock);
    std::vector<std::string> texts;
    for (const Call& call : m_calls) {
        if (call.threadId == threadId) texts.push_back(call.text);
    }
    return Only(beginnings, std::move(texts));
}

int WorkerCalls::Count(const std::string& beginning) const {
    return static_cast<int>(Of({beginning}).size());
}

std::vector<std::string> WorkerCalls::Between(std::string_view first, std::string_view last) const {
    const std::vector<std::string> calls = All();
    const auto beginsWith = [](std::string_view text) {
        return [text](const std::string& call) { return call.starts_with(text); };
    };
    const auto from = std::find_if(calls.begin(), calls.end(), beginsWith(first));
    if (from == calls.end()) return {};
    const auto to = std::find_if(from + 1, calls.end(), beginsWith(last));
    if (to == calls.end()) return {};
    return {from, to + 1};
}

void WorkerCalls::NameHandle(HANDLE handle, std::string name) {
    const std::lock_guard lock(m_lock);
    m_names[handle] = std::move(name);
}

std::string WorkerCalls::HandleName(HANDLE handle) const {
    const std::lock_guard lock(m_lock);
    const auto found = m_names.find(handle);
    return found == m_names.end() ? std::string() : found->second;
}

bool WorkerCalls::HasHandle(const std::string& name) const {
    const std::lock_guard lock(m_lock);
    return std::any_of(m_names.begin(), m_names.end(),
                       [&](const auto& entry) { return entry.second == name; });
}

void WorkerCalls::ForgetHandle(HANDLE handle) {
    const std::lock_guard lock(m_lock);
    m_names.erase(handle);
}
